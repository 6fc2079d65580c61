// Telling windows of the shell's file browser from others.
#pragma once

#include <windows.h>

namespace verbatix {

// Whether the window, its parent, its grandparent or its great-grandparent answers the message by which a
// shell browser gives out its interface. Each of them has 2 s to answer.
bool BelongsToShellBrowser(HWND window);

}  // namespace verbatix
