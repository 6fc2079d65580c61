#include "hotkeys/pause.h"

namespace verbatix {

bool isInsideHook = false;

void ServeWaitingKeys() {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

// The tick count moves in steps of up to 16 ms, too coarse for waits of 10 and 20 ms.
static long long MillisecondsOf(const LARGE_INTEGER& frequency) {
    LARGE_INTEGER counter = {};
    QueryPerformanceCounter(&counter);
    return counter.QuadPart / frequency.QuadPart * 1000 +
           counter.QuadPart % frequency.QuadPart * 1000 / frequency.QuadPart;
}

void Pause(DWORD milliseconds) {
    if (isInsideHook) return Sleep(milliseconds);
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    const long long deadline = MillisecondsOf(frequency) + milliseconds;
    for (long long left = milliseconds; left > 0; left = deadline - MillisecondsOf(frequency)) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_SENDMESSAGE);
        ServeWaitingKeys();
    }
}

}  // namespace verbatix
