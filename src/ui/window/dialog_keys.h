// Keys of the main dialog that its controls do not know themselves.
#pragma once

#include <windows.h>

namespace verbatix {

// Ctrl+F goes to the filter, Ctrl+A selects a whole field, Down goes from the filter to the list or tree,
// F6 from filter to view to text and round, and Escape clears the filter and otherwise leaves a field
// alone, which by itself would close the window. In the view Enter goes to the text (or opens and closes a
// group), Delete deletes, F2 renames where no hook does, Alt+Up and Alt+Down move the entry. Escape ends a
// drag. Returns true when the message was such a key and must not be passed on.
bool HandleDialogKey(const MSG& message);

}  // namespace verbatix
