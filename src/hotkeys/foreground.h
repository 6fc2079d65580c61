// Bringing a window to the front from a background program.
#pragma once

#include <windows.h>

namespace verbatix {

// Makes `window` the foreground window. Windows grants that to a background program only around a key
// press, so an Alt press is played before and after unless Alt is held anyway. A window that does not
// exist is ignored. The Alt events arrive in the queue of the new foreground window.
void BringToFront(HWND window);

}  // namespace verbatix
