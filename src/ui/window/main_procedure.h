// The main dialog's procedure: every message that Windows, the hook and the parts send to the window
// arrives here and is handed to the part whose business it is. All of it happens on the thread that created
// it.
#pragma once

#include <windows.h>

namespace verbatix {

// Creates the dialog, hidden: reads the settings and the list, fills the hotkey tables, installs the
// keyboard hook and starts the timers. Returns the window or null.
HWND CreateMainWindow(HINSTANCE instance);

}  // namespace verbatix
