// The timers of the main window: the watch over the keyboard hook and the deferred steps.
#pragma once

#include <windows.h>

namespace verbatix {

// Starts the watch: one late installation of the hook, and the look at the clock every 100 ms.
void StartHookUpkeep();

// Carries a WM_TIMER out; unknown numbers do nothing.
void OnTimer(UINT_PTR timer);

}  // namespace verbatix
