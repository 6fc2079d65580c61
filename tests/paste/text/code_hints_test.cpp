#include "paste/text/code_hints.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

const std::wstring kCodes[] = {L"%copy_text%", L"%copy_text_uc%", L"%DD%", L"%YYYY%", L"%C%",
                               L"%d+1%",       L"%addd+1%",       L"%hh%", L"%mld%",  L"%send_enter%"};

bool IsVariable(const std::wstring& name) {
    return name == L"copy_tex";
}

TEST(CodeHints, NameTheCodeThatWasMeantAndNothingElse) {
    struct Row {
        const wchar_t* text;
        std::size_t start;
        const wchar_t* meant;  // null: no hint
        std::size_t count = 1;
    };
    const Row rows[] = {
        {L"a %copy_txt_uc% b", 2, L"%copy_text_uc%"},
        {L"%DD%.%COPY_TEXT%", 5, L"%copy_text%"},
        {L"%sned_enter%", 0, L"%send_enter%"},
        {L"%yyyy%", 0, L"%YYYY%"},
        {L"%c%", 0, L"%C%"},
        {L"%HH%", 0, L"%hh%"},
        {L"50 %%mdl%", 4, L"%mld%"},
        {L"%add+3%", 0, L"%addd+3%"},
        {L"%d+02%", 0, L"%d+2%"},
        {L"%d+%", 0, L"%d+1%"},
        {L"%copy_text%%d+-12%%DD%copy_txt%YYYY%", 0, nullptr},
        {L"%copy_tex%", 0, nullptr},
        {L"100 % of 5 %, 3%copy_txt 4%", 0, nullptr},
        {L"a%20b%20c%09%DX%C3%A4", 0, nullptr},
        {L"%foo%%USERPROFILE%%%%", 0, nullptr},
        {L"%copy_txt_uc", 0, nullptr},
        {L"", 0, nullptr},
        {L"%yyyy%%copy_tex%%DD%%yyyy%%c%", 0, L"%YYYY%", 3},
    };
    for (const Row& row : rows) {
        const auto hints = FindMistypedCodes(row.text, kCodes, IsVariable);
        ASSERT_EQ(hints.size(), row.meant ? row.count : 0) << ::testing::PrintToString(row.text);
        if (hints.empty()) continue;
        EXPECT_EQ(hints.front().start, row.start) << ::testing::PrintToString(row.text);
        EXPECT_EQ(hints.front().meant, row.meant);
        const std::wstring text = row.text;
        for (const CodeHint& hint : hints)
            EXPECT_EQ(text.substr(hint.start, 1) + text.substr(hint.start + hint.length - 1, 1), L"%%");
    }
}

TEST(CodeHints, TellAClosingSignFromAnOpeningOne) {
    const std::pair<const wchar_t*, bool> rows[] = {
        {L"%", false},      {L"%DD%", true},       {L"%DD%%", false},    {L"100 %", false},
        {L"5 % x%", false}, {L"%copy_txt%", true}, {L"%DD%.%MM%", true}, {L"5%DD%", true},
    };
    for (const auto& [text, ends] : rows) {
        EXPECT_EQ(EndsCode(text, std::wstring_view(text).size() - 1), ends)
            << ::testing::PrintToString(text);
    }
}

}  // namespace
}  // namespace verbatix
