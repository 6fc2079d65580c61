#include "ui/views/insert_mark.h"

#include <algorithm>

#include "ui/state/main_window.h"

namespace verbatix {

static HWND mark;

static HWND CreateMark() {
    WNDCLASSEXW type = {};
    type.cbSize = sizeof type;
    type.lpfnWndProc = DefWindowProcW;
    type.hInstance = GetModuleHandleW(nullptr);
    type.hbrBackground = GetSysColorBrush(COLOR_HIGHLIGHT);
    type.lpszClassName = L"VerbatixInsertMark";
    RegisterClassExW(&type);
    return CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | WS_EX_TOPMOST | WS_EX_TRANSPARENT,
                           type.lpszClassName, nullptr, WS_POPUP, 0, 0, 0, 0, mainWindow.window, nullptr,
                           type.hInstance, nullptr);
}

void ShowInsertMark(HWND view, const RECT& place) {
    if (!mark) mark = CreateMark();
    RECT client = {};
    GetClientRect(view, &client);
    const int thickness = std::max(2, GetSystemMetrics(SM_CYSMICON) / 8);
    const LONG top = std::clamp(place.top - thickness / 2, client.top, client.bottom - thickness);
    const LONG left = std::max(place.left, client.left);
    POINT corner = {left, top};
    ClientToScreen(view, &corner);
    SetWindowPos(mark, HWND_TOPMOST, static_cast<int>(corner.x), static_cast<int>(corner.y),
                 static_cast<int>(std::min(place.right, client.right) - left), thickness,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void HideInsertMark() {
    if (mark) ShowWindow(mark, SW_HIDE);
}

}  // namespace verbatix
