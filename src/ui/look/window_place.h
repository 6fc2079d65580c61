// Where the main window stands, remembered from run to run.
#pragma once

#include <windows.h>

#include <optional>

namespace verbatix {

// Stores the window's place in the settings file; that of a maximised one stays while it has not been
// shown.
void RememberWindowPlace(HWND window);

// Gives the window its stored place. One that lies on no screen any more is moved onto the nearest; one
// that was never stored, or cannot be read, leaves the window as it is. The window is not shown. Returns
// whether it was maximised.
bool RestoreWindowPlace(HWND window);

// The stored place that the window has been given, until it has been seen. It is one in pixels of its own
// screen: where that has another resolution than the one where the window was made, Windows would scale it,
// and the window would come up in another size at every start.
std::optional<RECT> PlaceUntilSeen();
// WM_SEEN.
void ForgetPlaceUntilSeen();

// `place` moved, and where necessary shrunk, so that it lies inside `workArea`; unchanged when it is no
// larger than that, and enough of its title bar to take hold of is inside already.
RECT PlaceOnScreen(RECT place, RECT workArea);

}  // namespace verbatix
