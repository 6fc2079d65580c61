// Another program's edit control in front, with text of which a part is selected: where copy and paste
// strokes arrive.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/key_watch.h"
#include "store/settings.h"
#include "support/desktop.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"
#include "support/keys.h"
#include "support/mouse.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix::test {

// One program serves all tests of a run.
class SelectionTarget : public testing::Test {
  protected:
    void SetUp() override {
        WaitForClipboard();
        ParkMouse();
        static const Process program(HelperPath(L"target_window.exe"));
        target = program.WaitForVisibleWindow(L"VerbatixTestTarget");
        ASSERT_TRUE(target);
        edit = FindWindowExW(target, nullptr, L"EDIT", nullptr);
        Select(L"");
        SetForegroundWindow(target);
        ASSERT_TRUE(SettlesInFront(target));
        Put(L"old text");
        keepClipboardOnce = false;
        settings.restoreOldClipboard = 0;
        KeyWatch::Take();
    }
    void TearDown() override { DestroyWindow(own_); }

    // Fills the control and selects all of it.
    void Select(const std::wstring& text) {
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        SendMessageW(edit, EM_SETSEL, 0, -1);
    }
    // Puts a text on the clipboard, however long the target still reads it.
    static void Put(const std::wstring& text) {
        EXPECT_TRUE(WaitFor([&] { return ClipboardPutText(text); }));
    }
    void SelectNothing() { SendMessageW(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0); }

    // How often Ctrl with that key was played since the last question.
    static int StrokesOf(DWORD key) {
        int count = 0;
        for (const SeenKey& seen : KeyWatch::Take())
            count += seen.key == key && !seen.up && seen.tag == 444;
        return count;
    }

    bool Settles() const { return SettlesInFront(target); }
    bool TargetShows(const std::wstring& text) const {
        return WaitFor([&] { return WindowText(edit) == text; }, 20000);
    }

    KeyWatch watch;
    HWND target = nullptr;
    HWND edit = nullptr;

  private:
    // The program's own window, which lies on top: left to itself, the system activates it after a box.
    HWND own_ = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                                300, 200, nullptr, nullptr, nullptr, nullptr);
};

}  // namespace verbatix::test
