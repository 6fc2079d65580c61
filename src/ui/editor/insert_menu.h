// The menu of the Insert button: every code by its kind.
#pragma once

#include <windows.h>

namespace verbatix {

// Shows the menu below that button of the main dialog and inserts the choice into the editor's text.
void ShowInsertMenu(HWND button);

}  // namespace verbatix
