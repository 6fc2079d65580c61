// The menu of the list and the tree.
#pragma once

#include <windows.h>

namespace verbatix {

// WM_CONTEXTMENU: shows the menu at the mouse, whose item is selected first, or, by the keyboard (`place`
// is -1), at the selected item. False when `control` is neither list nor tree.
bool OnContextMenu(HWND control, LPARAM place);

}  // namespace verbatix
