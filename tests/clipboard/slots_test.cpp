#include "clipboard/slots.h"

#include <gtest/gtest.h>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "support/foreign_clipboard.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix {
namespace {

std::wstring ClipboardNow() {
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

class Slots : public testing::Test {
  protected:
    void Select(const wchar_t* text) const {
        target_.SetText(text);
        SendMessageW(target_.Edit(), EM_SETSEL, 0, -1);
    }
    bool Shows(const std::wstring& text) const {
        return test::WaitFor([&] { return target_.Text() == text; });
    }

    const test::Target target_;
};

TEST(SlotStores, AreNineStoresOfTheirOwn) {
    for (const wchar_t character : std::wstring(L"123456789x")) {
        ASSERT_TRUE(ClipboardPutText(std::wstring(L"text ") + character));
        SaveSlot(character);
    }
    for (wchar_t slot = L'1'; slot <= L'9'; ++slot) {
        RestoreClipboard(clipboardSlots[slot - L'0']);
        EXPECT_EQ(ClipboardNow(), slot == L'1' ? L"text x" : std::wstring(L"text ") + slot);
    }
    EXPECT_EQ(clipboardSlots[0].Count(), 0);
    for (const wchar_t first : {L'0', L'\0', L':', L'/', L'\xff13'}) EXPECT_EQ(SlotIndexFromChar(first), 1);
}

TEST_F(Slots, AreCopiedAndPasted) {
    Select(L"three ");
    ASSERT_TRUE(ClipboardPutText(L"old"));
    CopySlot(L'3', true);
    EXPECT_EQ(ClipboardNow(), L"old");
    Select(L"one ");
    CopySlot(L'1', false);
    EXPECT_EQ(ClipboardNow(), L"one ");
    // Nothing of earlier times comes back where there was nothing, or when a restore is due already.
    ASSERT_TRUE(test::PutForeign({}));
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardNow(), L"one ");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    KeepPreviousClipboard();
    ASSERT_TRUE(ClipboardPutText(L"the program's"));
    SaveSlot(L'2');
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardNow(), L"the user's");
    ClearClipboard();
    RestoreClipboard(clipboardSlots[2]);
    EXPECT_EQ(ClipboardNow(), L"the user's");

    PasteSlots(L"abc:-0");
    EXPECT_EQ(ClipboardNow(), L"the user's");
    PasteSlots(L"a3 10x3");
    EXPECT_TRUE(Shows(L"three one three ")) << target_.Text();
    PasteSlot(L'1');
    EXPECT_TRUE(Shows(L"three one three one ")) << target_.Text();
    EXPECT_EQ(ClipboardNow(), L"one ");
}

}  // namespace
}  // namespace verbatix
