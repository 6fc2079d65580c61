#include "ui/editor/code_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "app/language_archive.h"

namespace verbatix {
namespace {

std::vector<std::wstring> Found(const wchar_t* query) {
    const std::vector<CodeItem> items = CodeItems();
    std::vector<std::wstring> tokens;
    for (const std::size_t place : FindCodes(items, query)) tokens.push_back(items[place].token);
    return tokens;
}

TEST(FindCodes, FindsByCodeSentenceAndOtherWordsInBothLanguages) {
    struct Row {
        int language;
        const wchar_t* query;
        const wchar_t* first;
        const wchar_t* among;
    };
    const Row rows[] = {
        {1, L"tomorrow", L"%d+1%", L"%addd+1%"},
        {1, L"quarter", L"%qfd%", L"%qlWD%"},
        {1, L" SELECTION case ", L"%copy_text_uc%", L"%copy_text_mix_lc_uc%"},
        {1, L"yesterday", L"%d+-1%", L"%d+-1%"},
        {1, L"DD", L"%DD%", L"%DDDD%"},
        {1, L"%send_e", L"%send_enter%", L"%send_enter%"},
        {1, L"enter", L"%send_enter%", L"%send_enter%"},
        {0, L"morgen", L"%d+1%", L"%addd+1%"},
        {0, L"Quartal", L"%qfd%", L"%qlWD%"},
        {0, L"auswahl", L"%copy_text%", L"replace:"},
        {0, L"gestern", L"%d+-1%", L"%d+-1%"},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(LoadLanguageArchive(row.language));
        const std::vector<std::wstring> found = Found(row.query);
        ASSERT_FALSE(found.empty()) << ::testing::PrintToString(row.query);
        EXPECT_EQ(found.front(), row.first) << ::testing::PrintToString(row.query);
        EXPECT_EQ(std::ranges::count(found, row.among), 1) << ::testing::PrintToString(row.query);
        EXPECT_LT(found.size(), 25U) << ::testing::PrintToString(row.query);
    }
    EXPECT_EQ(Found(L"zzz"), std::vector<std::wstring>());
    EXPECT_EQ(Found(L"").size(), CodeItems().size());
}

TEST(CodeStart, IsAtASignThatCouldBeginACode) {
    const std::pair<const wchar_t*, int> rows[] = {
        {L"%", 0},
        {L"on %tom", 3},
        {L"%d+1", 0},
        {L"%lwdim:", 0},
        {L"%DD%.%c", 5},
        {L"100%", -1},
        {L"5%ab", -1},
        {L"% of", -1},
        {L"%2", -1},
        {L"%DD%", -1},
        {L"a%copy_txt%", -1},
        {L"tom", -1},
        {L"x\r\n%a\r\nb", -1},
        {L"", -1},
    };
    for (const auto& [written, start] : rows) {
        const std::wstring_view text = written;
        EXPECT_EQ(CodeStart(text, text.size()), start < 0 ? text.size() : static_cast<std::size_t>(start))
            << ::testing::PrintToString(written);
    }
}

}  // namespace
}  // namespace verbatix
