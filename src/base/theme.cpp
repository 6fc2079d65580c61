#include "base/theme.h"

#include "base/system_library.h"

namespace verbatix {

namespace {

bool isDark = false;
bool hasDarkMenus = false;

// Neither is imported: see base/system_library.h.
HMODULE ThemeLibrary() {
    static const UniqueModule library = LoadSystemLibrary(L"uxtheme.dll");
    return library.Get();
}

HRESULT SetWindowAttribute(HWND window, DWORD attribute, BOOL value) {
    static const UniqueModule library = LoadSystemLibrary(L"dwmapi.dll");
    static const auto setAttribute =
        FindFunction<HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD)>(library.Get(), "DwmSetWindowAttribute");
    return setAttribute ? setAttribute(window, attribute, &value, sizeof value) : E_NOTIMPL;
}

// The theme falls back to the light one where it has no dark one, so its colour tells.
bool ButtonTextIsLight() {
    constexpr int kPushButton = 1;
    constexpr int kNormal = 1;
    constexpr int kTextColor = 3803;
    const auto open = FindFunction<HANDLE(WINAPI*)(HWND, LPCWSTR)>(ThemeLibrary(), "OpenThemeData");
    const auto close = FindFunction<HRESULT(WINAPI*)(HANDLE)>(ThemeLibrary(), "CloseThemeData");
    const auto ask =
        FindFunction<HRESULT(WINAPI*)(HANDLE, int, int, int, COLORREF*)>(ThemeLibrary(), "GetThemeColor");
    if (!open || !close || !ask) return false;
    const HANDLE theme = open(nullptr, L"DarkMode_Explorer::Button");
    if (!theme) return false;
    COLORREF text = 0;
    const HRESULT told = ask(theme, kPushButton, kNormal, kTextColor, &text);
    close(theme);
    return SUCCEEDED(told) && GetGValue(text) > 128;
}

}  // namespace

bool IsDark() {
    return isDark;
}

void SetDark(bool dark) {
    isDark = dark;
}

bool ControlsHaveDarkTheme() {
    static const bool have = ButtonTextIsLight();
    return have;
}

void TellBuildOfWindows(unsigned long build) {
    constexpr unsigned long kFirstDarkBuild = 17763;
    hasDarkMenus = build >= kFirstDarkBuild;
}

void AllowDarkMenus(bool allow) {
    if (!hasDarkMenus) return;
    // Set which mode is preferred (1: what Windows' settings say, 0: light), and have the menus look at it
    // again.
    const auto setMode = FindFunction<int(WINAPI*)(int)>(ThemeLibrary(), MAKEINTRESOURCEA(135));
    const auto flush = FindFunction<void(WINAPI*)()>(ThemeLibrary(), MAKEINTRESOURCEA(136));
    if (setMode) setMode(allow ? 1 : 0);
    if (flush) flush();
}

void SetTheme(HWND control, const wchar_t* name) {
    static const auto setTheme =
        FindFunction<HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR)>(ThemeLibrary(), "SetWindowTheme");
    const bool takesOff = name && !*name;
    if (setTheme) setTheme(control, name, takesOff ? name : nullptr);
}

// Documented as 20 since Windows 11; the builds of 2018 and 2019 knew it as 19.
void DarkenTitleBar(HWND window, bool dark) {
    constexpr DWORD kUseImmersiveDarkMode = 20;
    constexpr DWORD kBefore2020 = 19;
    if (FAILED(SetWindowAttribute(window, kUseImmersiveDarkMode, dark))) {
        SetWindowAttribute(window, kBefore2020, dark);
    }
}

HBRUSH DarkControlColors(HDC canvas, UINT message, HWND control) {
    if (!isDark) return nullptr;
    static const HBRUSH back = CreateSolidBrush(kDark.back);
    static const HBRUSH field = CreateSolidBrush(kDark.field);
    const bool isField = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    SetTextColor(canvas, IsWindowEnabled(control) ? kDark.text : kDark.faint);
    SetBkColor(canvas, isField ? kDark.field : kDark.back);
    return isField ? field : back;
}

void FillWith(HDC canvas, const RECT& place, COLORREF color) {
    SetDCBrushColor(canvas, color);
    FillRect(canvas, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace verbatix
