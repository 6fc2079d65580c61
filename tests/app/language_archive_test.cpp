#include "app/language_archive.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "app/language_default.h"
#include "base/text.h"
#include "support/folder.h"

namespace verbatix::test {
namespace {

// The languages in `text` as "[number name]" and "number=text|".
std::wstring Shown(std::wstring_view text, int defaultLanguage = 7) {
    std::map<int, Language> languages;
    ReadLanguageLines(text, defaultLanguage, languages);
    std::wstring result;
    for (const auto& [number, language] : languages) {
        result += Format(L"[%d %ls]", number, language.name.c_str());
        for (const auto& [id, line] : language.texts) result += Format(L"%d=%ls|", id, line.c_str());
    }
    return result;
}

TEST(LanguageLines, NumbersAndTextsOfOrdinaryAndHostileFiles) {
    const wchar_t* const rows[][2] = {
        {L"", L""},
        {L"18=a=b\r\n19= b \n 20 =\n18=c", L"[7 ]18=c|19= b |20=|"},
        {L"; 18=a\n\n\f\nno line\n=x\nx=y\n-1=a\n1.5=a\n123456=a\n99999999999999999999=a\n", L""},
        {L"18=a\\nb\\tc\\\\nd\\q\\", L"[7 ]18=a\nb\tc\\nd\\q\\|"},
        {L"[language 16 Français de France]\n18=langue", L"[16 Français de France]18=langue|"},
        {L"[language 2 A]\n1=a\n[language 3]\n1=b\n[language 2 C]\n2=c", L"[2 C]1=a|2=c|[3 ]1=b|"},
        // What stands under a heading that names no language is nobody's.
        {L"18=a\n[language x]\n19=b\n[other]\n20=c\n[language -1 z]\n21=d", L"[7 ]18=a|"},
        {L"[language\n[language ]\n[]", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(Shown(row[0]), row[1]) << row[0];
    EXPECT_EQ(Shown(L"18=a", -1), L"");

    std::wstring text;
    for (int i = 0; i < 20000; ++i) text += Format(L"%d=x\n", i);
    for (int i = 100; i < 400; ++i) text += Format(L"[language %d x]\n", i);
    text += L"[language 7 again]\n0=still\n19999=late\n";
    text.append(100000, L'[').append(1, L'\n').append(100000, L'\\');
    std::map<int, Language> languages;
    ReadLanguageLines(text, 7, languages);
    EXPECT_EQ(languages.size(), 100U);
    EXPECT_EQ(languages[7].texts.size(), 10000U);
    EXPECT_EQ(languages[7].texts[0], L"still");
}

TEST(LanguageArchive, IsCutIntoBlocksAtFormFeedLines) {
    const LanguageArchive archive = ParseLanguageArchive(
        L"1=nobody's\n[language 0 D]\r\n1=d\n[language 1 E]\n1=a\fb\n\f\r\n2=b\r\n\n\f\nlater blocks\n");
    ASSERT_EQ(archive.languages.size(), 2U);
    EXPECT_EQ(archive.languages.at(1).texts, (LanguageTexts{{1, L"a\fb"}}));
    EXPECT_EQ(archive.firstRunList, L"2=b\r\n\r\n");
    for (const wchar_t* broken : {L"", L"\f", L"\f\n\f\n\f", L"nonsense", L"\n\n\n"}) {
        EXPECT_TRUE(ParseLanguageArchive(broken).languages.empty());
        EXPECT_EQ(ParseLanguageArchive(broken).firstRunList, L"");
    }
}

TEST(TranslateFiles, OverrideInTheOrderOfTheirNamesWhateverTheirEncoding) {
    const Folder folder;
    WriteBytes(folder.File(L"translate_a.ini"), Utf16File(L"18=first\r\n19=ä€"));
    WriteBytes(folder.File(L"translate_b.txt"),
               "18=second\n[language 16 Fran\xC3\xA7"
               "ais]\n18=langue");
    WriteBytes(folder.File(L"translate_c.txt"),
               "\xEF\xBB\xBF"
               "21=\xC3\xA4");
    WriteBytes(folder.File(L"translate_d.txt"), std::string("\xFE\xFF\0002\0002\0=\x20\xAC\x20", 11));
    WriteBytes(folder.File(L"translate_e.txt"), "\xFF\xFE");
    WriteBytes(folder.File(L"my_translate_c.txt"), "18=not a user file");
    WriteBytes(folder.File(L"translate_z.txt"), "18=too big\n" + std::string(1 << 20, '\n'));
    CreateDirectoryW(folder.File(L"translate_folder").c_str(), nullptr);

    std::map<int, Language> languages = {{0, {L"Deutsch", {{18, L"alt"}, {20, L"bleibt"}}}}, {1, {}}};
    AddTranslateFiles(folder.Path(), 0, languages);
    EXPECT_EQ(languages[0].texts,
              (LanguageTexts{{18, L"second"}, {19, L"ä€"}, {20, L"bleibt"}, {21, L"ä"}, {22, L"€"}}));
    EXPECT_EQ(languages[16].name, L"Français");
    EXPECT_TRUE(languages[1].texts.empty());

    std::map<int, Language> without = {{1, {}}};
    AddTranslateFiles(folder.Path(), 5, without);
    EXPECT_EQ(without[1].texts[18], L"second");  // no language 5: its lines go to English
    EXPECT_FALSE(without.contains(5));
    AddTranslateFiles(folder.File(L"missing"), 0, languages);
}

// Numbers in settings files, by the system's language identifiers.
TEST(DefaultLanguage, IsTheSystemsWhereThereIsANumberForIt) {
    const std::pair<unsigned short, int> rows[] = {
        {0x0407, 0},  {0x0C07, 0},  {0x0409, 1},  {0x0410, 2},  {0x041D, 3},  {0x081A, 4},  {0x041A, 4},
        {0x0408, 5},  {0x0418, 6},  {0x0419, 7},  {0x0413, 8},  {0x0403, 9},  {0x040A, 10}, {0x0C0A, 10},
        {0x0429, 11}, {0x0421, 12}, {0x0804, 13}, {0x0416, 14}, {0x0816, 14}, {0x0404, 15}, {0x040C, 16},
        {0x042A, 17}, {0x0813, 18}, {0x0412, 19}, {0x0415, 20}, {0x041F, 21}, {0x040E, 22}, {0x0405, 23},
        {0x0401, 24}, {0x0411, 25}, {0x0406, 1},  {0x0000, 1},
    };
    for (const auto& [id, number] : rows) {
        EXPECT_EQ(DefaultLanguageNumber(id), number) << id;
        EXPECT_EQ(IsGerman(id), number == 0) << id;
    }
}

}  // namespace
}  // namespace verbatix::test
