// Names edited in place: in the list the whole label, in the tree the last part of an entry's label or a
// group's part of the path in all labels below it. A hotkey is not a name and is not edited. Escape leaves
// everything as it was. UI thread only.
#pragma once

#include <windows.h>

#include <string>

#include "ui/views/tree_rows.h"

namespace verbatix {

// Starts editing what is selected in the shown view. Says so in the status bar when nothing is.
void RenameSelected();

// The controls' own starts (F2, a slow second click): the result for the control, which is not to start
// when it is not 0.
LRESULT OnBeginRenameNode(int node);
LRESULT OnBeginRenameRow(int position);

// The editing has ended with that name, or with null for "not renamed". It is carried out when the control
// is done, at WM_RENAMED.
void OnEndRename(const wchar_t* name);
void OnRenamed();

}  // namespace verbatix
