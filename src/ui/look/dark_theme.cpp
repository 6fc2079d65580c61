#include "ui/look/dark_theme.h"

#include <commctrl.h>

#include <string>

#include "base/common_controls.h"
#include "base/system_library.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

constexpr COLORREF kBack = RGB(32, 32, 32);
constexpr COLORREF kField = RGB(43, 43, 43);
constexpr COLORREF kText = RGB(230, 230, 230);
constexpr COLORREF kFaint = RGB(140, 140, 140);
constexpr COLORREF kLine = RGB(80, 80, 80);
constexpr unsigned long kFirstDarkBuild = 17763;

bool isDark = false;

// Neither is imported: see base/system_library.h.
HMODULE ThemeLibrary() {
    static const UniqueModule library = LoadSystemLibrary(L"uxtheme.dll");
    return library.Get();
}

void SetTheme(HWND control, const wchar_t* name) {
    static const auto setTheme =
        FindFunction<HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR)>(ThemeLibrary(), "SetWindowTheme");
    if (setTheme) setTheme(control, name, nullptr);
}

HRESULT SetWindowAttribute(HWND window, DWORD attribute, BOOL value) {
    static const UniqueModule library = LoadSystemLibrary(L"dwmapi.dll");
    static const auto setAttribute =
        FindFunction<HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD)>(library.Get(), "DwmSetWindowAttribute");
    return setAttribute ? setAttribute(window, attribute, &value, sizeof value) : E_NOTIMPL;
}

HBRUSH Brush(COLORREF color) {
    static const HBRUSH back = CreateSolidBrush(kBack);
    static const HBRUSH field = CreateSolidBrush(kField);
    return color == kBack ? back : field;
}

bool HighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

bool DarkThemeWanted() {
    if (settings.disableDarkTheme != 0 || HighContrast()) return false;
    DWORD light = 1;
    DWORD size = sizeof light;
    const LSTATUS status = RegGetValueW(
        HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return status == ERROR_SUCCESS && light == 0;
}

// Documented as 20 since Windows 11; the builds of 2018 and 2019 knew it as 19.
void DarkenTitleBar(HWND window, BOOL dark) {
    constexpr DWORD kUseImmersiveDarkMode = 20;
    constexpr DWORD kBefore2020 = 19;
    if (FAILED(SetWindowAttribute(window, kUseImmersiveDarkMode, dark))) {
        SetWindowAttribute(window, kBefore2020, dark);
    }
}

const wchar_t* ThemeOf(HWND control) {
    wchar_t name[32] = {};
    GetClassNameW(control, name, 32);
    // Combo boxes have their dark parts under another name than scroll bars and buttons.
    return lstrcmpiW(name, WC_COMBOBOXW) == 0 ? L"DarkMode_CFD" : L"DarkMode_Explorer";
}

void ColorViews(HWND dialog) {
    const COLORREF back = isDark ? kField : GetSysColor(COLOR_WINDOW);
    const COLORREF text = isDark ? kText : GetSysColor(COLOR_WINDOWTEXT);
    const HWND list = GetDlgItem(dialog, IDC_LIST);
    ListView_SetBkColor(list, back);
    ListView_SetTextBkColor(list, back);
    ListView_SetTextColor(list, text);
    const HWND tree = GetDlgItem(dialog, IDC_TREE);
    TreeView_SetBkColor(tree, back);
    TreeView_SetTextColor(tree, text);
}

// The bar has no way of being told the colour of its texts.
void PaintStatusBar(HWND bar) {
    PAINTSTRUCT paint = {};
    const HDC canvas = BeginPaint(bar, &paint);
    RECT all = {};
    GetClientRect(bar, &all);
    FillRect(canvas, &all, Brush(kBack));
    SetBkMode(canvas, TRANSPARENT);
    SetTextColor(canvas, kText);
    const HGDIOBJ before =
        SelectObject(canvas, reinterpret_cast<HFONT>(SendMessageW(bar, WM_GETFONT, 0, 0)));
    // A text across the whole bar stands in place of the parts.
    const bool isSimple = SendMessageW(bar, SB_ISSIMPLE, 0, 0) != 0;
    const auto parts = isSimple ? 1U : static_cast<WPARAM>(SendMessageW(bar, SB_GETPARTS, 0, 0));
    for (WPARAM part = 0; part < parts; ++part) {
        const WPARAM source = isSimple ? SB_SIMPLEID : part;
        std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, source, 0)) + 1U, L'\0');
        SendMessageW(bar, SB_GETTEXTW, source, reinterpret_cast<LPARAM>(text.data()));
        RECT place = all;
        if (!isSimple) SendMessageW(bar, SB_GETRECT, part, reinterpret_cast<LPARAM>(&place));
        const RECT line = {place.right - 1, place.top + 2, place.right, place.bottom - 2};
        SetDCBrushColor(canvas, kLine);
        if (part + 1 < parts) FillRect(canvas, &line, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        place.left += 4;
        DrawTextW(canvas, text.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    }
    SelectObject(canvas, before);
    EndPaint(bar, &paint);
}

LRESULT CALLBACK StatusBarProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                    DWORD_PTR) noexcept {
    if (message == WM_PAINT && isDark) return PaintStatusBar(bar), 0;
    if (message == WM_ERASEBKGND && isDark) return 1;
    if (message == WM_NCDESTROY) RemoveSubclass(bar, StatusBarProcedure, id);
    return PassToSubclassed(bar, message, wParam, lParam);
}

// The heads of the columns ask the list for the colour of their texts.
LRESULT CALLBACK ListProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                               DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) RemoveSubclass(list, ListProcedure, id);
    if (message != WM_NOTIFY || !isDark) return PassToSubclassed(list, message, wParam, lParam);
    const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code != NM_CUSTOMDRAW || header.hwndFrom != ListView_GetHeader(list)) {
        return PassToSubclassed(list, message, wParam, lParam);
    }
    const auto& draw = *reinterpret_cast<const NMCUSTOMDRAW*>(lParam);
    if (draw.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.dwDrawStage == CDDS_ITEMPREPAINT) SetTextColor(draw.hdc, kText);
    return CDRF_DODEFAULT;
}

}  // namespace

void AllowDarkMenus(unsigned long build) {
    if (build < kFirstDarkBuild || settings.disableDarkTheme != 0) return;
    // Set which mode is preferred (1: what Windows' settings say), and have the menus look at it again.
    const auto setMode = FindFunction<int(WINAPI*)(int)>(ThemeLibrary(), MAKEINTRESOURCEA(135));
    const auto flush = FindFunction<void(WINAPI*)()>(ThemeLibrary(), MAKEINTRESOURCEA(136));
    if (setMode) setMode(1);
    if (flush) flush();
}

void ApplyTheme(HWND dialog) {
    const bool wanted = DarkThemeWanted();
    if (wanted == isDark) return;
    isDark = wanted;
    DarkenTitleBar(dialog, isDark);
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        SetTheme(control, isDark ? ThemeOf(control) : nullptr);
    }
    const HWND header = ListView_GetHeader(GetDlgItem(dialog, IDC_LIST));
    SetTheme(header, isDark ? L"DarkMode_ItemsView" : nullptr);
    AddSubclass(mainWindow.statusBar, StatusBarProcedure, 0);
    AddSubclass(GetDlgItem(dialog, IDC_LIST), ListProcedure, 0);
    ColorViews(dialog);
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME);
}

void ThemeControl(HWND control) {
    SetTheme(control, isDark ? ThemeOf(control) : nullptr);
}

HBRUSH DarkControlColors(HDC canvas, UINT message, HWND control) {
    if (!isDark) return nullptr;
    const bool field = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const COLORREF back = field ? kField : kBack;
    SetTextColor(canvas, IsWindowEnabled(control) ? kText : kFaint);
    SetBkColor(canvas, back);
    return Brush(back);
}

void OnSystemColorsChanged(HWND dialog) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
    }
    ApplyTheme(dialog);
    ColorViews(dialog);
}

void OnSettingChange(HWND dialog, LPARAM area) {
    const auto* name = reinterpret_cast<const wchar_t*>(area);
    if (!name || lstrcmpiW(name, L"ImmersiveColorSet") == 0) ApplyTheme(dialog);
}

}  // namespace verbatix
