// Watches the program for faults from a thread of its own: an exception that nobody handles, which ends the
// program after its report, and a main thread that has not answered for 10 seconds, which goes on after it.
#pragma once

#include <windows.h>

namespace verbatix {

// Begins the watch; `mainThreadWindow` is asked every second whether it still answers. The folder is that
// of the settings file. Call it once, from the main thread; where the thread cannot be made there is no
// watch.
void StartFaultWatch(HWND mainThreadWindow);

// Tells the user, in a box owned by `owner`, of a report that is newer than the last one told of, and opens
// its folder when he wants that.
void TellOfFault(HWND owner);

}  // namespace verbatix
