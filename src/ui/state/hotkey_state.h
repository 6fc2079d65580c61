// What state the hotkeys are in, for the status bar and for picture and tip of the tray icon. The watch
// over the hook (ui/window/) keeps the record. Main thread only.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

struct HotkeyState {
    bool frontIsOutOfReach = false;  // the program in front has more rights and keeps its keys to itself
    bool frontIsPaused = false;      // the user wants no hotkeys in the program in front
    unsigned restored = 0;           // times that the hook was found gone
    // The window of another program that was in front last, and its program; neither the task bar's nor
    // one of ours. Nothing while that is the desktop.
    HWND lastFront = nullptr;
    std::wstring lastProgram;
};

extern HotkeyState hotkeyState;

// In the order in which they are told.
enum class HotkeyCondition { kPaused, kRefused, kOutOfReach, kPausedInFront, kActive };
HotkeyCondition ConditionOfHotkeys();

// The same in words.
std::wstring HotkeyStateText();

}  // namespace verbatix
