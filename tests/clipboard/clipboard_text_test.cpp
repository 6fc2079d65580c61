#include "clipboard/clipboard_text.h"

#include <gtest/gtest.h>

#include "support/foreign_clipboard.h"

namespace verbatix {
namespace {

using test::ClipboardRecordKind;
using test::HoldClipboard;
using test::PutForeign;
using test::ReadForeign;
using test::WideBytes;

TEST(ClipboardText, ComesBackAsItWasPut) {
    for (const std::wstring& text :
         {std::wstring(L"plain"), std::wstring(), std::wstring(L"two\r\nlines\t"),
          std::wstring(L"\x00fc\x20ac\x4e2d\xd83d\xde00"), std::wstring(300000, L'x')}) {
        ASSERT_TRUE(ClipboardPutText(text));
        // One character of zeros follows the terminator.
        EXPECT_EQ(ReadForeign(CF_UNICODETEXT), WideBytes(text) + std::string(2, '\0'));
        std::wstring read = L"before";
        EXPECT_TRUE(ClipboardGetText(read));
        EXPECT_EQ(read, text);
    }
}

TEST(ClipboardText, PutReplacesEveryFormat) {
    ASSERT_TRUE(PutForeign({{RegisterClipboardFormatW(L"Somebody's"), "data"}}));
    ASSERT_TRUE(ClipboardPutText(L"mine"));
    EXPECT_EQ(ReadForeign(RegisterClipboardFormatW(L"Somebody's")), "(absent)");
    // Other programs get the ANSI form, which Windows makes.
    EXPECT_EQ(ReadForeign(CF_TEXT).substr(0, 5), std::string_view("mine\0", 5));
}

TEST(ClipboardText, ReadsForeignTextUpToItsTerminator) {
    const struct {
        UINT format;
        std::string bytes;
        std::wstring text;
    } rows[] = {
        // The system ends the text formats by a zero, so that data without one cannot be put.
        {CF_UNICODETEXT, WideBytes(L"one") + WideBytes(L"two"), L"one"},
        {CF_TEXT, std::string("only ANSI\0rest", 14), L"only ANSI"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(PutForeign({{row.format, row.bytes}}));
        std::wstring text;
        EXPECT_TRUE(ClipboardGetText(text));
        EXPECT_EQ(text, row.text);
    }
}

TEST(ClipboardText, IsNotReadWhereThereIsNone) {
    const auto readsNothing = [] {
        std::wstring text = L"before";
        return !ClipboardGetText(text) && text == L"before";
    };
    ASSERT_TRUE(PutForeign({}));
    EXPECT_TRUE(readsNothing());
    ASSERT_TRUE(PutForeign({{CF_DIB, std::string(44, '\0')}}));
    EXPECT_TRUE(readsNothing());
    ASSERT_TRUE(ClipboardPutText(L"old"));
    EXPECT_TRUE(ClearClipboard());
    EXPECT_TRUE(readsNothing());
    const test::Process owner = test::PutForeignAndStay(
        {{CF_UNICODETEXT, "", ClipboardRecordKind::announced}, {CF_TEXT, "never read"}});
    EXPECT_TRUE(readsNothing());
}

TEST(ClipboardText, ClearingAnnouncesTextWithoutData) {
    ASSERT_TRUE(ClipboardPutText(L"old"));
    ASSERT_TRUE(ClearClipboard());
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_UNICODETEXT));
    EXPECT_EQ(ReadForeign(CF_UNICODETEXT), "");
    ASSERT_TRUE(ClipboardPutText(L"new"));
    std::wstring text;
    EXPECT_TRUE(ClipboardGetText(text));
    EXPECT_EQ(text, L"new");
}

TEST(ClipboardText, LeavesABusyClipboardAlone) {
    ASSERT_TRUE(ClipboardPutText(L"theirs"));
    {
        const test::Process holder = HoldClipboard();
        std::wstring text = L"before";
        EXPECT_FALSE(ClipboardPutText(L"mine"));
        EXPECT_FALSE(ClearClipboard());
        EXPECT_FALSE(ClipboardGetText(text));
        EXPECT_EQ(text, L"before");
    }
    EXPECT_EQ(ReadForeign(CF_UNICODETEXT).substr(0, 14), WideBytes(L"theirs"));
}

TEST(TextOfBytes, StaysInsideItsBlock) {
    EXPECT_EQ(WideTextOf({}), L"");
    EXPECT_EQ(WideTextOf(std::string_view("a", 1)), L"a");
    EXPECT_EQ(WideTextOf(std::string_view("a\0b", 3)), L"ab");
    EXPECT_EQ(WideTextOf(std::string_view("a\0b\0", 4)), L"ab");
    EXPECT_EQ(WideTextOf(std::string_view("\0\0b\0", 4)), L"");
    EXPECT_EQ(AnsiTextOf({}), L"");
    EXPECT_EQ(AnsiTextOf(std::string_view("a\0b", 3)), L"a");
    EXPECT_EQ(AnsiTextOf("abc"), L"abc");
}

}  // namespace
}  // namespace verbatix
