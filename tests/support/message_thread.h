// A second thread with a message loop, for what must live apart from the thread that plays the keys: the
// keyboard hook and the windows it posts to.
#pragma once

#include <windows.h>

#include <functional>
#include <future>
#include <thread>
#include <vector>

namespace verbatix::test {

// A hidden window of this thread; the procedure finds `self` in its GWLP_USERDATA.
inline HWND MakeWindow(WNDPROC procedure, void* self = nullptr, HWND parent = nullptr) {
    const HWND window = CreateWindowExW(0, L"STATIC", L"", parent ? WS_CHILD : WS_POPUP, 0, 0, 1, 1, parent,
                                        nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    return window;
}

class MessageThread {
  public:
    MessageThread() {
        thread_ = std::thread([this] {
            window_ = MakeWindow(Procedure, this);
            ready_.set_value();
            MSG message;
            while (GetMessageW(&message, nullptr, 0, 0) > 0) {
                dispatching_ = true;
                DispatchMessageW(&message);
                dispatching_ = false;
            }
        });
        ready_.get_future().wait();
    }
    ~MessageThread() {
        Run([this] { DestroyWindow(window_); });
        thread_.join();
    }
    MessageThread(const MessageThread&) = delete;
    MessageThread& operator=(const MessageThread&) = delete;

    // Runs `work` on the thread and returns when it is done.
    void Run(const std::function<void()>& work) {
        SendMessageW(window_, kRun, 0, reinterpret_cast<LPARAM>(&work));
    }

    // Called on the thread for each command; set by Run.
    std::function<void(int)> onCommand;

    // A hidden window of the thread, and the commands that were posted to it so far; a sent one is 0.
    HWND Window() const { return window_; }
    std::vector<int> Commands() {
        std::vector<int> copy;
        Run([&] { copy = commands_; });
        return copy;
    }

  private:
    static constexpr UINT kRun = WM_APP + 1;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* self = reinterpret_cast<MessageThread*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == kRun) (*reinterpret_cast<const std::function<void()>*>(lParam))();
        if (message == WM_DESTROY) PostQuitMessage(0);
        if (message == WM_COMMAND) {
            self->commands_.push_back(self->dispatching_ ? LOWORD(wParam) : 0);
            if (self->onCommand) self->onCommand(LOWORD(wParam));
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    std::promise<void> ready_;  // a member: the thread still has it in hand when the waiting ends
    HWND window_ = nullptr;
    std::vector<int> commands_;  // touched on the thread only, like the next one
    bool dispatching_ = false;
    std::thread thread_;
};

}  // namespace verbatix::test
