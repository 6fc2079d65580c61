// What every room uses: texts and the owner of handles.
#include "base/text.h"

#include <gtest/gtest.h>

#include <climits>

#include "base/handle.h"

namespace verbatix {
namespace {

TEST(Text, ReplacesLeftToRightWithoutOverlap) {
    const wchar_t* const rows[][5] = {
        {L"aaa", L"aa", L"b", L"ba", L"1"},
        {L"abc", L"", L"x", L"abc", L"0"},
        {L"a.a", L"a", L"aa", L"aa.aa", L"2"},
        {L"aBa", L"b", L"x", L"aBa", L"0"},
    };
    for (const auto& row : rows) {
        std::wstring text = row[0];
        EXPECT_EQ(std::to_wstring(ReplaceAll(text, row[1], row[2])), row[4]) << row[0];
        EXPECT_EQ(text, row[3]);
    }
}

TEST(Text, NumbersAndPiecesOfHandEditedFiles) {
    const std::pair<const wchar_t*, int> rows[] = {
        {L"", 0},    {L"  -7x", -7},           {L"+5", 5},     {L"abc", 0},
        {L"- 3", 0}, {L"2147483648", INT_MAX}, {L"\x0663", 0}, {L"-99999999999999999999999", INT_MIN},
    };
    for (const auto& [text, value] : rows) EXPECT_EQ(ToInt(text), value) << text;
    EXPECT_EQ(Split(L"", L'|'), (std::vector<std::wstring_view>{L""}));
    EXPECT_EQ(Split(L"a||b|", L'|'), (std::vector<std::wstring_view>{L"a", L"", L"b", L""}));
}

TEST(Text, CopiesCutsConvertsAndFormats) {
    wchar_t buffer[8];
    std::fill(std::begin(buffer), std::end(buffer), L'#');
    CopyText(buffer, L"abcdefghij", 4);
    EXPECT_EQ(std::wstring_view(buffer, 8), std::wstring_view(L"abc\0\0\0\0\0", 8)) << "the rest is zero";
    CopyText(buffer, L"12345678");
    EXPECT_STREQ(buffer, L"1234567");

    const std::wstring text = L"a\x00e9\x20ac\xd83d\xde00";
    EXPECT_EQ(ToBytes(text, 65001), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(FromBytes(ToBytes(text, 65001), 65001), text);
    EXPECT_TRUE(FitsAnsiCodePage(L"plain"));
    EXPECT_FALSE(FitsAnsiCodePage(L"\x4e2d"));

    const std::wstring longText(5000, L'x');
    EXPECT_EQ(Format(L"%ls|%03d|%d", longText.c_str(), 7, -1), longText + L"|007|-1");
}

int closed;
void CloseThing(int*) {
    ++closed;
}
using Thing = UniqueHandle<int*, CloseThing>;

TEST(UniqueHandle, ClosesExactlyOnceAndTakesTheInvalidFileForNone) {
    int a, b;
    {
        Thing first(&a);
        Thing second(std::move(first));
        EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): the moved-from state is the subject
        second = Thing(&b);
        EXPECT_EQ(closed, 1);
        Thing& self = second;
        second = std::move(self);
        EXPECT_EQ(second.Get(), &b);
        Thing released(&a);
        EXPECT_EQ(released.Release(), &a);
    }
    EXPECT_EQ(closed, 2);
    EXPECT_FALSE(
        UniqueFile(CreateFileW(L"Z:\\none\\x", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

}  // namespace
}  // namespace verbatix
