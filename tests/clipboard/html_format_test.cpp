#include "clipboard/html_format.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace verbatix {
namespace {

// The bytes as a single-byte code page shows them: one character each.
std::wstring Raw(std::string_view data) {
    std::wstring raw;
    for (const char byte : data) raw += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return raw;
}

std::string Fragment(std::string_view data) {
    const auto found = FindHtmlFragment(data, Raw(data));
    return found ? std::string(*found) : "(none)";
}

TEST(BuildHtmlData, IsRightByteForByte) {
    EXPECT_EQ(BuildHtmlData("a"),
              "Version:0.9\r\nStartHTML:00000145\r\nEndHTML:00000214\r\nStartFragment:00000179\r\n"
              "EndFragment:00000180\r\nStartSelection:00000179\r\nEndSelection:00000180\r\n"
              "<html><body>\r\n<!--StartFragment-->a<!--EndFragment--></body>\r\n</html>");
    const std::string empty = BuildHtmlData("");
    EXPECT_EQ(empty.size(), 213u);
    EXPECT_NE(empty.find("EndHTML:00000213\r\nStartFragment:00000179\r\nEndFragment:00000179\r\n"),
              std::string::npos);
    EXPECT_NE(empty.find("<!--StartFragment--><!--EndFragment-->"), std::string::npos);
}

TEST(BuildHtmlData, TakesTheFragmentAsItIs) {
    for (const std::string fragment :
         {"<b>&amp;\"x\"</b>", "\xc3\xa4", "\xe2\x82\xac", "\xf0\x9f\x98\x80",
          "StartHTML:00000000\r\nEndFragment:00000000\r\n", "<html>", "<!--StartFragment-->"}) {
        const std::string data = BuildHtmlData(fragment);
        EXPECT_EQ(data.size(), 213 + fragment.size());
        EXPECT_EQ(data.substr(179, fragment.size()), fragment);
        EXPECT_EQ(Fragment(data), fragment);
        EXPECT_NE(data.find("StartHTML:00000145\r\n"), std::string::npos);
    }
}

TEST(BuildHtmlData, EndsAtAnEndMarkerInsideTheFragment) {
    // Deliberate: the first end marker counts, whoever wrote it.
    const std::string data = BuildHtmlData("ab<!--EndFragment-->cd");
    EXPECT_NE(data.find("\r\nEndFragment:00000181\r\n"), std::string::npos);
    EXPECT_NE(data.find("\r\nEndSelection:00000181\r\n"), std::string::npos);
    EXPECT_EQ(Fragment(data), "ab");
}

TEST(BuildHtmlData, RefusesWhatEightDigitsCannotTell) {
    const std::string largest(99999999 - 213, 'x');
    EXPECT_NE(BuildHtmlData(largest).find("EndHTML:99999999\r\n"), std::string::npos);
    EXPECT_EQ(BuildHtmlData(largest + "x"), "");
}

TEST(ValueAfterKey, LooksForTheEndFromInsideTheKeyOn) {
    const struct {
        const wchar_t* source;
        const wchar_t* key;
        const wchar_t* end;
        const wchar_t* value;
    } rows[] = {
        {L"a:1\rb:2\r", L"b:", L"\r", L"2"},
        {L"a:1\ra:2\r", L"a:", L"\r", L"1"},
        {L"a:1", L"a:", L"\r", L""},
        {L"\ra:1", L"a:", L"\r", L""},
        {L"b:1\r", L"a:", L"\r", L""},
        {L"", L"a:", L"\r", L""},
        {L"a:\r", L"a:", L"\r", L""},
        {L"aab1a2b", L"aab", L"a", L""},
        {L"abc1;a", L"abc", L";", L"1"},
        {L"xy", L"", L"y", L"x"},
        {L"key:long value\r\n", L"key:", L"\r\n", L"long value"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ValueAfterKey(row.source, row.key, row.end), row.value) << row.source;
}

// A foreign header with %S and %E where the offsets of the fragment between the body's markers belong.
std::string Foreign(std::string data, int digits) {
    const std::string start = "<!--StartFragment-->";
    const auto fillIn = [&](const char* place, std::size_t offset) {
        const std::string number = std::to_string(offset);
        data.replace(data.find(place), static_cast<std::size_t>(digits),
                     std::string(static_cast<std::size_t>(digits) - number.size(), '0') + number);
    };
    const std::size_t from = data.find(start) + start.size();
    const std::size_t to = data.find("<!--EndFragment-->");
    fillIn("%S", from);
    fillIn("%E", to);
    return data;
}

TEST(FindHtmlFragment, ReadsWhatOtherProgramsWrite) {
    const struct {
        const char* writer;
        const char* data;
        int digits;
        const char* fragment;
    } rows[] = {
        {"browser",
         "Version:1.0\r\nStartHTML:0000000160\r\nEndHTML:0000000240\r\nStartFragment:%S--------\r\n"
         "EndFragment:%E--------\r\nSourceURL:https://example.org/?EndFragment=1#x\r\n"
         "<html><body>\r\n<!--StartFragment--><i>f\xc3\xbcnf</i><!--EndFragment-->\r\n</body></html>",
         10, "<i>f\xc3\xbcnf</i>"},
        {"office program",
         "Version:1.0\r\nStartHTML:000000193\r\nEndHTML:000009999\r\nStartFragment:%S-------\r\n"
         "EndFragment:%E-------\r\nStartSelection:000000001\r\nEndSelection:000000002\r\nX-Extra: 1\r\n"
         "SourceURL:file:///C:/a%20b.htm\r\n\r\n<html xmlns:o=\"urn:x\">\r\n<body>\r\n"
         "<!--StartFragment-->\r\n<p>one</p>\r\n<!--EndFragment-->\r\n</body>\r\n\r\n</html>",
         9, "\r\n<p>one</p>\r\n"},
        {"line feeds only",
         "Version:0.9\nStartHTML:-1\nEndHTML:-1\nStartFragment:%S------\nEndFragment:%E------\n"
         "<html><!--StartFragment-->abc<!--EndFragment--></html>",
         8, "abc"},
        {"nothing between the markers",
         "Version:0.9\r\nStartFragment:%S-\r\nEndFragment:%E-\r\n<!--StartFragment--><!--EndFragment-->", 3,
         ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Fragment(Foreign(row.data, row.digits)), row.fragment) << row.writer;
}

TEST(FindHtmlFragment, FindsNothingInAHostileHeader) {
    const std::string body = "<html>0123456789</html>";
    const struct {
        const char* header;
        const char* fragment;
    } rows[] = {
        {"", "(none)"},
        {"StartFragment:10\r\n", "(none)"},
        {"EndFragment:10\r\n", "(none)"},
        {"StartFragment:10\r\nEndFragment:-1\r\n", "(none)"},
        {"StartFragment:-5\r\nEndFragment:12\r\n", "(none)"},
        {"StartFragment:20\r\nEndFragment:10\r\n", "(none)"},
        {"StartFragment:5\r\nEndFragment:12\r\n", "(none)"},
        {"StartFragment:10\r\nEndFragment:5000\r\n", "(none)"},
        {"StartFragment:5000\r\nEndFragment:6000\r\n", "(none)"},
        {"StartFragment:4294967306\r\nEndFragment:4294967310\r\n", "(none)"},
        {"StartFragment:00\r\nEndFragment:9999999999\r\n", "(none)"},
        {"StartFragment:10 EndFragment:12", "(none)"},
        // The first of two counts; words are 0; the offsets may point anywhere in the data.
        {"StartFragment:00\r\nStartFragment:10\r\nEndFragment:05\r\n", "Start"},
        {"StartFragment:ab\r\nEndFragment:05\r\n", "Start"},
        {"StartFragment:10\r\nEndFragment:10\r\n", ""},
    };
    for (const auto& row : rows) EXPECT_EQ(Fragment(row.header + body), row.fragment) << row.header;
    EXPECT_EQ(Fragment(""), "(none)");
    // The last offset must lie below the length of the data.
    const std::string header = "StartFragment:40\r\nEndFragment:60\r\n";
    EXPECT_EQ(Fragment(header + std::string(60 - header.size(), 'x')), "(none)");
    EXPECT_EQ(Fragment(header + std::string(61 - header.size(), 'x')), std::string(20, 'x'));
}

}  // namespace
}  // namespace verbatix
