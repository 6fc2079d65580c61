// Keys of the main dialog that its controls do not know themselves.
#pragma once

#include <windows.h>

namespace verbatix {

// Ctrl+F goes to the filter, Ctrl+A selects a whole field, Down goes from the filter to the list, and
// Escape clears the filter and otherwise leaves a field alone, which by itself would close the window.
// Returns true when the message was such a key and must not be passed on.
bool HandleDialogKey(const MSG& message);

}  // namespace verbatix
