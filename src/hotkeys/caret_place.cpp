#include "hotkeys/caret_place.h"

namespace verbatix {

std::optional<CaretPlace> PlaceBelowCaret(const RECT& caret, const RECT& visible) {
    const LONG width = caret.right > caret.left ? caret.right - caret.left : 1;
    const LONG height = caret.bottom - caret.top;
    if (height <= 0) return std::nullopt;  // an empty caret is what programs report that draw their own
    const bool inside = caret.left >= visible.left && caret.left < visible.right &&
                        caret.bottom > visible.top && caret.top < visible.bottom;
    if (!inside) return std::nullopt;
    return CaretPlace{{caret.left, caret.bottom},
                      {caret.left, caret.top, caret.left + width, caret.bottom}};
}

static RECT ToScreen(HWND window, RECT rectangle) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rectangle), 2);
    return rectangle;
}

static std::optional<CaretPlace> FindCaret(HWND foreground) {
    const DWORD thread = GetWindowThreadProcessId(foreground, nullptr);
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    if (thread == 0 || !GetGUIThreadInfo(thread, &info) || !info.hwndCaret) return std::nullopt;
    RECT client = {};
    if (!GetClientRect(info.hwndCaret, &client)) return std::nullopt;
    const auto place =
        PlaceBelowCaret(ToScreen(info.hwndCaret, info.rcCaret), ToScreen(info.hwndCaret, client));
    if (!place || !MonitorFromPoint(place->point, MONITOR_DEFAULTTONULL)) return std::nullopt;
    return place;
}

CaretPlace FindCaretPlace(HWND foreground) {
    if (const auto caret = FindCaret(foreground)) return *caret;
    CaretPlace place = {};
    GetCursorPos(&place.point);
    place.exclude = {place.point.x, place.point.y, place.point.x, place.point.y};
    return place;
}

}  // namespace verbatix
