#include "clipboard/slots.h"

#include <gtest/gtest.h>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "support/debug_lines.h"
#include "support/folder.h"
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

void FillSlot(wchar_t slot, const wchar_t* text) {
    ASSERT_TRUE(ClipboardPutText(text));
    SaveSlot(slot);
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

TEST(SlotIndexFromChar, TakesEverythingElseForTheFirst) {
    for (const auto& [character, slot] : {std::pair(L'1', 1),
                                          {L'5', 5},
                                          {L'9', 9},
                                          {L'0', 1},
                                          {L'\0', 1},
                                          {L':', 1},
                                          {L'/', 1},
                                          {L'a', 1},
                                          {L'\xff13', 1},
                                          {L'\xffff', 1}}) {
        EXPECT_EQ(SlotIndexFromChar(character), slot);
    }
}

TEST(Slots, AreNineStoresOfTheirOwn) {
    test::DebugLines lines;
    for (wchar_t slot = L'1'; slot <= L'9'; ++slot) FillSlot(slot, (std::wstring(L"text ") + slot).c_str());
    FillSlot(L'x', L"of the first");
    const std::wstring count = std::to_wstring(clipboardSlots[1].Count());
    EXPECT_EQ(lines.Seen().back(), L"Save: " + count + L" slot: 1\n");
    for (wchar_t slot = L'1'; slot <= L'9'; ++slot) {
        RestoreClipboard(clipboardSlots[slot - L'0']);
        EXPECT_EQ(ClipboardNow(), slot == L'1' ? L"of the first" : std::wstring(L"text ") + slot);
    }
    EXPECT_EQ(clipboardSlots[0].Count(), 0);
}

TEST(Slots, ArePastedIntoTheForegroundProgram) {
    const Target target;
    FillSlot(L'3', L"three ");
    FillSlot(L'1', L"one ");
    ASSERT_TRUE(ClipboardPutText(L"not pasted"));
    const ULONGLONG start = GetTickCount64();
    PasteSlots(L"a3 10x3");
    // Two pauses between three pastes, three short waits before them.
    EXPECT_GE(GetTickCount64() - start, 1000u + 60 - 16);
    EXPECT_TRUE(target.Shows(L"three one three ")) << target.Text();

    test::DebugLines lines;
    PasteSlot(L'1');
    EXPECT_TRUE(target.Shows(L"three one three one ")) << target.Text();
    EXPECT_EQ(ClipboardNow(), L"one ");
    EXPECT_EQ(lines.Seen()[0], L"Paste: " + std::to_wstring(clipboardSlots[1].Count()) + L" slot: 1\n");
}

TEST(Slots, PasteNothingWithoutADigit) {
    const Target target;
    FillSlot(L'1', L"one");
    ASSERT_TRUE(ClipboardPutText(L"mine"));
    for (const wchar_t* digits : {L"", L"0", L"abc:-"}) PasteSlots(digits);
    test::Linger(200);
    EXPECT_EQ(target.Text(), L"");
    EXPECT_EQ(ClipboardNow(), L"mine");
}

TEST(Slots, CopyTheSelectionAndGiveTheOldClipboardBack) {
    const Target target;
    for (const bool restore : {true, false}) {
        ASSERT_TRUE(ClipboardPutText(L"old"));
        target.Select(restore ? L"first selection" : L"second selection");
        test::DebugLines lines;
        CopySlot(L'4', restore);
        EXPECT_EQ(lines.Seen().back(),
                  L"Copy: " + std::to_wstring(clipboardSlots[4].Count()) + L" slot: 4\n");
        EXPECT_EQ(ClipboardNow(), restore ? L"old" : L"second selection");
        RestoreClipboard(clipboardSlots[4]);
        EXPECT_EQ(ClipboardNow(), restore ? L"first selection" : L"second selection");
    }
}

}  // namespace
}  // namespace verbatix
