// What commands that reach outside of the program make of values.
#include <windows.h>

#include <gtest/gtest.h>

#include "store/word_list.h"
#include "support/folder.h"
#include "ui/shell/autostart.h"

namespace verbatix::test {
namespace {

TEST(Autostart, NamesThisProgramAndItsSettingsFile) {
    const wchar_t* const program = L"C:\\a b\\Verbatix.exe";
    EXPECT_EQ(AutostartCommand(program, L""), L"\"C:\\a b\\Verbatix.exe\" -bg");
    const std::wstring value = AutostartCommand(program, L"\"-ini:C:\\x y.ini\"");
    EXPECT_EQ(value, L"\"C:\\a b\\Verbatix.exe\" -bg \"-ini:C:\\x y.ini\"");
    EXPECT_TRUE(IsAutostartOf(value, L"c:\\A B\\verbatix.EXE"));
    for (const wchar_t* other :
         {L"", L"\"", L"C:\\a b\\Verbatix.exe -bg", L"\"C:\\old\\Verbatix.exe\" -bg"}) {
        EXPECT_FALSE(IsAutostartOf(other, program)) << ::testing::PrintToString(other);
    }
}

TEST(WordList, SuggestsInTheOrderOfTheFile) {
    const WordList list =
        MakeWordList(L"  Verbatix verb\r\nÜbung\tverbatim\n\nVERBATIX Verbatix over-verb\x3000verse");
    using Words = std::vector<std::wstring>;
    EXPECT_EQ(SuggestWords(list, L"Ver", 9),
              (Words{L"Verbatix", L"verb", L"verbatim", L"VERBATIX", L"verse"}));
    EXPECT_EQ(SuggestWords(list, L"ver", 2), (Words{L"Verbatix", L"verb"}));
    EXPECT_EQ(SuggestWords(list, L"verb", 9), (Words{L"Verbatix", L"verbatim", L"VERBATIX"}));
    EXPECT_EQ(SuggestWords(list, L"üB", 9), (Words{L"Übung"}));
    EXPECT_TRUE(SuggestWords(list, L"", 9).empty());
    EXPECT_TRUE(SuggestWords(list, L"x\ny", 9).empty());
}

TEST(WordList, FindsTheWordBeforeTheCaret) {
    const std::wstring_view text = L"one (two-x) drei\xfc";
    EXPECT_EQ(WordStart(text, 10), 5u);
    EXPECT_EQ(WordStart(text, 3), 0u);
    EXPECT_EQ(WordStart(text, 7), 7u) << "in the middle of a word";
    EXPECT_EQ(WordStart(text, 99), 99u);
}

TEST(WordList, ReadsFilesOfAnyKindAndSize) {
    const Folder folder;
    const std::wstring path = folder.File(L"words.txt");
    EXPECT_FALSE(FileHasWords(path));
    const std::pair<std::string, bool> rows[] = {
        {"", false},
        {"\xff\xfe", false},
        {"\xef\xbb\xbf \r\n", false},
        {std::string(9000, ' ') + "end", true},
        {"\xef\xbb\xbf"
         "ende",
         true},
    };
    for (const auto& [bytes, hasWords] : rows) {
        WriteBytes(path, bytes);
        EXPECT_EQ(FileHasWords(path), hasWords) << ::testing::PrintToString(bytes);
        EXPECT_EQ(SuggestWords(LoadWordList(path), L"en", 1).size(), hasWords ? 1u : 0u);
    }
}

}  // namespace
}  // namespace verbatix::test
