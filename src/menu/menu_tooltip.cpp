#include "menu/menu_tooltip.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/screen_scale.h"
#include "base/window_dress.h"

namespace verbatix {

// The size without the reserved field is the one that common controls of every version accept.
static TTTOOLINFOW ToolInfo(MenuTooltip& tooltip) {
    TTTOOLINFOW info = {};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    info.hwnd = tooltip.owner;
    info.uId = reinterpret_cast<UINT_PTR>(tooltip.owner);
    info.lpszText = tooltip.text.data();
    return info;
}

static void Send(MenuTooltip& tooltip, UINT message, BOOL flag = FALSE) {
    TTTOOLINFOW info = ToolInfo(tooltip);
    SendMessageW(tooltip.window, message, static_cast<WPARAM>(flag), reinterpret_cast<LPARAM>(&info));
}

static void Create(MenuTooltip& tooltip, HWND owner) {
    constexpr DWORD kStyle = WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP;
    constexpr int kMaximumWidth = 420;  // a limit is what makes the control break lines
    tooltip.owner = owner;
    tooltip.window = CreateWindowExW(WS_EX_TOPMOST | WS_EX_TRANSPARENT, TOOLTIPS_CLASSW, nullptr, kStyle, 0,
                                     0, 0, 0, owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    DressWindow(tooltip.window);
    Send(tooltip, TTM_ADDTOOLW);
    SendMessageW(tooltip.window, TTM_SETMAXTIPWIDTH, 0, Scaled(kMaximumWidth, DpiOf(owner)));
}

// Coordinates travel as 16 bits each; a negative one on a screen to the left stays one.
static void MoveTo(MenuTooltip& tooltip, LONG x, LONG y) {
    SendMessageW(tooltip.window, TTM_TRACKPOSITION, 0,
                 MAKELPARAM(static_cast<WORD>(x & 0xffff), static_cast<WORD>(y & 0xffff)));
}

void ShowMenuTooltip(MenuTooltip& tooltip, HWND owner, std::wstring text, const RECT& row,
                     const RECT& menu) {
    constexpr LONG kGap = 4;
    tooltip.text = std::move(text);
    if (!IsWindow(tooltip.window)) Create(tooltip, owner);
    Send(tooltip, TTM_UPDATETIPTEXTW);
    MoveTo(tooltip, menu.right + kGap, row.top);
    Send(tooltip, TTM_TRACKACTIVATE, TRUE);

    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    RECT place = {};
    if (!GetMonitorInfoW(MonitorFromRect(&menu, MONITOR_DEFAULTTONEAREST), &monitor)) return;
    if (!GetWindowRect(tooltip.window, &place)) return;
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    const LONG right = menu.right + kGap;
    const LONG x = right + width <= monitor.rcWork.right ? right : menu.left - kGap - width;
    const LONG y = std::max(monitor.rcWork.top, std::min(row.top, monitor.rcWork.bottom - height));
    MoveTo(tooltip, std::max(monitor.rcWork.left, x), y);
}

void HideMenuTooltip(MenuTooltip& tooltip) {
    if (IsWindow(tooltip.window)) Send(tooltip, TTM_TRACKACTIVATE, FALSE);
}

}  // namespace verbatix
