// The window in which an entry is tried out: the one that the user came from. UI thread only.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Takes note of a window that is in front, where it is one to paste into.
void NoteFrontWindow(HWND front);

// The one that was noted last, while it can be pasted into, else the uppermost such window, but none that
// stays above all others; null when there is none. Never one that the system keeps out of sight. It may
// belong to a program with more rights, which nothing can be pasted into.
HWND TestTarget();

// What its title bar says, cut to a length that fits into a tip; empty where there is none.
std::wstring TestTargetName();

}  // namespace verbatix
