// What state the hotkeys are in, for the status bar and the tip of the tray icon. The watch over the hook
// (ui/window/) keeps the record. Main thread only.
#pragma once

#include <string>

namespace verbatix {

struct HotkeyState {
    bool frontIsOutOfReach = false;  // the program in front has more rights and keeps its keys to itself
    unsigned restored = 0;           // times that the hook was found gone
};

extern HotkeyState hotkeyState;

// Paused, refused, out of reach, active, or how often restored: the first of them that holds.
std::wstring HotkeyStateText();

}  // namespace verbatix
