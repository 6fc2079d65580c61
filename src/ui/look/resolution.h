// The main window on screens of every resolution and size. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Gives the window the program's icon in the sizes of its resolution, and says that what is in it is laid
// out here and not by Windows.
void SetUpResolution(HWND dialog);

// WM_DPICHANGED: fonts and icons for the new resolution, and the place that Windows suggests, which may be
// null. The window has to be laid out anew afterwards.
void OnResolutionChanged(HWND dialog, UINT dpi, const RECT* suggested);

// Screens or task bar have changed: a window that has become too large, or out of reach, is moved.
void KeepOnScreen(HWND dialog);

}  // namespace verbatix
