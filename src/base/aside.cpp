#include "base/aside.h"

#include <memory>
#include <utility>

#include "base/handle.h"

namespace verbatix {

static DWORD WINAPI Work(void* parameter) noexcept {
    const std::unique_ptr<std::function<void()>> work(static_cast<std::function<void()>*>(parameter));
    (*work)();
    return 0;
}

static bool WaitServingSentMessages(HANDLE thread, DWORD milliseconds) {
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    for (;;) {
        const ULONGLONG now = GetTickCount64();
        const DWORD left = now < deadline ? static_cast<DWORD>(deadline - now) : 0;
        const DWORD waited = MsgWaitForMultipleObjects(1, &thread, FALSE, left, QS_SENDMESSAGE);
        if (waited != WAIT_OBJECT_0 + 1) return waited == WAIT_OBJECT_0;
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
}

bool DoAside(std::function<void()> work, DWORD milliseconds) {
    auto owned = std::make_unique<std::function<void()>>(std::move(work));
    const UniqueKernelObject thread(CreateThread(nullptr, 0, Work, owned.get(), 0, nullptr));
    if (!thread) return false;
    static_cast<void>(owned.release());  // the thread's from now on
    return WaitServingSentMessages(thread.Get(), milliseconds);
}

}  // namespace verbatix
