// Several items of the tree selected at once, by mouse and keyboard as in a list: Ctrl and a click take one
// more or one less, Shift and a click all from the last one on; Shift with the arrows, Ctrl with the arrows
// and the space bar do the same. The control itself knows one selected item. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

void SetUpTreeMarks(HWND tree);

}  // namespace verbatix
