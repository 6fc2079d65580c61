// One look for every window of the program: dark or light (base/theme.h), by the class of each control and
// not by the window that it stands in. Message boxes are Windows' own and stay as they are. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Makes the window and everything in it look as the theme says now. Every dialog calls it first of all in
// WM_INITDIALOG, and whoever makes another window after that; may be called again at any time. What is and
// stays light is not touched.
void DressWindow(HWND window);

// The same for all windows of this thread, when the theme or its colours have changed.
void DressAllWindows();

}  // namespace verbatix
