// Where the controls of the main dialog stand.
#pragma once

#include <windows.h>

namespace verbatix {

// Lays all controls out in the client area of the dialog; everything is measured in dialog units, so it
// follows font and resolution.
void LayOutControls(HWND dialog);

// Makes a window that has no remembered place half as large again as the smallest size, as far as the
// screen allows.
void GiveComfortableSize(HWND dialog);

}  // namespace verbatix
