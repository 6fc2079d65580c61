// Which input an open paste menu must not get. A menu that a hotkey opens starts with keys and buttons
// still held, and with the program's own Alt press in the queue; each of these would end the menu or choose
// from it. Pure; the popup asks for each message of the menu.
#pragma once

#include <windows.h>

namespace verbatix {

enum class MenuInput {
    Pass,       // the menu gets it
    Swallow,    // nobody gets it
    Close,      // nobody gets it, and the menu closes
    PlayAgain,  // a held-back key turned out to be a stroke: its key-down is sent once more
};

struct MenuInputState {
    unsigned hotkey = 0;             // virtual-key code whose press opened the menu
    DWORD openedAt = 0;              // message time; Alt events up to then are the program's own
    bool hotkeyMayBeHeld = true;     // no key-up of it has been seen
    int heldBack = 0;                // its key-downs that did not get through
    bool altDown = false;            // pressed while the menu was open
    bool buttonWasPressed = false;   // likewise, any mouse button
    bool lastWasButtonDown = false;  // the last message was a mouse button going down
    POINT buttonPoint = {};          // where, on the screen
};

// Decides on one message and remembers what the next decision needs.
//
// Held hotkey: its key repeats after half a second and would choose the row with that access key. A single
// key-down followed by its key-up is a stroke for the menu all the same; it acts when the key comes up.
// Alt: Windows closes a menu when Alt goes down, which is too early where Alt is part of the hotkey that is
// pressed again; so it closes when Alt comes up.
// Mouse: the button of a hotkey comes up over whatever row lies below it.
MenuInput DecideMenuInput(MenuInputState& state, const MSG& message);

}  // namespace verbatix
