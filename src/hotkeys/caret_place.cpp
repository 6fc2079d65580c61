#include "hotkeys/caret_place.h"

#include "base/system_library.h"

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

namespace {

// The functions of Windows 10 that tell in whose measures a coordinate is; null on a Windows without them.
template <typename Function>
Function FindInUser32(const char* name) {
    return FindFunction<Function>(GetModuleHandleW(L"user32.dll"), name);
}

// For as long as it lives, this thread measures as the program of that window does. Its handles are what
// Windows calls contexts of awareness.
class MeasuresOf {
  public:
    explicit MeasuresOf(HWND window) {
        static const auto contextOf = FindInUser32<HANDLE(WINAPI*)(HWND)>("GetWindowDpiAwarenessContext");
        if (Set() && contextOf) before_ = Set()(contextOf(window));
    }
    ~MeasuresOf() {
        if (before_) Set()(before_);
    }
    MeasuresOf(const MeasuresOf&) = delete;
    MeasuresOf& operator=(const MeasuresOf&) = delete;

    explicit operator bool() const { return before_ != nullptr; }

  private:
    static auto Set() -> HANDLE(WINAPI*)(HANDLE) {
        static const auto set = FindInUser32<HANDLE(WINAPI*)(HANDLE)>("SetThreadDpiAwarenessContext");
        return set;
    }

    HANDLE before_ = nullptr;
};

}  // namespace

static RECT ToScreen(HWND window, RECT rectangle) {
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rectangle), 2);
    return rectangle;
}

// A program that does not know the resolution is shown larger by Windows, and tells where its caret is in
// the measures that it believes in.
static std::optional<RECT> CaretInOwnMeasures(HWND window, const RECT& caret) {
    static const auto toScreen =
        FindInUser32<BOOL(WINAPI*)(HWND, POINT*)>("LogicalToPhysicalPointForPerMonitorDPI");
    const MeasuresOf measures(window);
    if (!measures || !toScreen) return std::nullopt;
    const RECT place = ToScreen(window, caret);
    POINT corners[] = {{place.left, place.top}, {place.right, place.bottom}};
    for (POINT& corner : corners) {
        if (!toScreen(window, &corner)) return std::nullopt;  // outside of the window
    }
    return RECT{corners[0].x, corners[0].y, corners[1].x, corners[1].y};
}

static RECT CaretOnScreen(HWND window, const RECT& caret) {
    const std::optional<RECT> place = CaretInOwnMeasures(window, caret);
    return place ? *place : ToScreen(window, caret);
}

static std::optional<CaretPlace> FindCaret(HWND foreground) {
    const DWORD thread = GetWindowThreadProcessId(foreground, nullptr);
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    if (thread == 0 || !GetGUIThreadInfo(thread, &info) || !info.hwndCaret) return std::nullopt;
    RECT client = {};
    if (!GetClientRect(info.hwndCaret, &client)) return std::nullopt;
    const auto place =
        PlaceBelowCaret(CaretOnScreen(info.hwndCaret, info.rcCaret), ToScreen(info.hwndCaret, client));
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
