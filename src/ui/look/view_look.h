// How list, tree and the editor's text are drawn, by the options of the Window menu. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Gives the controls the font that Windows uses for messages, at the window's resolution; list, tree and
// text the chosen size of it (100, 125 or 150 %), and the text one whose letters are of one width, by
// option. The list draws in memory or straight to the screen. The window has to be laid out anew
// afterwards.
void ApplyViewLook(HWND dialog);

// The chosen size of list, tree and text, in per cent.
int ViewSizePercent();

}  // namespace verbatix
