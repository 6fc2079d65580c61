// What follows when the list of entries has changed. UI thread only.
#pragma once

#include "ui/state/undo_history.h"

namespace verbatix {

extern UndoHistory undoHistory;

// The list has changed: that becomes a step which the user can take back, and the status bar says so.
void NoteAction(Action action);

// The same, and the list is written, list and tree show it, and the hotkeys are those of the entries now.
// What could not be written is told by the list and stays marked as changed.
void KeepEntries(Action action = {});

// What is done next is a step of its own, whatever was typed before it.
void BeginStep();

// What has just been done is a step of its own, whatever is typed after it; saved at once.
void EndStep();

// Another list has taken the place of the one so far.
void ForgetActions();

// Fills the hotkey tables of the hook from the list.
void RebuildHotkeyTables();

}  // namespace verbatix
