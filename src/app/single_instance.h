// One copy of the program a session: the second asks the first to show itself and ends.
#pragma once

#include <windows.h>

namespace verbatix {

// Exit code of a second copy.
inline constexpr int kSecondCopyExitCode = 0xAFFE;

// The registered message by which copies find each other. A running copy shows its window and answers with
// the message's own number; with that number as wParam and lParam it ends instead.
UINT InstanceMessage();

// Claims the session for this process until it ends. False when another copy holds it, which also is the
// case when the name exists and cannot be opened (a copy of another user or with more rights).
bool ClaimSession();

// Gives the claim up, for a copy that is to take this one's place.
void ReleaseSession();

// Asks every top-level window, up to 5 s each, until one answers as a running copy; hung windows are left
// out. The running copy shows itself by being asked. Returns its window or null.
HWND FindRunningCopy();

}  // namespace verbatix
