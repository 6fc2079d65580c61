#include "clipboard/slots.h"

#include <gtest/gtest.h>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "support/foreign_clipboard.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using test::ClipboardText;

TEST(SlotStores, AreNineStoresOfTheirOwn) {
    for (const wchar_t character : std::wstring(L"123456789x")) {
        ASSERT_TRUE(ClipboardPutText(std::wstring(L"text ") + character));
        SaveSlot(character);
    }
    for (wchar_t slot = L'1'; slot <= L'9'; ++slot) {
        RestoreClipboard(clipboardSlots[slot - L'0']);
        EXPECT_EQ(ClipboardText(), slot == L'1' ? L"text x" : std::wstring(L"text ") + slot);
    }
    EXPECT_EQ(clipboardSlots[0].Count(), 0);
    for (const wchar_t first : {L'0', L'\0', L':', L'/', L'\xff13'}) EXPECT_EQ(SlotIndexFromChar(first), 1);
}

TEST(Slots, AreCopiedAndPasted) {
    const test::Target target;
    const auto select = [&](const wchar_t* text) {
        target.SetText(text);
        SendMessageW(target.Edit(), EM_SETSEL, 0, -1);
    };
    const auto shows = [&](const std::wstring& text) {
        return test::WaitFor([&] { return target.Text() == text; });
    };
    select(L"three ");
    ASSERT_TRUE(ClipboardPutText(L"old"));
    CopySlot(L'3', true);
    EXPECT_EQ(ClipboardText(), L"old");
    select(L"one ");
    CopySlot(L'1', false);
    EXPECT_EQ(ClipboardText(), L"one ");
    // Nothing of earlier times comes back where there was nothing, or when a restore is due already.
    ASSERT_TRUE(test::PutForeign({}));
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardText(), L"one ");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    KeepPreviousClipboard();
    ASSERT_TRUE(ClipboardPutText(L"the program's"));
    SaveSlot(L'2');
    CopySlot(L'1', true);
    EXPECT_EQ(ClipboardText(), L"the user's");
    ClearClipboard();
    RestoreClipboard(clipboardSlots[2]);
    EXPECT_EQ(ClipboardText(), L"the user's");

    PasteSlots(L"abc:-0");
    EXPECT_EQ(ClipboardText(), L"the user's");
    PasteSlots(L"a3 10x3");
    EXPECT_TRUE(shows(L"three one three ")) << target.Text();
    PasteSlot(L'1');
    EXPECT_TRUE(shows(L"three one three one ")) << target.Text();
    EXPECT_EQ(ClipboardText(), L"one ");
}

}  // namespace
}  // namespace verbatix
