#include "ui/entries/test_target.h"

#include <algorithm>
#include <array>

#include "base/system_library.h"

namespace verbatix {

// Those that were in front, the last one first. More than one: on the way from window to window people pass
// some that are gone at once, as the one that shows all of them does.
static std::array<HWND, 4> noted = {};

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
           !(style & (WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE)) && GetWindowTextLengthW(window) > 0 &&
           !IsCloaked(window);
}

static bool IsTopmost(HWND window) {
    return (GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

void NoteFrontWindow(HWND front) {
    if (!IsTestTarget(front)) return;
    const auto known = std::find(noted.begin(), noted.end() - 1, front);
    std::rotate(noted.begin(), known, known + 1);
    noted.front() = front;
}

HWND TestTarget() {
    const auto last = std::find_if(noted.begin(), noted.end(), IsTestTarget);
    if (last != noted.end()) return *last;
    // What is always on top and was never in front is mostly a tool that nobody types into.
    HWND window = GetTopWindow(nullptr);
    while (window && (IsTopmost(window) || !IsTestTarget(window))) window = GetWindow(window, GW_HWNDNEXT);
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
