// Pressing a hotkey for the user (the editor's Test button) and asking whether Windows has taken a
// combination with the Windows key for itself.
#pragma once

#include <windows.h>

#include <vector>

#include "hotkeys/key_simulation.h"

namespace verbatix {

// The events of a pressed hotkey, in order. The key's low byte counts; any modifier code other than 1 to 6
// is pressed with the left Windows key.
std::vector<KeyStroke> SimulatedStrokes(unsigned modifier, unsigned key);

// Presses the hotkey as if the user had, so that the keyboard hook acts on it. With `test` set, a hotkey
// with the left Windows key is also checked by IsWinHotkeyTaken, which then reports. Returns true.
bool SimulateHotkey(unsigned modifier, unsigned key, bool test, HWND window = nullptr);

// Whether Windows or another program owns that key, of which the low byte counts, together with a Windows
// key, found by registering it for a moment on `window` (of the calling thread; null: on the thread
// itself). With `report` set a taken one is told in a message box owned by `window`.
bool IsWinHotkeyTaken(HWND window, unsigned key, bool report);

}  // namespace verbatix
