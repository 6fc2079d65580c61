#include "support/message_thread.h"

namespace verbatix::test {

static constexpr UINT kRun = WM_APP + 1;
static constexpr UINT kEnd = WM_APP + 2;

MessageThread::MessageThread() {
    const HANDLE ready = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    thread_ = std::thread([this, ready] {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"VerbatixTestMessageThread";
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                  windowClass.hInstance, nullptr);
        SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetEvent(ready);
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            dispatching_ = true;
            DispatchMessageW(&message);
            dispatching_ = false;
        }
    });
    WaitForSingleObject(ready, INFINITE);
    CloseHandle(ready);
}

MessageThread::~MessageThread() {
    SendMessageW(window_, kEnd, 0, 0);
    thread_.join();
}

void MessageThread::Run(const std::function<void()>& work) {
    SendMessageW(window_, kRun, 0, reinterpret_cast<LPARAM>(&work));
}

std::vector<ArrivedCommand> MessageThread::Commands() {
    std::vector<ArrivedCommand> copy;
    Run([&] { copy = commands_; });
    return copy;
}

LRESULT CALLBACK MessageThread::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<MessageThread*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case kRun: (*reinterpret_cast<const std::function<void()>*>(lParam))(); return 0;
        case kEnd: DestroyWindow(window); return 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        case WM_COMMAND: self->commands_.push_back({LOWORD(wParam), self->dispatching_}); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

}  // namespace verbatix::test
