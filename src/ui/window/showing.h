// How the main window comes into sight. UI thread only.
#pragma once

namespace verbatix {

// Shows the window and brings it to the front, wherever it was hidden. The hook is installed anew unless
// hotkeys are paused: Windows drops a slow hook without a word, and the user who comes here may have
// come because of that.
void ShowMainWindow();

// Keeps the window above all others, or not, by the option.
void ApplyTopmost();

}  // namespace verbatix
