// Watches the program for faults from a thread of its own: an exception that nobody handles, which ends the
// program after its report, and a main thread that has not answered for 10 seconds, which goes on after it.
#pragma once

#include <windows.h>

namespace verbatix {

// Begins the watch for crashes. The reports go to the folder of the settings file, which is known by then.
// Call it once, from the main thread; where the watching thread cannot be made there is no watch.
void StartFaultWatch();

// From now on the window is asked every second whether it still answers.
void WatchForHangs(HWND mainThreadWindow);

// Tells the user of a crash in the middle of an earlier start, before this one comes to the same place.
void TellOfCrashInStart();

// The start is finished. Tells the user, in a box owned by `owner`, of a report that is newer than the last
// one told of, and opens its folder when he wants that.
void TellOfFault(HWND owner);

}  // namespace verbatix
