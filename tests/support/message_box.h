// Message boxes of the program under test, read and answered.
#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace verbatix::test {

// Answers, from another thread, the next message box of this process with its default button. Read what it
// saw after the call that showed the box has returned.
class MessageBoxAnswer {
  public:
    MessageBoxAnswer();
    ~MessageBoxAnswer();
    MessageBoxAnswer(const MessageBoxAnswer&) = delete;
    MessageBoxAnswer& operator=(const MessageBoxAnswer&) = delete;

    // Ends the waiting; false when no box came up so far.
    bool Seen();
    // After Seen() has said true.
    const std::wstring& Text() const { return text_; }
    const std::wstring& Caption() const { return caption_; }
    int Buttons() const { return buttons_; }
    bool HasOwner() const { return hasOwner_; }

  private:
    void Watch();

    std::wstring text_;
    std::wstring caption_;
    int buttons_ = 0;
    bool hasOwner_ = false;
    bool seen_ = false;
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

}  // namespace verbatix::test
