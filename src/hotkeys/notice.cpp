#include "hotkeys/notice.h"

#include <commctrl.h>

#include <algorithm>

#include "base/screen_scale.h"
#include "base/window_dress.h"

namespace verbatix {

namespace {

struct Notice {
    HWND window = nullptr;
    bool shown = false;
    UINT_PTR timer = 0;
    std::wstring text;  // the control does not keep it
};

Notice notice;

}  // namespace

// The size without the reserved field is the one that common controls of every version accept.
static TTTOOLINFOW ToolInfo() {
    TTTOOLINFOW info = {};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    info.lpszText = notice.text.data();
    return info;
}

static LRESULT Send(UINT message, WPARAM flag = 0) {
    TTTOOLINFOW info = ToolInfo();
    return SendMessageW(notice.window, message, flag, reinterpret_cast<LPARAM>(&info));
}

static bool MakeWindow() {
    if (IsWindow(notice.window)) return true;
    constexpr DWORD kExtendedStyle = WS_EX_TOPMOST | WS_EX_TRANSPARENT | WS_EX_NOACTIVATE;
    constexpr DWORD kStyle = WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP;
    constexpr int kMaximumWidth = 420;  // a limit is what makes the control break lines
    notice.window = CreateWindowExW(kExtendedStyle, TOOLTIPS_CLASSW, nullptr, kStyle, 0, 0, 0, 0, nullptr,
                                    nullptr, GetModuleHandleW(nullptr), nullptr);
    if (!notice.window) return false;
    DressWindow(notice.window);
    Send(TTM_ADDTOOLW);
    SendMessageW(notice.window, TTM_SETMAXTIPWIDTH, 0, Scaled(kMaximumWidth, DpiOf(notice.window)));
    return true;
}

// Coordinates travel as 16 bits each; a negative one on a screen to the left stays one.
static void MoveTo(POINT corner) {
    SendMessageW(notice.window, TTM_TRACKPOSITION, 0,
                 MAKELPARAM(static_cast<WORD>(corner.x & 0xffff), static_cast<WORD>(corner.y & 0xffff)));
}

POINT NoticeCorner(const CaretPlace& place, SIZE size, const RECT& workArea) {
    constexpr LONG kGap = 4;
    const LONG below = place.exclude.bottom + kGap;
    const LONG above = place.exclude.top - kGap - size.cy;
    const LONG y = below + size.cy <= workArea.bottom ? below : above;
    return {std::max(workArea.left, std::min(place.point.x, workArea.right - size.cx)),
            std::max(workArea.top, std::min(y, workArea.bottom - size.cy))};
}

static void CALLBACK OnNoticeTimer(HWND, UINT, UINT_PTR, DWORD) noexcept {
    HideNotice();
}

void NoticeAtCaret(const std::wstring& text) {
    constexpr UINT kShownMilliseconds = 6000;
    HideNotice();
    notice.text = text;
    if (!MakeWindow()) return;
    const CaretPlace place = FindCaretPlace(GetForegroundWindow());
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (!GetMonitorInfoW(MonitorFromPoint(place.point, MONITOR_DEFAULTTONEAREST), &monitor)) return;
    Send(TTM_UPDATETIPTEXTW);
    const auto bubble = static_cast<DWORD>(Send(TTM_GETBUBBLESIZE));
    MoveTo(NoticeCorner(place, {LOWORD(bubble), HIWORD(bubble)}, monitor.rcWork));
    Send(TTM_TRACKACTIVATE, TRUE);
    notice.shown = true;
    notice.timer = SetTimer(nullptr, notice.timer, kShownMilliseconds, OnNoticeTimer);
}

void HideNotice() {
    if (!notice.shown) return;
    notice.shown = false;
    KillTimer(nullptr, notice.timer);
    notice.timer = 0;
    Send(TTM_TRACKACTIVATE, FALSE);
}

}  // namespace verbatix
