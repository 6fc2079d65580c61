// The letters by which the rows of a menu are chosen.
#include "base/access_letters.h"

#include <gtest/gtest.h>

namespace verbatix::test {
namespace {

TEST(AccessLetters, EachRowGetsOneThatNoOtherHas) {
    std::vector<std::wstring> rows = {L"Save\tCtrl+S", L"&Show", L"Sort by A && B", L"&start", L"So",
                                      L"SO",           L"",      L"\x00e4 s\t&x",   L"s"};
    GiveAccessLetters(rows);
    // Marked letters come first, whatever the order; then beginnings of words; a letter's case is no
    // difference.
    const std::vector<std::wstring> expected = {
        L"S&ave\tCtrl+S", L"&Show", L"Sort &by A && B", L"s&tart", L"S&o", L"SO", L"",
        L"&\x00e4 s\t&x", L"s"};
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(AccessLetter(L"A && &b\tCtrl+B"), L'B');
    EXPECT_EQ(AccessLetter(L"A && B\t&x"), L'\0');
}

}  // namespace
}  // namespace verbatix::test
