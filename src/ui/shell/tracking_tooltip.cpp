#include "ui/shell/tracking_tooltip.h"

#include <commctrl.h>

#include <utility>

#include "base/screen_scale.h"
#include "base/window_dress.h"
#include "hotkeys/notice.h"

namespace verbatix {

TrackingTooltip noticeTooltip;

// The size without the reserved field is the one that common controls of every version accept.
static TTTOOLINFOW ToolInfo(const TrackingTooltip& tooltip) {
    TTTOOLINFOW info = {};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_TRANSPARENT;
    info.hwnd = tooltip.owner;
    info.uId = reinterpret_cast<UINT_PTR>(tooltip.owner);
    return info;
}

static void Create(TrackingTooltip& tooltip, HWND owner) {
    tooltip.owner = owner;
    tooltip.window =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                        0, 0, 0, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    DressWindow(tooltip.window);
    TTTOOLINFOW info = ToolInfo(tooltip);
    info.uFlags |= TTF_TRACK | TTF_ABSOLUTE;
    info.lpszText = tooltip.text.data();
    SendMessageW(tooltip.window, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    // A width limit is what makes the control break lines.
    constexpr int kMaximumWidth = 600;
    SendMessageW(tooltip.window, TTM_SETMAXTIPWIDTH, 0, Scaled(kMaximumWidth, DpiOf(owner)));
}

// Never over the mouse, nor beyond the work area of its screen.
static POINT PlaceBesideMouse(SIZE size) {
    constexpr LONG kBesideMouse = 12;
    POINT mouse = {};
    GetCursorPos(&mouse);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromPoint(mouse, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT around = {mouse.x, mouse.y - kBesideMouse, mouse.x, mouse.y + kBesideMouse};
    return NoticeCorner({{mouse.x + kBesideMouse, mouse.y}, around}, size, monitor.rcWork);
}

// Every key takes the tip away again, and the one that chose the command in the menu is still on its way
// up.
static void LetGoMenuKey() {
    constexpr int kPatience = 50;
    for (int i = 0; i < kPatience && GetAsyncKeyState(VK_RETURN) < 0; ++i) Sleep(10);
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_KEYUP, WM_KEYUP, PM_REMOVE)) {
    }
}

void TellWhatWasDone(HWND owner, const std::wstring& title, std::wstring text) {
    LetGoMenuKey();
    ShowTrackingTooltip(noticeTooltip, owner, title, std::move(text));
}

void ShowTrackingTooltip(TrackingTooltip& tooltip, HWND owner, const std::wstring& title,
                         std::wstring text) {
    tooltip.text = std::move(text);
    if (!IsWindow(tooltip.window)) Create(tooltip, owner);
    TTTOOLINFOW info = ToolInfo(tooltip);
    info.lpszText = tooltip.text.data();
    SendMessageW(tooltip.window, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&info));
    SendMessageW(tooltip.window, TTM_SETTITLEW, TTI_INFO, reinterpret_cast<LPARAM>(title.c_str()));
    const auto bubble = static_cast<DWORD>(
        SendMessageW(tooltip.window, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&info)));
    const POINT corner = PlaceBesideMouse({LOWORD(bubble), HIWORD(bubble)});
    SendMessageW(tooltip.window, TTM_TRACKPOSITION, 0,
                 MAKELPARAM(static_cast<WORD>(corner.x & 0xffff), static_cast<WORD>(corner.y & 0xffff)));
    SendMessageW(tooltip.window, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&info));
    tooltip.shown = true;
}

void HideTrackingTooltip(TrackingTooltip& tooltip) {
    if (!tooltip.shown) return;
    TTTOOLINFOW info = ToolInfo(tooltip);
    SendMessageW(tooltip.window, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&info));
    tooltip.shown = false;
}

}  // namespace verbatix
