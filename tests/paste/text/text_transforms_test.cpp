#include "paste/text/text_transforms.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace verbatix {
namespace {

// A character outside the basic plane, and halves of such without their partner.
#define PAIR L"\xd83d\xde00"
#define HALVES(letter) L"\xde00" letter L"\xd83d"

TEST(TextTransforms, Capitalize) {
    std::setlocale(LC_ALL, "C");  // all that is left where the runtime does not know the user's language
    const wchar_t* const rows[][3] = {
        {L"", L"", L""},
        {L"  1 x2y o'neil", L"  1 X2y o'neil", L"  1 X2Y O'Neil"},
        {L"été à жа", L"Été à жа", L"Été À Жа"},
        {PAIR L"ab cd", PAIR L"Ab cd", PAIR L"Ab Cd"},
        {HALVES(L"a"), HALVES(L"A"), HALVES(L"A")},
    };
    for (const auto& [source, firstWord, allWords] : rows) {
        std::wstring text = source;
        CapitalizeFirstWord(text);
        EXPECT_EQ(text, firstWord) << source;
        text = source;
        CapitalizeAllWords(text);
        EXPECT_EQ(text, allWords) << source;
    }
}

TEST(TextTransforms, MixedCaseIsDrawn) {
    std::setlocale(LC_ALL, "C");
    // The runtime's first numbers from seed 1: 41, 18467, 6334, 26500, 19169, 15724; odd is upper case.
    std::srand(1);
    std::wstring text = L"azAZéÉ";
    MixCase(text);
    EXPECT_EQ(text, L"AZazÉé");
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
