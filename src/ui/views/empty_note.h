// What stands in an empty list or tree: how to begin, or that the filter has left nothing. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Makes the view draw the note whenever it has no entry to show. To be called once a control.
void SetUpEmptyNote(HWND view);

}  // namespace verbatix
