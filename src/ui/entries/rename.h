// Names edited in place: in the list the whole label, in the tree the last part of an entry's label or a
// group's part of the path in all labels below it. A hotkey is not a name and is not edited. Escape leaves
// everything as it was. UI thread only.
#pragma once

#include <windows.h>

#include <optional>

namespace verbatix {

// Starts editing what is selected in the shown view. Says so in the status bar when nothing is.
void RenameSelected();

// A notification of list or tree that a name begins to be edited (F2, a slow second click) or has been:
// the answer for the control, which is not to begin when it is not 0. Nothing for other notifications.
std::optional<LRESULT> OnRenameNotify(const NMHDR& header);

// WM_RENAMED: the control is done, and the new name is carried out.
void OnRenamed();

}  // namespace verbatix
