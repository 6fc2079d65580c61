// Message boxes of the program under test, read and answered.
#pragma once

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

#include "support/process.h"

namespace verbatix::test {

// Answers, from another thread, the next message box of this process with its default button. Read what it
// saw after the call that showed the box has returned.
class MessageBoxAnswer {
  public:
    MessageBoxAnswer() : thread_([this] { Watch(); }) {}
    ~MessageBoxAnswer() { Seen(); }
    MessageBoxAnswer(const MessageBoxAnswer&) = delete;
    MessageBoxAnswer& operator=(const MessageBoxAnswer&) = delete;

    // Ends the waiting; false when no box came up so far.
    bool Seen() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
        return seen_;
    }
    // After Seen() has said true.
    const std::wstring& Text() const { return text_; }
    const std::wstring& Caption() const { return caption_; }
    bool HasOwner() const { return hasOwner_; }

  private:
    static HWND OwnMessageBox() {
        return FindTopWindow(L"#32770", [](HWND box) {
            return ProcessOf(box) == GetCurrentProcessId() && IsWindowVisible(box);
        });
    }

    void Watch() {
        HWND box = nullptr;
        while (!stop_ && (box = OwnMessageBox()) == nullptr) Sleep(5);
        if (!box) return;
        seen_ = true;
        caption_ = WindowText(box);
        for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Static", nullptr)) != nullptr;) {
            // A picture is a static control without text.
            if (const std::wstring text = WindowText(child); !text.empty()) text_ = text;
        }
        hasOwner_ = GetWindow(box, GW_OWNER) != nullptr;
        // The box may not take keys yet, so the answer is repeated until it is gone. Its handle may then be
        // another window's, of any program.
        for (; OwnMessageBox() == box; Sleep(20)) {
            PostMessageW(box, WM_COMMAND, LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), 0);
        }
    }

    std::wstring text_;
    std::wstring caption_;
    bool hasOwner_ = false;
    bool seen_ = false;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

}  // namespace verbatix::test
