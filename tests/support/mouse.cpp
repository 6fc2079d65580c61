#include "support/mouse.h"

#include "support/wait.h"

namespace verbatix::test {

// Between two events of a hand lies some time, and controls tell a drag from a click by it.
static constexpr DWORD kBetweenEvents = 30;

static bool StandsAt(POINT place) {
    POINT mouse = {};
    return GetCursorPos(&mouse) && mouse.x == place.x && mouse.y == place.y;
}

// The screen reports a movement to the program below the mouse, and a late report of the one before puts
// the mouse back: it is there when it has stayed there while that program answered.
void MoveMouse(POINT place) {
    SetCursorPos(static_cast<int>(place.x), static_cast<int>(place.y));
    mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, 0);
    constexpr int kLongest = 200;
    for (int calm = 0, rounds = 0; calm < 3 && rounds < kLongest; ++calm, ++rounds) {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(WindowFromPoint(place), WM_NULL, 0, 0, SMTO_NORMAL, 2000, &answer);
        Linger(kBetweenEvents / 3);
        if (StandsAt(place)) continue;
        SetCursorPos(static_cast<int>(place.x), static_cast<int>(place.y));
        calm = 0;
    }
}

void ParkMouse() {
    MoveMouse({GetSystemMetrics(SM_CXSCREEN) - 10, 600});
}

static void Press(DWORD button) {
    mouse_event(button, 0, 0, 0, 0);
    Linger(kBetweenEvents);
}

POINT OnScreen(HWND window, int x, int y) {
    POINT place = {x, y};
    ClientToScreen(window, &place);
    return place;
}

void ClickAt(POINT place, DWORD down, DWORD up) {
    MoveMouse(place);
    Press(down);
    Press(up);
}

void DragMouse(POINT from, POINT to, const std::function<void()>& before) {
    constexpr LONG kSteps = 6;
    MoveMouse(from);
    Press(MOUSEEVENTF_LEFTDOWN);
    for (LONG step = 1; step <= kSteps; ++step) {
        MoveMouse({from.x + (to.x - from.x) * step / kSteps, from.y + (to.y - from.y) * step / kSteps});
    }
    MoveMouse(to);
    if (before) before();
    Press(MOUSEEVENTF_LEFTUP);
}

}  // namespace verbatix::test
