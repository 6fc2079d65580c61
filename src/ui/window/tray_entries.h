// The entries that were used last, in the menu of the tray icon: for when the hands are on the mouse. UI
// thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Appends them, at most five, with a line below; nothing where none was ever used.
void AppendLastUsed(HMENU menu);

// Carries out the one that the command means, into the window that was in front before the menu. Where that
// cannot be pasted into, or does not come back to the front, the text stays on the clipboard, and a notice
// says so. False when the command means none.
bool RunLastUsed(int command, HWND window);

}  // namespace verbatix
