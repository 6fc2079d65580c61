#include "ui/entries/test_target.h"

#include "base/system_library.h"

namespace verbatix {

static HWND noted = nullptr;

// Of another virtual desktop, or of a store app that sleeps: "visible", and nowhere to be seen.
static bool IsCloaked(HWND window) {
    constexpr DWORD kCloaked = 14;  // since Windows 8
    static const UniqueModule library = LoadSystemLibrary(L"dwmapi.dll");
    static const auto getAttribute =
        FindFunction<HRESULT(WINAPI*)(HWND, DWORD, PVOID, DWORD)>(library.Get(), "DwmGetWindowAttribute");
    DWORD cloaked = 0;
    return getAttribute && SUCCEEDED(getAttribute(window, kCloaked, &cloaked, sizeof cloaked)) &&
           cloaked != 0;
}

static bool IsTestTarget(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_EXSTYLE);
    return IsWindowVisible(window) && IsWindowEnabled(window) && !IsIconic(window) &&
           process != GetCurrentProcessId() && window != GetShellWindow() &&
           !(style & (WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST)) &&
           GetWindowTextLengthW(window) > 0 && !IsCloaked(window);
}

void NoteFrontWindow(HWND front) {
    if (IsTestTarget(front)) noted = front;
}

HWND TestTarget() {
    if (IsTestTarget(noted)) return noted;
    HWND window = GetTopWindow(nullptr);
    while (window && !IsTestTarget(window)) window = GetWindow(window, GW_HWNDNEXT);
    return window;
}

std::wstring TestTargetName() {
    constexpr int kShown = 60;
    const HWND target = TestTarget();
    wchar_t title[kShown + 1] = {};
    // From the window's memory, not by asking the window, which may hang.
    if (!target || InternalGetWindowText(target, title, kShown + 1) <= 0) return {};
    return GetWindowTextLengthW(target) > kShown ? std::wstring(title) + L"..." : title;
}

}  // namespace verbatix
