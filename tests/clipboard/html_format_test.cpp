// The format, and HTML on the real clipboard.
#include "clipboard/html_format.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/html_clipboard.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix::test {
namespace {

std::string Fragment(std::string_view data) {
    std::wstring raw;  // as a single-byte code page shows the bytes: one character each
    for (const char byte : data) raw += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    const auto found = FindHtmlFragment(data, raw);
    return found ? std::string(*found) : "(none)";
}

TEST(BuildHtmlData, IsRightByteForByte) {
    EXPECT_EQ(BuildHtmlData("a"),
              "Version:0.9\r\nStartHTML:00000145\r\nEndHTML:00000214\r\nStartFragment:00000179\r\n"
              "EndFragment:00000180\r\nStartSelection:00000179\r\nEndSelection:00000180\r\n"
              "<html><body>\r\n<!--StartFragment-->a<!--EndFragment--></body>\r\n</html>");
    for (const std::string fragment :
         {"", "<b>&amp;\"x\"</b>", "\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80",
          "StartHTML:00000000\r\nEndFragment:00000000\r\n", "<!--StartFragment-->"}) {
        const std::string data = BuildHtmlData(fragment);
        EXPECT_EQ(data.size(), 213 + fragment.size());
        EXPECT_EQ(data.substr(179, fragment.size()), fragment);
        EXPECT_EQ(Fragment(data), fragment);
    }
    // Deliberate: the first end marker counts, whoever wrote it.
    const std::string data = BuildHtmlData("ab<!--EndFragment-->cd");
    EXPECT_NE(data.find("\r\nEndFragment:00000181\r\n"), std::string::npos);
    EXPECT_NE(data.find("\r\nEndSelection:00000181\r\n"), std::string::npos);
    // Eight digits tell no more.
    const std::string largest(99999999 - 213, 'x');
    EXPECT_NE(BuildHtmlData(largest).find("EndHTML:99999999\r\n"), std::string::npos);
    EXPECT_EQ(BuildHtmlData(largest + "x"), "");
}

// A foreign header with %S and %E where the offsets of the fragment between the body's markers belong.
std::string Foreign(std::string data, std::size_t digits) {
    const std::size_t offsets[] = {data.find("<!--StartFragment-->") + 20, data.find("<!--EndFragment-->")};
    for (int i = 0; i < 2; ++i) {
        const std::string number = std::to_string(offsets[i]);
        data.replace(data.find(i ? "%E" : "%S"), digits, std::string(digits - number.size(), '0') + number);
    }
    return data;
}

TEST(FindHtmlFragment, ReadsOthersAndIsNotFooled) {
    const std::tuple<const char*, std::size_t, const char*> writers[] = {
        {"Version:1.0\r\nStartHTML:0000000160\r\nEndHTML:0000000240\r\nStartFragment:%S--------\r\n"
         "EndFragment:%E--------\r\nSourceURL:https://example.org/?EndFragment=1#x\r\n"
         "<html><body>\r\n<!--StartFragment--><i>f\xc3\xbcnf</i><!--EndFragment-->\r\n</body></html>",
         10, "<i>f\xc3\xbcnf</i>"},
        {"Version:0.9\nStartHTML:-1\nEndHTML:-1\nStartFragment:%S------\nEndFragment:%E------\n"
         "<html><!--StartFragment-->abc<!--EndFragment--></html>",
         8, "abc"},
        {"StartFragment:%S-\r\nEndFragment:%E-\r\n<!--StartFragment--><!--EndFragment-->", 3, ""},
    };
    for (const auto& [data, digits, fragment] : writers)
        EXPECT_EQ(Fragment(Foreign(data, digits)), fragment);
    const std::pair<const char*, const char*> headers[] = {
        {"", "(none)"},
        {"StartFragment:20\r\nEndFragment:10\r\n", "(none)"},
        {"StartFragment:10\r\nEndFragment:5000\r\n", "(none)"},
        {"StartFragment:4294967306\r\nEndFragment:4294967310\r\n", "(none)"},
        {"StartFragment:00\r\nEndFragment:9999999999\r\n", "(none)"},
        {"StartFragment:-5\r\nEndFragment:05\r\n", "(none)"},
        {"StartFragment:10 EndFragment:12", "(none)"},
        // The first of two counts; words are 0; the offsets may point anywhere in the data.
        {"StartFragment:00\r\nStartFragment:10\r\nEndFragment:05\r\n", "Start"},
        {"StartFragment:ab\r\nEndFragment:05\r\n", "Start"},
    };
    for (const auto& [header, fragment] : headers)
        EXPECT_EQ(Fragment(header + std::string("<html>0123456789</html>")), fragment) << header;
    // The last offset must lie below the length of the data.
    const std::string header = "StartFragment:40\r\nEndFragment:60\r\n";
    EXPECT_EQ(Fragment(header + std::string(60 - header.size(), 'x')), "(none)");
    EXPECT_EQ(Fragment(header + std::string(61 - header.size(), 'x')), std::string(20, 'x'));
    // The end of a value is looked for from inside its key on.
    EXPECT_EQ(ValueAfterKey(L"aab1a2b", L"aab", L"a"), L"");
    EXPECT_EQ(ValueAfterKey(L"abc1;a", L"abc", L";"), L"1");
    EXPECT_EQ(ValueAfterKey(L"\ra:1", L"a:", L"\r"), L"");
    EXPECT_EQ(ValueAfterKey(L"abcdef;", L"xy", L";"), L"");
}

UINT HtmlFormat() {
    return RegisterClipboardFormatW(L"HTML Format");
}

// What is read: found or not, the fragment, and what the box shows.
std::tuple<bool, std::wstring, std::wstring> Get() {
    std::wstring fragment = L"before";
    std::wstring raw;
    MessageBoxAnswer box;
    const bool found = HtmlClipboardGet(fragment, raw);
    EXPECT_TRUE(box.Seen() && box.Caption().empty() && !box.HasOwner()) << "no such message box";
    EXPECT_EQ(box.Text().substr(box.Text().find(L'\n') + 1), raw.substr(0, 0xFFFF));
    return {found, fragment, box.Text().substr(0, box.Text().find(L'\n'))};
}

TEST(HtmlClipboard, IsReadByOthersAndBack) {
    for (const std::wstring text : {L"", L"<b>\x00e4\x20ac\xd83d\xde00</b>\r\n"}) {
        ASSERT_TRUE(HtmlClipboardPut(text));
        const std::string fragment = ToBytes(text, CP_UTF8);
        const std::string data = BuildHtmlData(fragment) + std::string(4, '\0');
        EXPECT_EQ(ReadForeign(HtmlFormat()), data);
        // Deliberate: UTF-8 under the ANSI format.
        EXPECT_EQ(ReadForeign(CF_TEXT), fragment + std::string(4, '\0'));
        EXPECT_EQ(Get(), std::tuple(true, text, std::to_wstring(data.size())));
    }
    ASSERT_TRUE(HtmlClipboardPut(std::wstring_view(L"ab\0cd", 5)));
    EXPECT_EQ(std::get<1>(Get()), L"ab");
    ASSERT_TRUE(
        PutForeign({{HtmlFormat(), "StartFragment:40\nEndFragment:44\n<html>  \xc3\xa4\xc3\xb6</html>"}}));
    EXPECT_EQ(Get(), std::tuple(true, std::wstring(L"\x00e4\x00f6"), std::wstring(L"51")));
    ASSERT_TRUE(PutForeign({{HtmlFormat(), "StartFragment:5\r\nEndFragment:10\r\n<html></html>"}}));
    EXPECT_EQ(std::get<1>(Get()), L"before");
    const std::tuple<bool, std::wstring, std::wstring> nothing = {false, L"before", L"0"};
    ASSERT_TRUE(ClipboardPutText(L"text only"));
    EXPECT_EQ(Get(), nothing);
    ASSERT_TRUE(HtmlClipboardPut(L"theirs"));
    {
        const Process holder = HoldClipboard();
        EXPECT_FALSE(HtmlClipboardPut(L"mine"));
        EXPECT_EQ(Get(), nothing);
    }
    EXPECT_EQ(std::get<1>(Get()), L"theirs");
}

}  // namespace
}  // namespace verbatix::test
