// A user's mouse: real input at places on the screen.
#pragma once

#include <windows.h>

#include <functional>

namespace verbatix::test {

// A place in a window's client area as one on the screen.
POINT OnScreen(HWND window, int x, int y);

// Puts the mouse there and waits until it stays.
void MoveMouse(POINT place);

// Puts it beside all windows: one that comes up below the pointer has the bench read the keyboard anew, and
// what is held there is let go.
void ParkMouse();

// Puts the mouse there and presses and releases a button.
void ClickAt(POINT place, DWORD down = MOUSEEVENTF_LEFTDOWN, DWORD up = MOUSEEVENTF_LEFTUP);

// Drags with the left button. `before` is called before the button goes up, with the mouse at the end.
void DragMouse(POINT from, POINT to, const std::function<void()>& before = {});

}  // namespace verbatix::test
