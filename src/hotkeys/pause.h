// Waiting in the middle of an execution, on the hook's thread. Windows gives a hook little time for each
// key and then lets the key through, so that a wait outside of the hook has to answer for the keys of the
// user that come meanwhile.
#pragma once

#include <windows.h>

namespace verbatix {

// Set while an entry is executed before the hook has answered: the system holds all further keys back
// then, and there is nothing to serve.
extern bool isInsideHook;

// How many milliseconds that execution may wait altogether for programs that are slow; the waits that are
// its own are not among them.
extern DWORD patienceInsideHook;

// Waits that many milliseconds. Messages that are sent to this thread, the hook's key events among them,
// are served meanwhile; posted ones wait.
void Pause(DWORD milliseconds);

// Waits not much longer than that, by keeping the processor busy: for many short waits in a row. The
// system's clock, which Pause relies on, may tick only every 15.6 ms.
void PauseExactly(DWORD milliseconds);

// Serves what waits for this thread now.
void ServeWaitingKeys();

// Dispatches a message as the thread's message loop does; set by whoever runs that. Null: to its window.
extern void (*dispatchMessage)(MSG& message);

// Dispatches the keys that wait for windows of this thread.
void DispatchWaitingKeys();

}  // namespace verbatix
