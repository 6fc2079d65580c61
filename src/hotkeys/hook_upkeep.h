// Windows drops a slow hook without a word, and it is most likely gone after the machine slept. The clock
// is looked at ten times a second; when it jumps, the hook is installed anew.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

struct ClockWatch {
    long long storedSeconds = 0;  // set to the current time before the first look
    unsigned jumps = 0;
};

// Stores the time (in seconds) and tells whether it differs by more than 2 from the one stored before, in
// either direction; such a jump is counted.
bool ClockJumped(ClockWatch& watch, long long seconds);

// Whether a key that reached a program at that time went past the hook, which saw its last event at the
// other; message times, in milliseconds, which wrap. A hook is asked before the key arrives, and now and
// then later than that.
bool HookWasPassedBy(DWORD keyTime, DWORD hookTime);

// For the status bar: clock jumps and hook installs.
std::wstring HookStatusText(unsigned jumps, unsigned installs);

}  // namespace verbatix
