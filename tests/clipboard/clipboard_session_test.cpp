#include "clipboard/clipboard_session.h"

#include <gtest/gtest.h>

#include "support/foreign_clipboard.h"

namespace verbatix {
namespace {

using test::HoldClipboard;

static_assert(!std::is_copy_constructible_v<ClipboardSession>);

bool IsOpenHere() {
    // Setting data is refused with this error when the thread has not opened the clipboard.
    SetLastError(ERROR_SUCCESS);
    CountClipboardFormats();
    if (CloseClipboard()) return true;
    return GetLastError() != ERROR_CLIPBOARD_NOT_OPEN;
}

TEST(ClipboardSession, ClosesWhenItGoes) {
    {
        const ClipboardSession clipboard;
        ASSERT_TRUE(clipboard);
    }
    EXPECT_FALSE(IsOpenHere());
}

TEST(ClipboardSession, MovesWithoutClosingAndClosesOnce) {
    ClipboardSession first;
    ClipboardSession second(std::move(first));
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move): the moved-from state is the
    // subject
    EXPECT_FALSE(first);
    EXPECT_FALSE(first.Close());
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    ASSERT_TRUE(second);
    EXPECT_TRUE(second.Close());
    EXPECT_FALSE(second.Close());
    EXPECT_FALSE(IsOpenHere());
}

TEST(ClipboardSession, IsFalseWhileAnotherProgramHoldsTheClipboard) {
    const test::Process holder = HoldClipboard();
    ClipboardSession clipboard;
    EXPECT_FALSE(clipboard);
    EXPECT_FALSE(clipboard.Close());
}

TEST(MakeClipboardBlock, FillsUpWithZerosAndCutsAtTheSize) {
    const UniqueGlobal longer = MakeClipboardBlock("abc", 6);
    EXPECT_EQ(LockedBlock(longer.Get()).Bytes().substr(0, 6), std::string_view("abc\0\0\0", 6));
    const UniqueGlobal shorter = MakeClipboardBlock("abcdef", 2);
    EXPECT_EQ(LockedBlock(shorter.Get()).Bytes().substr(0, 2), "ab");
    EXPECT_FALSE(MakeClipboardBlock("abc", SIZE_MAX / 2));
    EXPECT_FALSE(LockedBlock(nullptr));
}

TEST(GiveToClipboard, KeepsNothingThatIsRefused) {
    // The clipboard is not open, so it refuses.
    EXPECT_FALSE(GiveToClipboard(CF_UNICODETEXT, MakeClipboardBlock("", 2)));
    const ClipboardSession clipboard;
    ASSERT_TRUE(clipboard);
    EmptyClipboard();
    EXPECT_FALSE(GiveToClipboard(0, MakeClipboardBlock("x", 1)));
    EXPECT_FALSE(GiveToClipboard(CF_TEXT, UniqueGlobal()));
    EXPECT_EQ(CountClipboardFormats(), 0);
}

}  // namespace
}  // namespace verbatix
