#include "base/text.h"

#include <gtest/gtest.h>

#include <climits>

namespace verbatix {
namespace {

TEST(ReplaceAll, ReplacesLeftToRightWithoutOverlap) {
    const struct {
        const wchar_t* text;
        const wchar_t* from;
        const wchar_t* to;
        const wchar_t* result;
        std::size_t count;
    } rows[] = {
        {L"aaaa", L"aa", L"b", L"bb", 2},    {L"aaa", L"aa", L"b", L"ba", 1},
        {L"abc", L"", L"x", L"abc", 0},      {L"", L"a", L"x", L"", 0},
        {L"a.a", L"a", L"aa", L"aa.aa", 2},  {L"aBa", L"b", L"x", L"aBa", 0},
        {L"x%nc%y", L"%nc%", L"", L"xy", 1},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        EXPECT_EQ(ReplaceAll(text, row.from, row.to), row.count);
        EXPECT_EQ(text, row.result);
    }
}

TEST(ToInt, ReadsWhatAHandEditedFileHolds) {
    const struct {
        const wchar_t* text;
        int value;
    } rows[] = {
        {L"", 0},
        {L"12", 12},
        {L"  -7x", -7},
        {L"+5", 5},
        {L"abc", 0},
        {L"- 3", 0},
        {L"2147483647", INT_MAX},
        {L"2147483648", INT_MAX},
        {L"-2147483648", INT_MIN},
        {L"-99999999999999999999999", INT_MIN},
        {L"\x0663", 0},
    };
    for (const auto& row : rows) EXPECT_EQ(ToInt(row.text), row.value) << row.text;
}

TEST(CopyText, CutsAtTheLimitAndZeroesTheRest) {
    wchar_t buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    CopyText(buffer, L"abcdefghij", 4);
    EXPECT_EQ(std::wstring_view(buffer, 8), std::wstring_view(L"abc\0\0\0\0\0", 8));
    CopyText(buffer, L"12345678");
    EXPECT_EQ(std::wstring_view(buffer, 8), std::wstring_view(L"1234567\0", 8));
}

TEST(Split, KeepsEmptyPieces) {
    EXPECT_EQ(Split(L"", L'|'), (std::vector<std::wstring_view>{L""}));
    EXPECT_EQ(Split(L"a||b|", L'|'), (std::vector<std::wstring_view>{L"a", L"", L"b", L""}));
}

TEST(CodePages, RoundTripUtf8AndKnowWhatAnsiCannotHold) {
    const std::wstring text = L"a\x00e9\x20ac\xd83d\xde00";
    EXPECT_EQ(ToBytes(text, 65001), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(FromBytes(ToBytes(text, 65001), 65001), text);
    EXPECT_TRUE(FitsAnsiCodePage(L"plain"));
    EXPECT_FALSE(FitsAnsiCodePage(L"\x4e2d"));
}

TEST(Format, HoldsLongTexts) {
    const std::wstring longText(5000, L'x');
    EXPECT_EQ(Format(L"%ls|%03d|%d", longText.c_str(), 7, -1), longText + L"|007|-1");
}

}  // namespace
}  // namespace verbatix
