#include "app/single_instance.h"

#include "base/handle.h"
#include "base/product.h"

namespace verbatix {

UINT InstanceMessage() {
    static const UINT message = RegisterWindowMessageW(kProductName);
    return message;
}

// Kept for the life of the process; the system lets go of it at the end, however the process ends.
static UniqueKernelObject mutex;

bool ClaimSession() {
    mutex.Reset(CreateMutexW(nullptr, FALSE, kProductName));
    const DWORD error = GetLastError();
    return error != ERROR_ALREADY_EXISTS && error != ERROR_ACCESS_DENIED;
}

void ReleaseSession() {
    mutex.Reset();
}

static BOOL CALLBACK AskWindow(HWND window, LPARAM found) noexcept {
    constexpr UINT kAnswerMilliseconds = 5000;
    DWORD_PTR answer = 0;
    // A window without title is asked as well: the frame window's title is nobody's business.
    SendMessageTimeoutW(window, InstanceMessage(), 0, 0, SMTO_BLOCK | SMTO_ABORTIFHUNG, kAnswerMilliseconds,
                        &answer);
    if (answer != InstanceMessage()) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND FindRunningCopy() {
    // This process was started by the user and may give the foreground away; the running copy may not
    // take it.
    AllowSetForegroundWindow(ASFW_ANY);
    HWND found = nullptr;
    EnumWindows(AskWindow, reinterpret_cast<LPARAM>(&found));
    return found;
}

}  // namespace verbatix
