#include "ui/look/window_place.h"

#include "store/settings.h"
#include "ui/look/main_places.h"
#include "ui/state/main_window.h"

namespace verbatix {

static std::optional<RECT> placeUntilSeen;

void RememberWindowPlace(HWND window) {
    // Never shown in this run, it would be taken for a window of ordinary size.
    if (mainWindow.maximizeWhenShown) return;
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if (!GetWindowPlacement(window, &placement)) return;
    RECT place = placement.rcNormalPosition;
    // The normal position is in coordinates that leave the task bar out; the rectangle on the screen is the
    // one that gives the same place next time.
    if (placement.showCmd == SW_SHOWNORMAL) GetWindowRect(window, &place);
    SaveWindowPlace({static_cast<int>(place.left), static_cast<int>(place.top),
                     static_cast<int>(place.right), static_cast<int>(place.bottom),
                     static_cast<int>(placement.showCmd)});
}

RECT PlaceOnScreen(RECT place, RECT workArea) {
    constexpr LONG kEnoughToGrab = 80;
    const bool fits = place.right - place.left <= workArea.right - workArea.left &&
                      place.bottom - place.top <= workArea.bottom - workArea.top;
    const bool reachable = place.top >= workArea.top && place.top <= workArea.bottom - kEnoughToGrab / 2 &&
                           place.right >= workArea.left + kEnoughToGrab &&
                           place.left <= workArea.right - kEnoughToGrab;
    return fits && reachable ? place : FitInto(place, workArea);
}

bool RestoreWindowPlace(HWND window) {
    const std::optional<WindowPlace> stored = LoadWindowPlace();
    if (!stored) return false;
    RECT place = {stored->left, stored->top, stored->right, stored->bottom};
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) {
        // Of a maximised window the normal position is stored, which counts from the work area.
        if (stored->show != SW_SHOWNORMAL) {
            OffsetRect(&place, static_cast<int>(monitor.rcWork.left - monitor.rcMonitor.left),
                       static_cast<int>(monitor.rcWork.top - monitor.rcMonitor.top));
        }
        place = PlaceOnScreen(place, monitor.rcWork);
    }
    placeUntilSeen = place;
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return stored->show == SW_SHOWMAXIMIZED;
}

std::optional<RECT> PlaceUntilSeen() {
    return placeUntilSeen;
}

void ForgetPlaceUntilSeen() {
    placeUntilSeen.reset();
}

}  // namespace verbatix
