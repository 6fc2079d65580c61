#include "app/language_archive.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <regex>

#include "app/language_default.h"
#include "base/text.h"
#include "support/folder.h"

namespace verbatix {
namespace {

using test::Folder;

// The texts of the only language in `text`, as "number=text" joined by "|".
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

TEST(ReadLanguageLines, ReadsNumbersAndTexts) {
    const struct {
        const wchar_t* lines;
        const wchar_t* shown;
    } rows[] = {
        {L"", L""},
        {L"18=a", L"[7 ]18=a|"},
        {L"18=a\r\n19= b \n", L"[7 ]18=a|19= b |"},
        {L"18=a=b", L"[7 ]18=a=b|"},
        {L"18=", L"[7 ]18=|"},
        {L" 18 =a", L"[7 ]18=a|"},
        {L"18=a\n18=b", L"[7 ]18=b|"},
        {L"; 18=a\n\n\f\nno line\n=x\nx=y\n-1=a\n1.5=a\n123456=a\n99999999999999999999=a\n", L""},
        {L"18=a\\nb\\tc\\\\nd\\q\\", L"[7 ]18=a\nb\tc\\nd\\q\\|"},
        {L"[language 16 Français de France]\n18=langue", L"[16 Français de France]18=langue|"},
        {L"[language 16]\n18=x", L"[16 ]18=x|"},
        {L"[language 2 A]\n1=a\n[language 3 B]\n1=b\n[language 2 C]\n2=c", L"[2 C]1=a|2=c|[3 B]1=b|"},
        // What stands under a heading that names no language is nobody's.
        {L"18=a\n[language x]\n19=b\n[other]\n20=c\n[language -1 z]\n21=d", L"[7 ]18=a|"},
        {L"[language", L""},
        {L"[language ]", L""},
        {L"[]", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(Shown(row.lines), row.shown) << row.lines;
    EXPECT_EQ(Shown(L"18=a", -1), L"");
}

TEST(ReadLanguageLines, KeepsHostileFilesSmall) {
    std::wstring text;
    for (int i = 0; i < 20000; ++i) text += Format(L"%d=x\n", i);
    for (int i = 100; i < 400; ++i) text += Format(L"[language %d x]\n", i);
    text += L"[language 7 again]\n0=still\n19999=late\n";
    text += std::wstring(100000, L'[') + L'\n' + std::wstring(100000, L'\\');
    std::map<int, Language> languages;
    ReadLanguageLines(text, 7, languages);
    EXPECT_EQ(languages.size(), 100U);
    EXPECT_EQ(languages[7].texts.size(), 10000U);
    EXPECT_EQ(languages[7].texts[0], L"still");
    EXPECT_FALSE(languages[7].texts.contains(19999));
}

TEST(ParseLanguageArchive, CutsBlocksAtFormFeedLines) {
    const LanguageArchive archive = ParseLanguageArchive(
        L"1=nobody's\n[language 0 D]\r\n1=d\n[language 1 "
        L"E]\n1=a\fb\n\f\r\n[list_text]\ntext_000=Ctrl+A=x\r\n\n"
        L"\f\nlater blocks\n");
    ASSERT_EQ(archive.languages.size(), 2U);
    EXPECT_EQ(archive.languages.at(1).texts.at(1), L"a\fb");
    EXPECT_EQ(archive.firstRunList, L"[list_text]\r\ntext_000=Ctrl+A=x\r\n\r\n");

    // Nothing behind the form feed is a text any more, whatever it looks like.
    const LanguageArchive alike = ParseLanguageArchive(L"[language 1 E]\n1=a\n\f\n2=b");
    EXPECT_EQ(alike.languages.at(1).texts, (LanguageTexts{{1, L"a"}}));
    EXPECT_EQ(alike.firstRunList, L"2=b\r\n");

    for (const wchar_t* broken : {L"", L"\f", L"\f\n\f\n\f", L"nonsense", L"\n\n\n"}) {
        EXPECT_TRUE(ParseLanguageArchive(broken).languages.empty());
        EXPECT_EQ(ParseLanguageArchive(broken).firstRunList, L"");
    }
    EXPECT_EQ(ParseLanguageArchive(L"[language 1 E]\n1=a").firstRunList, L"");
}

TEST(DecodeTextFile, KnowsTheMarks) {
    EXPECT_EQ(DecodeTextFile("\xC3\xA4"), L"ä");
    EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF\xC3\xA4"), L"ä");
    EXPECT_EQ(DecodeTextFile(std::string_view("\xFF\xFE\xE4\x00\xAC\x20", 6)), L"ä€");
    EXPECT_EQ(DecodeTextFile(std::string_view("\xFE\xFF\x00\xE4\x20\xAC\x20", 7)), L"ä€");
    EXPECT_EQ(DecodeTextFile("\xFF\xFE"), L"");
    EXPECT_EQ(DecodeTextFile(""), L"");
}

TEST(AddTranslateFiles, OverridesInTheOrderOfTheNames) {
    const Folder folder;
    test::WriteBytes(folder.File(L"translate_b.txt"),
                     "18=second\n[language 16 Fran\xC3\xA7"
                     "ais]\n18=langue");
    test::WriteBytes(folder.File(L"translate_a.ini"), test::Utf16File(L"18=first\r\n19=ä€"));
    test::WriteBytes(folder.File(L"my_translate_c.txt"), "18=not a user file");
    test::WriteBytes(folder.File(L"translate_z.txt"), "18=too big\n" + std::string(1 << 20, '\n'));
    CreateDirectoryW(folder.File(L"translate_folder").c_str(), nullptr);

    std::map<int, Language> languages = {{0, {L"Deutsch", {{18, L"alt"}, {20, L"bleibt"}}}}, {1, {}}};
    AddTranslateFiles(folder.Path(), 0, languages);
    EXPECT_EQ(languages[0].texts, (LanguageTexts{{18, L"second"}, {19, L"ä€"}, {20, L"bleibt"}}));
    EXPECT_EQ(languages[16].name, L"Français");
    EXPECT_TRUE(languages[1].texts.empty());

    std::map<int, Language> without = {{1, {}}};
    AddTranslateFiles(folder.Path(), 5, without);
    EXPECT_EQ(without[1].texts[18], L"second");  // no language 5: its lines go to English
    EXPECT_FALSE(without.contains(5));
    AddTranslateFiles(folder.File(L"missing"), 0, languages);
}

TEST(LoadLanguageArchive, GivesEachLanguageItsTexts) {
    ASSERT_TRUE(LoadLanguageArchive(kLanguageGerman));
    EXPECT_EQ(CurrentLanguages().active, kLanguageGerman);
    EXPECT_EQ(LanguageText(38), L"Strg");
    EXPECT_EQ(LanguageText(51), L"Verbatix läuft weiter");
    EXPECT_NE(LanguageText(52).find(L"\n\n"), std::wstring::npos);

    ASSERT_TRUE(LoadLanguageArchive(kLanguageEnglish));
    EXPECT_EQ(LanguageText(38), L"Ctrl");
    EXPECT_EQ(LanguageText(25), L"Pause hotkeys");
    EXPECT_EQ(CurrentLanguages().names.at(kLanguageGerman), L"Deutsch");

    ASSERT_TRUE(LoadLanguageArchive(21));  // no such language: English
    EXPECT_EQ(CurrentLanguages().active, kLanguageEnglish);
    EXPECT_EQ(LanguageText(38), L"Ctrl");
}

// The archive itself: through LanguageText English would stand in for what German lacks.
LanguageArchive OwnArchive() {
    const HRSRC resource = FindResourceW(nullptr, L"AAAA_UNICODE.TMP", L"PNG");
    if (!resource) return {};
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, resource)));
    return ParseLanguageArchive(FromBytes({bytes, SizeofResource(nullptr, resource)}, CP_UTF8));
}

TEST(LanguageSources, HaveEveryTextInBothLanguages) {
    LanguageArchive archive = OwnArchive();
    const LanguageTexts& german = archive.languages[kLanguageGerman].texts;
    const LanguageTexts& english = archive.languages[kLanguageEnglish].texts;
    const std::pair<int, int> needed[] = {
        {18, 25},   {34, 39},     {41, 41},     {51, 53},     {55, 55},     {66, 66},
        {81, 81},   {90, 90},     {128, 129},   {131, 131},   {142, 142},   {150, 152},
        {160, 160}, {1000, 1002}, {1010, 1012}, {1020, 1022}, {1100, 1138},
    };
    for (const auto& [first, last] : needed) {
        for (int number = first; number <= last; ++number) EXPECT_TRUE(english.contains(number)) << number;
    }
    EXPECT_EQ(german.size(), english.size());
    for (const auto& [number, text] : english) {
        ASSERT_TRUE(german.contains(number)) << number;
        const std::wstring& other = german.at(number);
        EXPECT_FALSE(text.empty() || other.empty()) << number;
        for (const wchar_t* gap : {L"{1}", L"{2}"}) {
            EXPECT_EQ(text.find(gap) == std::wstring::npos, other.find(gap) == std::wstring::npos)
                << number;
        }
        // A user may replace any text, so none is a printf format.
        EXPECT_EQ((text + other).find(L"%d"), std::wstring::npos) << number;
        EXPECT_EQ((text + other).find(L"%s"), std::wstring::npos) << number;
    }
}

TEST(LoadLanguageArchive, BringsTheListOfTheFirstRun) {
    ASSERT_TRUE(LoadLanguageArchive(kLanguageEnglish));
    const std::wstring& list = CurrentLanguages().firstRunList;
    std::map<std::wstring, std::map<std::wstring, std::wstring>> sections;
    std::wstring section;
    for (const std::wstring_view line : Split(list, L'\n')) {
        if (line.empty()) continue;
        ASSERT_TRUE(line.ends_with(L'\r'));
        const std::wstring text(line.substr(0, line.size() - 1));
        if (text.front() == L'[') {
            section = text;
        } else {
            sections[section][text.substr(0, text.find(L'='))] = text.substr(text.find(L'=') + 1);
        }
    }
    ASSERT_EQ(sections.size(), 3U);
    const auto& values = sections[L"[list_text]"];
    EXPECT_GE(values.size(), 8U);
    const std::wregex valueForm(
        LR"((L-Win|R-Win|Ctrl-Alt|Alt-Gr|Ctrl|Alt|R-Ctrl|[LMR]-Mouse)\+[^=]+=.*\S)");
    int index = 0;
    for (const auto& [key, value] : values) {
        EXPECT_EQ(key, Format(L"text_%03d", index++));
        EXPECT_TRUE(std::regex_match(value, valueForm)) << value;
        EXPECT_LT(value.size(), 4000U);
        EXPECT_FALSE(sections[L"[list_label]"][key].empty()) << key;
        EXPECT_GT(ToInt(sections[L"[list_order]"][key]), 0) << key;
    }
    const std::wstring& welcome = values.at(L"text_000");
    EXPECT_TRUE(welcome.starts_with(L"Ctrl-Alt+W=Welcome to Verbatix"));
    EXPECT_NE(welcome.find(L'€'), std::wstring::npos);
    EXPECT_EQ(welcome.find(L'%'), std::wstring::npos);
}

TEST(Resources, HoldTheIconInEverySizeAndTheVersion) {
    for (const int size : {16, 20, 24, 32, 48, 64, 256}) {
        const HICON icon = static_cast<HICON>(
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(107), IMAGE_ICON, size, size, 0));
        ASSERT_TRUE(icon) << size;
        DestroyIcon(icon);
    }
    const HRSRC group = FindResourceW(nullptr, MAKEINTRESOURCEW(107), RT_GROUP_ICON);
    ASSERT_TRUE(group);
    const auto* const directory = static_cast<const BYTE*>(LockResource(LoadResource(nullptr, group)));
    EXPECT_EQ(directory[4], 7);  // pictures in the group
    EXPECT_TRUE(FindResourceW(nullptr, MAKEINTRESOURCEW(1), RT_VERSION));
}

}  // namespace
}  // namespace verbatix
