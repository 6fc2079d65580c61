#include "clipboard/slots.h"

#include <gtest/gtest.h>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "support/debug_lines.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using test::WaitFor;

std::wstring ClipboardNow() {
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

// Somebody else's window with the keyboard.
class Target {
  public:
    Target() : process_(L"\"" + test::HelperPath(L"target_window.exe") + L"\"") {
        const HWND window = process_.WaitForVisibleWindow(L"VerbatixTestTarget");
        edit_ = FindWindowExW(window, nullptr, L"EDIT", nullptr);
        WaitFor([&] { return GetForegroundWindow() == window; });
        process_.WaitForIdle();
    }
    std::wstring Text() const { return test::WindowText(edit_); }
    bool Shows(const std::wstring& text) const {
        return WaitFor([&] { return Text() == text; });
    }
    void Select(const wchar_t* text) const {
        SendMessageW(edit_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(edit_, EM_SETSEL, 0, -1);
    }

  private:
    test::Process process_;
    HWND edit_ = nullptr;
};

TEST(Slots, AreNineStoresOfTheirOwn) {
    test::DebugLines lines;
    for (const wchar_t character : std::wstring(L"123456789x")) {
        ASSERT_TRUE(ClipboardPutText(std::wstring(L"text ") + character));
        SaveSlot(character);
    }
    EXPECT_EQ(lines.Seen().back(), L"Save: " + std::to_wstring(clipboardSlots[1].Count()) + L" slot: 1\n");
    for (wchar_t slot = L'1'; slot <= L'9'; ++slot) {
        RestoreClipboard(clipboardSlots[slot - L'0']);
        EXPECT_EQ(ClipboardNow(), slot == L'1' ? L"text x" : std::wstring(L"text ") + slot);
    }
    EXPECT_EQ(clipboardSlots[0].Count(), 0);
    for (const wchar_t first : {L'0', L'\0', L':', L'/', L'\xff13'}) EXPECT_EQ(SlotIndexFromChar(first), 1);
}

TEST(Slots, AreCopiedAndPasted) {
    const Target target;
    target.Select(L"three ");
    ASSERT_TRUE(ClipboardPutText(L"old"));
    test::DebugLines lines;
    CopySlot(L'3', true);
    EXPECT_EQ(lines.Seen().back(), L"Copy: " + std::to_wstring(clipboardSlots[3].Count()) + L" slot: 3\n");
    EXPECT_EQ(ClipboardNow(), L"old");
    target.Select(L"one ");
    CopySlot(L'1', false);
    EXPECT_EQ(ClipboardNow(), L"one ");
    // Nothing of earlier times comes back where there was nothing, or when a restore is due already.
    ASSERT_TRUE(test::PutForeign({}));
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardNow(), L"one ");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    KeepPreviousClipboard();
    ASSERT_TRUE(ClipboardPutText(L"the program's"));
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardNow(), L"the user's");

    for (const wchar_t* digits : {L"", L"0", L"abc:-"}) PasteSlots(digits);
    EXPECT_EQ(ClipboardNow(), L"the user's");
    const ULONGLONG start = GetTickCount64();
    PasteSlots(L"a3 10x3");
    // Two pauses between three pastes, three short waits before them.
    EXPECT_GE(GetTickCount64() - start, 1000u + 60 - 16);
    EXPECT_TRUE(target.Shows(L"three one three ")) << target.Text();
    PasteSlot(L'1');
    EXPECT_TRUE(target.Shows(L"three one three one ")) << target.Text();
    EXPECT_EQ(ClipboardNow(), L"one ");
    EXPECT_EQ(lines.Seen().back(), L"Paste: " + std::to_wstring(clipboardSlots[1].Count()) + L" slot: 1\n");
}

}  // namespace
}  // namespace verbatix
