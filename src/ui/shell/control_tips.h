// Tips at the buttons and the status bar: what a button does and where, the figures explained, and in full
// what the bar has no room for. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Gives the controls of the dialog their tips. To be called once, when all of them are there.
void SetUpControlTips(HWND dialog);

// TTN_GETDISPINFO: the text of a tip that comes up now. Other notifications, and those of other tips, are
// left alone.
void OnTipNotify(NMHDR& header);

// The button that tries an entry out has got the keyboard: the status bar says where it will paste.
void NameTestTarget();

}  // namespace verbatix
