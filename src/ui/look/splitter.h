// The bar between list and editor: dragged with the mouse, moved with the arrow keys once it has the focus,
// put back by a double click or the Home key. Where it stands is an option for each of the two
// arrangements, written when the moving is done; Esc takes back what the keys did. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Makes its window class known, which the template of the main dialog names. To be called before that.
void RegisterSplitter(HINSTANCE instance);

// Gives the bar the keyboard until Enter or Esc gives it back.
void FocusSplitter();

}  // namespace verbatix
