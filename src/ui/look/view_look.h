// How list, tree and the editor's text are drawn, by the options of the Window menu. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Gives list, tree and text the chosen size of the dialog's font (100, 125 or 150 %), and the list its
// drawing in memory or straight to the screen. A font that cannot be made leaves the dialog's own.
void ApplyViewLook(HWND dialog);

}  // namespace verbatix
