// Which input an open paste menu must not get. A menu that a hotkey opens starts with modifiers and buttons
// still held, and with the program's own Alt press in the queue; each of these would end the menu or choose
// from it. The hotkey's own key is the keyboard hook's until it is released. Pure; the popup asks for each
// message of the menu.
#pragma once

#include <windows.h>

namespace verbatix {

enum class MenuInput {
    Pass,     // the menu gets it
    Swallow,  // nobody gets it
    Close,    // nobody gets it, and the menu closes
};

struct MenuInputState {
    DWORD openedAt = 0;              // message time; Alt events up to then are the program's own
    bool altDown = false;            // pressed while the menu was open
    bool buttonWasPressed = false;   // likewise, any mouse button
    bool lastWasButtonDown = false;  // the last message was a mouse button going down
    POINT buttonPoint = {};          // where, on the screen
};

// Decides on one message and remembers what the next decision needs.
//
// Alt: Windows closes a menu when Alt goes down, which is too early where Alt is part of the hotkey that is
// pressed again; so it closes when Alt comes up.
// Mouse: the button of a hotkey comes up over whatever row lies below it.
MenuInput DecideMenuInput(MenuInputState& state, const MSG& message);

}  // namespace verbatix
