// The main dialog laid out: fetches its size and carries out what main_places.h says. UI thread only.
#pragma once

#include <windows.h>

#include "ui/look/main_places.h"

namespace verbatix {

// Lays all controls out in the client area of the dialog, in units of its font.
void LayOutControls(HWND dialog);

// Where everything stands now.
MainPlaces PlacesNow(HWND dialog);

// The smallest outer size of the dialog: what its controls need, but never more than the work area of its
// monitor.
SIZE SmallestSize(HWND dialog);

// Makes a window that has no remembered place as large as is comfortable, as far as the screen allows.
void GiveComfortableSize(HWND dialog);

// The work area of the monitor on which most of the rectangle lies, or which is nearest.
RECT WorkAreaOf(const RECT& place);

}  // namespace verbatix
