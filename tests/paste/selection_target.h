// Another program's edit control in front, with text of which a part is selected: where copy and paste
// strokes arrive.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

#include "clipboard/clipboard_text.h"
#include "hotkeys/key_watch.h"
#include "support/folder.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix::test {

class SelectionTarget : public testing::Test {
  protected:
    void SetUp() override {
        target = target_.WaitForVisibleWindow(L"VerbatixTestTarget");
        ASSERT_TRUE(target);
        edit = FindWindowExW(target, nullptr, L"EDIT", nullptr);
        ASSERT_TRUE(WaitFor([this] { return GetForegroundWindow() == target; }));
        ClipboardPutText(L"old text");
        watch.Take();
    }

    // Fills the control and selects all of it.
    void Select(const std::wstring& text) {
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        SendMessageW(edit, EM_SETSEL, 0, -1);
    }
    void SelectNothing() { SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0); }

    // How often Ctrl+C or Ctrl+V was played since the last question.
    int StrokesOf(DWORD key) const {
        int count = 0;
        for (const SeenKey& seen : watch.Take()) count += seen.key == key && !seen.up;
        return count;
    }

    bool TargetShows(const std::wstring& text) const {
        return WaitFor([&] { return WindowText(edit) == text; });
    }

    Process target_{HelperPath(L"target_window.exe")};
    HWND target = nullptr;
    HWND edit = nullptr;
    KeyWatch watch;
};

// A user who closes every message box of this thread while the object lives.
class MessageBoxCloser {
  public:
    MessageBoxCloser() : thread_([this, owner = GetCurrentThreadId()] { Run(owner); }) {}
    ~MessageBoxCloser() {
        done_ = true;
        thread_.join();
    }

  private:
    void Run(DWORD owner) {
        while (!done_) {
            HWND box = nullptr;
            EnumThreadWindows(
                owner,
                [](HWND window, LPARAM found) -> BOOL {
                    wchar_t name[8] = L"";
                    GetClassNameW(window, name, 8);
                    if (std::wstring_view(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
                    *reinterpret_cast<HWND*>(found) = window;
                    return FALSE;
                },
                reinterpret_cast<LPARAM>(&box));
            if (box) {
                SendMessageW(box, WM_COMMAND, IDOK, 0);
                WaitFor([box] { return !IsWindow(box); });
            }
            Sleep(5);
        }
    }

    std::atomic<bool> done_ = false;
    std::thread thread_;
};

}  // namespace verbatix::test
