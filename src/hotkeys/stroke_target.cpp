#include "hotkeys/stroke_target.h"

#include <algorithm>

#include "hotkeys/pause.h"

namespace verbatix {

static HWND strokeTarget;

void NoteStroke() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const bool isKnown = GetGUIThreadInfo(0, &info) != FALSE && info.hwndFocus;
    strokeTarget = isKnown ? info.hwndFocus : GetForegroundWindow();
}

// A window that has gone counts as one that answers, and so does one of higher integrity that may not be
// asked: there is nobody to wait for.
bool Answers(HWND window, DWORD milliseconds) {
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, milliseconds, nullptr)) return true;
    return GetLastError() == ERROR_ACCESS_DENIED || !IsWindow(window);
}

// A stroke into a window of ours waits in the queue of the very thread that waits for it.
static bool ComesOn(HWND window, DWORD milliseconds) {
    if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) {
        return Answers(window, milliseconds);
    }
    if (!isInsideHook) DispatchWaitingKeys();
    return true;
}

// A message that is sent overtakes the keys that wait in the queue: the first answer only tells that the
// program takes its messages again. Ctrl, the key, the character made of it and the two releases are taken
// one by one behind it, and before each of them the program answers again; while it handles one it does
// not.
bool AwaitStroke(DWORD milliseconds) {
    constexpr int kAnswers = 6;
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    for (int i = 0; i < kAnswers && strokeTarget; ++i) {
        if (i > 0) PauseExactly(1);
        const ULONGLONG now = GetTickCount64();
        if (!ComesOn(strokeTarget, now < deadline ? static_cast<DWORD>(deadline - now) : 1)) return false;
    }
    strokeTarget = nullptr;
    return true;
}

void AwaitLastStroke() {
    constexpr DWORD kLimit = 500;
    if (!isInsideHook) {
        AwaitStroke(kLimit);
        return;
    }
    const ULONGLONG start = GetTickCount64();
    AwaitStroke(patienceInsideHook);
    const ULONGLONG waited = GetTickCount64() - start;
    patienceInsideHook -= static_cast<DWORD>(std::min<ULONGLONG>(waited, patienceInsideHook));
}

void AwaitCopy(DWORD milliseconds) {
    Pause(milliseconds);
    AwaitLastStroke();
}

}  // namespace verbatix
