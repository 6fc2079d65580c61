#include "clipboard/html_clipboard.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/html_format.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using test::MessageBoxAnswer;
using test::PutForeign;
using test::ReadForeign;

UINT HtmlFormat() {
    return RegisterClipboardFormatW(L"HTML Format");
}

struct ReadHtml {
    bool found = false;
    std::wstring fragment = L"before";
    std::wstring raw;
    std::wstring shown;
};

ReadHtml Get() {
    ReadHtml read;
    MessageBoxAnswer answer;
    read.found = HtmlClipboardGet(read.fragment, read.raw);
    EXPECT_TRUE(answer.Seen()) << "no message box";
    EXPECT_EQ(answer.Caption(), L"");
    EXPECT_EQ(answer.Buttons(), 1);
    EXPECT_FALSE(answer.HasOwner());
    read.shown = answer.Text();
    return read;
}

TEST(HtmlClipboard, OthersFindTheDataAndTheSource) {
    for (const wchar_t* text : {L"a", L"", L"<b>\x00e4\x20ac\xd83d\xde00</b>\r\n"}) {
        ASSERT_TRUE(HtmlClipboardPut(text));
        const std::string fragment = ToBytes(text, CP_UTF8);
        const std::string data = BuildHtmlData(fragment);
        EXPECT_EQ(ReadForeign(HtmlFormat()), data + std::string(4, '\0'));
        // Deliberate: UTF-8 under the ANSI format.
        EXPECT_EQ(ReadForeign(CF_TEXT), fragment + std::string(4, '\0'));
    }
}

TEST(HtmlClipboard, ReadsBackWhatItWrote) {
    for (const std::wstring text : {L"a", L"", L"\x00e4\x4e2d\xd83d\xde00 < & >"}) {
        ASSERT_TRUE(HtmlClipboardPut(text));
        const ReadHtml read = Get();
        EXPECT_TRUE(read.found);
        EXPECT_EQ(read.fragment, text);
        const std::string data = BuildHtmlData(ToBytes(text, CP_UTF8));
        CPINFO codePage = {};
        GetCPInfo(CP_ACP, &codePage);
        EXPECT_EQ(read.raw, FromBytes(data, codePage.MaxCharSize == 1 ? CP_ACP : CP_UTF8));
        // Size on the first line, terminator and spare room included.
        EXPECT_EQ(read.shown.substr(0, read.shown.find(L'\n')), std::to_wstring(data.size() + 4));
    }
}

TEST(HtmlClipboard, CutsTheTextAtAZero) {
    ASSERT_TRUE(HtmlClipboardPut(std::wstring_view(L"ab\0cd", 5)));
    EXPECT_EQ(Get().fragment, L"ab");
}

TEST(HtmlClipboard, ReadsForeignDataWithoutTerminator) {
    std::string data = "StartFragment:40\nEndFragment:44\n<html>  \xc3\xa4\xc3\xb6</html>";
    ASSERT_TRUE(PutForeign({{HtmlFormat(), data}}));
    const ReadHtml read = Get();
    EXPECT_TRUE(read.found);
    EXPECT_EQ(read.fragment, L"\x00e4\x00f6");
    EXPECT_EQ(read.shown.substr(0, 3), std::to_wstring(data.size()) + L"\n");
}

TEST(HtmlClipboard, LeavesTheFragmentWithoutUsableOffsets) {
    ASSERT_TRUE(PutForeign({{HtmlFormat(), "StartFragment:5\r\nEndFragment:10\r\n<html></html>"}}));
    const ReadHtml read = Get();
    EXPECT_TRUE(read.found);
    EXPECT_EQ(read.fragment, L"before");
}

TEST(HtmlClipboard, ShowsItsBoxEvenWhenThereIsNothing) {
    ASSERT_TRUE(ClipboardPutText(L"text only"));
    ReadHtml read = Get();
    EXPECT_FALSE(read.found);
    EXPECT_EQ(read.fragment, L"before");
    EXPECT_EQ(read.shown, L"0\n");

    ASSERT_TRUE(HtmlClipboardPut(L"theirs"));
    {
        const test::Process holder = test::HoldClipboard();
        EXPECT_FALSE(HtmlClipboardPut(L"mine"));
        read = Get();
        EXPECT_FALSE(read.found);
        EXPECT_EQ(read.shown, L"0\n");
    }
    EXPECT_EQ(Get().fragment, L"theirs");
}

TEST(HtmlClipboard, TheAnsiCodePageLosesNoByteWhereBytesAreCharacters) {
    // What the reader leans on: showing the data by the code page and cutting its bytes are the same.
    CPINFO codePage = {};
    ASSERT_TRUE(GetCPInfo(CP_ACP, &codePage));
    if (codePage.MaxCharSize != 1) GTEST_SKIP() << "this system's ANSI code page is multi-byte";
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) bytes += static_cast<char>(byte);
    EXPECT_EQ(FromBytes(bytes, CP_ACP).size(), bytes.size());
    EXPECT_EQ(ToBytes(FromBytes(bytes, CP_ACP), CP_ACP), bytes);
}

}  // namespace
}  // namespace verbatix
