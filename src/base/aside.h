// Work that may take long, on a thread of its own.
#pragma once

#include <windows.h>

#include <functional>

namespace verbatix {

// Does the work on another thread and waits for it at most so many milliseconds. Messages that are sent to
// this thread are served meanwhile, the keyboard hook's among them. False when the work is not done by
// then, or could not be begun; it may go on by itself, so that it must own all that it touches.
bool DoAside(std::function<void()> work, DWORD milliseconds);

}  // namespace verbatix
