#include "paste/text/text_transforms.h"

#include <gtest/gtest.h>

#include <clocale>

namespace verbatix {
namespace {

// A character outside the basic plane, and halves of such without their partner.
#define PAIR L"\xd83d\xde00"
#define HALVES(letter) L"\xde00" letter L"\xd83d"

TEST(TextTransforms, Capitalize) {
    std::setlocale(LC_ALL, "");  // as the program does at start
    const struct {
        const wchar_t* text;
        const wchar_t* firstWord;
        const wchar_t* allWords;
    } rows[] = {
        {L"", L"", L""},
        {L"  1 x2y o'neil", L"  1 X2y o'neil", L"  1 X2Y O'Neil"},
        {L"été à жа", L"Été à жа", L"Été À Жа"},
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

TEST(TextTransforms, EscapeAndEncode) {
    EXPECT_EQ(EscapeHtmlNumeric(L"é\xfe\xff\x100 €" HALVES(L"a") L"\xffff"),
              L"é\xfe&#x00ff;&#x0100; &#x20ac;&#xde00;a&#xd83d;&#xffff;");
    EXPECT_EQ(UrlEncode(L"% &\"'?\t=\n\r\\#"),
              L"%24%20%26%22%27%3F%09%3D%0A%0D%5C%23");  // %24 for the percent sign is deliberate
    EXPECT_EQ(UrlEncode(L"%20a+b/c:;,@!$()*~é" PAIR), L"%2420a+b/c:;,@!$()*~é" PAIR);
}

}  // namespace
}  // namespace verbatix
