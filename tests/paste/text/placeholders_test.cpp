#include "paste/text/placeholders.h"

#include <gtest/gtest.h>

#include <clocale>

namespace verbatix {
namespace {

std::wstring Known(std::wstring text, bool useDates) {
    KnownFacts facts = {L"Ann %DD%", L"PC", {{2026, 3, 4, 5, 9, 5, 7, 0}, useDates, useDates}};
    ReplaceKnown(text, facts);
    return text;
}

TEST(Placeholders, WhatIsKnown) {
    const struct {
        const wchar_t* text;
        const wchar_t* withDates;
        const wchar_t* withoutDates;
    } rows[] = {
        {L"%TAB%x%TA%TAB%B%", L"\tx%TA\tB%", L"\tx%TA\tB%"},
        {L"%computer_name%%YYYY%", L"PC2026", L"PC%YYYY%"},
        {L"%user_name%.", L"Ann 05.", L"Ann %DD%."},  // in the text before the codes are read
        {L"%T%nc%AB%", L"%T<---F_DGDSFHFHFDJBVBC--->AB%", L"%T<---F_DGDSFHFHFDJBVBC--->AB%"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Known(row.text, true), row.withDates);
        EXPECT_EQ(Known(row.text, false), row.withoutDates);
    }
}

std::wstring WithCopied(std::wstring text, const std::wstring& copied) {
    ReplaceCopiedText(text, copied);
    return text;
}

TEST(Placeholders, CopyFamilyTransformsAccumulateInTableOrder) {
    std::setlocale(LC_ALL, "");
    const struct {
        const wchar_t* text;
        const wchar_t* copied;
        const wchar_t* replaced;
    } rows[] = {
        {L"%copy_text%-%copy_text%", L"é €", L"é €-é €"},
        // Whatever their order in the text, the table's order counts.
        {L"%copy_text_uc%, %copy_text%", L"éB", L"ÉB, éB"},
        {L"%copy_text_ucFirstWord%, %copy_text_lc%", L"ONE TWO", L"One two, one two"},
        {L"%copy_text_UC%%copy_tex%", L"x", L"%copy_text_UC%%copy_tex%"},
        // A token inside the copied text meets the passes that are still to come.
        {L"%copy_text%", L"%copy_text_uc%", L"%COPY_TEXT_UC%"},
    };
    for (const auto& row : rows) EXPECT_EQ(WithCopied(row.text, row.copied), row.replaced) << row.text;
}

TEST(Placeholders, GrowthHasALimit) {
    // A selection made of tokens would multiply itself to gigabytes.
    std::wstring hostile;
    for (int i = 0; i < 20000; ++i) hostile += L"%copy_text_uc%%copy_text_lc%";
    EXPECT_LE(WithCopied(L"%copy_text%", hostile).size(), kLongestExpansion);
    std::wstring text = L"a%x%b%x%";
    EXPECT_FALSE(ReplaceToken(text, L"%x%", std::wstring(kLongestExpansion / 2, L'y')));
    EXPECT_EQ(text, L"a%x%b%x%");
    EXPECT_TRUE(ReplaceToken(text, L"%x%", std::wstring(kLongestExpansion / 2 - 1, L'y')));
    EXPECT_EQ(text.size(), kLongestExpansion);
}

TEST(Placeholders, PrefixControlCodesAndDelivery) {
    std::wstring text = L"pastehtml:pastehtml:";
    EXPECT_TRUE(TakeHtmlPrefix(text));
    EXPECT_EQ(text, L"pastehtml:");
    const std::wstring signs(4095, L'%');
    for (const auto& [coded, replaced] : {std::pair{L"a%09b%13%10c%05%24", L"a\tb\r\nc\x05\x18"},
                                          {L"%04%25%99%5%%%09%1%100", L"%04%25%99%5%%\t%1\n0"},
                                          {signs.c_str(), signs.c_str()}}) {
        text = coded;
        ReplaceNumberedControlCodes(text);
        EXPECT_EQ(text, replaced);
    }
    EXPECT_EQ(DeliveredText(Known(L"a\\%nc%n%nc%b", false)), L"a\\nb");
}

}  // namespace
}  // namespace verbatix
