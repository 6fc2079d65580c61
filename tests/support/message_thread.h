// A second thread with a message loop, for what must live apart from the thread that plays the keys: the
// keyboard hook and the windows it posts to.
#pragma once

#include <windows.h>

#include <functional>
#include <thread>
#include <vector>

namespace verbatix::test {

// A WM_COMMAND that arrived; a posted one came through the queue, any other was sent.
struct ArrivedCommand {
    int id;
    bool posted;
    bool operator==(const ArrivedCommand&) const = default;
};

class MessageThread {
  public:
    MessageThread();
    ~MessageThread();
    MessageThread(const MessageThread&) = delete;
    MessageThread& operator=(const MessageThread&) = delete;

    // Runs `work` on the thread and returns when it is done.
    void Run(const std::function<void()>& work);

    // A hidden window of the thread, and the commands it has got so far.
    HWND Window() const { return window_; }
    std::vector<ArrivedCommand> Commands();

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    std::vector<ArrivedCommand> commands_;  // touched on the thread only, like the next one
    bool dispatching_ = false;
    std::thread thread_;
};

}  // namespace verbatix::test
