// The hidden top-level window that lives as long as the program: it answers other copies, owns the tray
// icon and brings up the main dialog once messages are dispatched.
#pragma once

#include <windows.h>

namespace verbatix {

// Registers the class and creates the window, hidden. When another copy runs, that copy is asked to show
// itself and a quit message with kSecondCopyExitCode is posted; the window is created all the same. Returns
// null when the window could not be created.
HWND CreateFrameWindow(HINSTANCE instance);

// Dispatches messages until the program ends; returns its exit code.
int RunMessageLoop();

}  // namespace verbatix
