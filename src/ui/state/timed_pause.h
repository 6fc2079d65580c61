// Pausing the hotkeys by the user's wish: until he takes it back, or for a time, after which they come back
// by themselves. Main thread only.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace verbatix {

// When a pause ends, by two clocks: the one that counts on while the machine sleeps (milliseconds since the
// system started), and the one that people read (seconds since 1970, UTC).
struct PauseEnd {
    ULONGLONG tick = 0;
    std::int64_t time = 0;
};

// Over by either clock: hotkeys that stay away although the time has passed are worse than ones that come
// back early because somebody has put the clock forward.
bool IsPauseOver(const PauseEnd& end, ULONGLONG tick, std::int64_t time);

// The time at which it will be over, for showing. Where the clock has been put back meanwhile, that is not
// what it was when the pause began.
std::int64_t ShownPauseEnd(const PauseEnd& end, ULONGLONG tick, std::int64_t time);

// Pauses the hotkeys, or lets them work again; the end of a timed pause is forgotten.
void PauseHotkeys(bool paused);
void PauseHotkeysForAnHour();

bool IsPausedForATime();
// "21:15", as the user's Windows writes it; empty without a timed pause.
std::wstring PauseEndText();

// Ends a timed pause that is over. True when it did.
bool EndPauseInTime();

}  // namespace verbatix
