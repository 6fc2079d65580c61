// Windows drops a slow hook without a word, and it is most likely gone after the machine slept. The clock
// is looked at ten times a second; when it jumps, the hook is installed anew.
#pragma once

#include <string>

namespace verbatix {

struct ClockWatch {
    long long storedSeconds = 0;  // set to the current time before the first look
    unsigned jumps = 0;
};

// Stores the time (in seconds) and tells whether it differs by more than 2 from the one stored before, in
// either direction; such a jump is counted.
bool ClockJumped(ClockWatch& watch, long long seconds);

// For the status bar: clock jumps and hook installs.
std::wstring HookStatusText(unsigned jumps, unsigned installs);

}  // namespace verbatix
