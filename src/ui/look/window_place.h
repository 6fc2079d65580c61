// Where the main window stands, remembered from run to run.
#pragma once

#include <windows.h>

namespace verbatix {

// Stores the window's place in the settings file; that of a maximised one stays while it has not been
// shown.
void RememberWindowPlace(HWND window);

// Gives the window its stored place. One that lies on no screen any more is moved onto the nearest; one
// that was never stored, or cannot be read, leaves the window as it is. The window is not shown. Returns
// whether it was maximised.
bool RestoreWindowPlace(HWND window);

// `place` moved, and where necessary shrunk, so that it lies inside `workArea`; unchanged when it is no
// larger than that, and enough of its title bar to take hold of is inside already.
RECT PlaceOnScreen(RECT place, RECT workArea);

}  // namespace verbatix
