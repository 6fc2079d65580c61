#include "hotkeys/pause.h"

namespace verbatix {

bool isInsideHook = false;
DWORD patienceInsideHook = 0;
void (*dispatchMessage)(MSG& message) = nullptr;

void ServeWaitingKeys() {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

static void Dispatch(MSG& message) {
    if (dispatchMessage) return dispatchMessage(message);
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

void DispatchWaitingKeys() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) Dispatch(message);
}

// The tick count moves in steps of up to 16 ms, too coarse for waits of 10 and 20 ms.
static long long CountIn(long long unitsPerSecond) {
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    LARGE_INTEGER counter = {};
    QueryPerformanceCounter(&counter);
    return counter.QuadPart / frequency.QuadPart * unitsPerSecond +
           counter.QuadPart % frequency.QuadPart * unitsPerSecond / frequency.QuadPart;
}

static long long Milliseconds() {
    return CountIn(1000);
}

void Pause(DWORD milliseconds) {
    if (isInsideHook) return Sleep(milliseconds);
    const long long deadline = Milliseconds() + milliseconds;
    for (long long left = milliseconds; left > 0; left = deadline - Milliseconds()) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(left), QS_SENDMESSAGE);
        ServeWaitingKeys();
    }
}

void PauseExactly(DWORD milliseconds) {
    constexpr long long kMicroseconds = 1'000'000;
    const long long deadline = CountIn(kMicroseconds) + milliseconds * 1000LL;
    while (CountIn(kMicroseconds) < deadline) {
        if (!isInsideHook) ServeWaitingKeys();
        SwitchToThread();
    }
}

}  // namespace verbatix
