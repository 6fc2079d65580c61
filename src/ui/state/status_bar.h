// The status bar of the main window. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// Shows a notice that stands (see notice.h), else the number of entries, whether hotkeys are on, and
// nothing else: part 3 of the status bar is the clock watch's own.
void UpdateStatusBar();

// Shows a text across the status bar until its own come again: at the next selection or change.
void TellInStatusBar(const std::wstring& text);

}  // namespace verbatix
