// Entries as a whole: a new one, copies, deleted, tried out. What the editor's buttons and the Edit menu
// do.
#pragma once

namespace verbatix {

// Adds an entry, or copies of the selected ones without their hotkeys, in the places of deleted entries or
// at the end, saves the list and shows what is new, with the caret in the label.
void NewEntry();
void CopySelected();

// Blanks text and label of the selected entries, of all in a selected group or hotkey of the tree; their
// places in the file stay. The status bar offers them back.
void DeleteSelected();

// Gives the selected entries that modifier, and leaves each its key.
void SetModifier(unsigned modifier);

// Selects all entries that are shown, or the text of the field that has the keyboard.
void SelectAll();

// Executes the text of the editor in the window that the user came from (test_target.h), which gets the
// foreground first and keeps it, so that the user sees what came of it. Without such a window the user is
// told.
void TestEntry();

}  // namespace verbatix
