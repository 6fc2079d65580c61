// Taking back what was done to the list, and doing it again. UI thread only.
#pragma once

namespace verbatix {

// Takes the last step back, or does the one again that was taken back last, saves the list, and selects and
// shows what has come back. What is being typed is a step too.
// Nothing happens where there is nothing to take back.
void Undo();
void Redo();

// The link in the status bar was pressed.
void FollowOffer();

}  // namespace verbatix
