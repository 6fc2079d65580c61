// The entry as a whole: a new one, a copy, deleted, tried out. What the editor's buttons do.
#pragma once

namespace verbatix {

// Adds an entry, or a copy of the shown one without its hotkey, in the first deleted entry's place or at
// the end, saves the list and shows the new entry, with the caret in its label.
void NewEntry();
void CopyEntry();

// Blanks the shown entry's text and label; its place in the file stays. The status bar offers it back.
void DeleteEntry();

// Executes the text of the editor in the window that the user came from (test_target.h), which gets the
// foreground first and keeps it, so that the user sees what came of it. Without such a window the user is
// told.
void TestEntry();

}  // namespace verbatix
