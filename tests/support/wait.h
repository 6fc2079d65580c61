// Waiting for facts: a test never sleeps for a time and hopes.
#pragma once

#include <windows.h>

namespace verbatix::test {

// Asks `fact` every 5 ms until it holds or `milliseconds` have passed. Returns whether it held. Messages of
// the calling thread are dispatched meanwhile, so that windows and hooks of the test stay alive.
template <typename Fact>
bool WaitFor(Fact fact, DWORD milliseconds = 5000) {
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    for (;;) {
        if (fact()) return true;
        if (GetTickCount64() >= deadline) return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

// Dispatches messages for that long: for showing that something does NOT happen.
inline void Linger(DWORD milliseconds) {
    WaitFor([] { return false; }, milliseconds);
}

}  // namespace verbatix::test
