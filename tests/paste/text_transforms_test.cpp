#include "paste/text_transforms.h"

#include <gtest/gtest.h>

#include <clocale>

namespace verbatix {
namespace {

// As the program does at start, so that letters outside ASCII are letters.
struct TextTransforms : testing::Test {
    TextTransforms() { std::setlocale(LC_ALL, ""); }
};

// A character outside the basic plane, and halves of such without their partner.
#define PAIR L"\xd83d\xde00"
#define HALVES(letter) L"\xde00" letter L"\xd83d"

TEST_F(TextTransforms, CapitalizeWords) {
    const struct {
        const wchar_t* text;
        const wchar_t* firstWord;
        const wchar_t* allWords;
    } rows[] = {
        {L"", L"", L""},
        {L"hello WORLD", L"Hello WORLD", L"Hello WORLD"},
        {L"x2y o'neil", L"X2y o'neil", L"X2Y O'Neil"},
        {L"  1 st one", L"  1 St one", L"  1 St One"},
        {L"123 %-", L"123 %-", L"123 %-"},
        {L"été à", L"Été à", L"Été À"},
        {L"жа б", L"Жа б", L"Жа Б"},
        {PAIR L"ab cd", PAIR L"Ab cd", PAIR L"Ab Cd"},
        {HALVES(L"a"), HALVES(L"A"), HALVES(L"A")},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        CapitalizeFirstWord(text);
        EXPECT_EQ(text, row.firstWord) << row.text;
        text = row.text;
        CapitalizeAllWords(text);
        EXPECT_EQ(text, row.allWords) << row.text;
    }
}

TEST_F(TextTransforms, MixCaseKeepsEveryLetterAndUsesBothCases) {
    const std::wstring original = L"aéB-7" PAIR + std::wstring(200, L'x');
    std::wstring text = original;
    MixCase(text);
    ASSERT_EQ(text.size(), original.size());
    for (std::size_t i = 0; i < text.size(); ++i) EXPECT_EQ(towlower(text[i]), towlower(original[i])) << i;
    EXPECT_NE(text.find(L'X'), std::wstring::npos);
    EXPECT_NE(text.find(L'x'), std::wstring::npos);
}

TEST_F(TextTransforms, EscapeHtmlFromTheThresholdUp) {
    const struct {
        const wchar_t* text;
        const wchar_t* escaped;
    } rows[] = {
        {L"", L""},
        {L"<a href=\"x\">&'\t\r\n", L"<a href=\"x\">&'\t\r\n"},
        {L"é\xfe\xff\x100", L"é\xfe&#x00ff;&#x0100;"},
        {L"5 €", L"5 &#x20ac;"},
        {PAIR, L"&#xd83d;&#xde00;"},
        {HALVES(L"a"), L"&#xde00;a&#xd83d;"},
        {L"\xffff", L"&#xffff;"},
    };
    for (const auto& row : rows) EXPECT_EQ(EscapeHtmlNumeric(row.text), row.escaped);
    EXPECT_EQ(EscapeHtmlNumeric(std::wstring(4000, L'\xabcd')).size(), 32000u);
}

TEST_F(TextTransforms, UrlEncodeTwelveCharacters) {
    EXPECT_EQ(UrlEncode(L"% &\"'?\t=\n\r\\#"),
              L"%24%20%26%22%27%3F%09%3D%0A%0D%5C%23");  // %24 for the percent sign is deliberate
    EXPECT_EQ(UrlEncode(L"a+b/c:;,@!$()*~é" PAIR), L"a+b/c:;,@!$()*~é" PAIR);
    EXPECT_EQ(UrlEncode(L"%20"), L"%2420");
    EXPECT_EQ(UrlEncode(L""), L"");
}

}  // namespace
}  // namespace verbatix
