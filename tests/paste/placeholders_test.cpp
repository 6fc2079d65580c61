#include "paste/placeholders.h"

#include <gtest/gtest.h>

#include <clocale>
#include <random>
#include <vector>

#include "paste/text_transforms.h"

namespace verbatix {
namespace {

KnownFacts Facts(bool useDate, bool useTime) {
    KnownFacts facts;
    facts.userName = L"Ann %DD%";
    facts.computerName = L"PC";
    facts.dates.now = {2026, 3, 4, 5, 9, 5, 7, 0};
    facts.dates.useDate = useDate;
    facts.dates.useTime = useTime;
    return facts;
}

TEST(Placeholders, KnownOnes) {
    const struct {
        const wchar_t* text;
        const wchar_t* withDates;
        const wchar_t* withoutDates;
    } rows[] = {
        {L"%TAB%x%TAB%", L"\tx\t", L"\tx\t"},
        {L"%tab%%Tab%50% %TAB", L"%tab%%Tab%50% %TAB", L"%tab%%Tab%50% %TAB"},
        {L"%computer_name%%YYYY%", L"PC2026", L"PC%YYYY%"},
        // The name stands in the text before the codes are read.
        {L"%user_name%.", L"Ann 05.", L"Ann %DD%."},
        {L"%T%nc%AB%", L"%T<---F_DGDSFHFHFDJBVBC--->AB%", L"%T<---F_DGDSFHFHFDJBVBC--->AB%"},
        {L"%TA%TAB%B%", L"%TA\tB%", L"%TA\tB%"},
        {L"%foo%%user_name", L"%foo%%user_name", L"%foo%%user_name"},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        ReplaceKnown(text, Facts(true, true));
        EXPECT_EQ(text, row.withDates);
        text = row.text;
        ReplaceKnown(text, Facts(false, false));
        EXPECT_EQ(text, row.withoutDates);
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
        {L"%copy_text_uc%", L"éa €", L"ÉA €"},
        {L"%copy_text_lc%", L"ÉA", L"éa"},
        {L"%copy_text_escape%", L"é €", L"é &#x20ac;"},
        {L"%copy_text_ucFirstWord%", L"one TWO", L"One TWO"},
        {L"%copy_text_ucFirstAllWords%", L"one tWO", L"One TWO"},
        {L"%copy_text_lc_ucFirstWord%", L"oNE TWO", L"One two"},
        {L"%copy_text_lc_ucFirstAllWords%", L"oNE TWO", L"One Two"},
        // Whatever their order in the text, the table's order counts.
        {L"%copy_text_uc%, %copy_text%", L"aB", L"AB, aB"},
        {L"%copy_text_escape%, %copy_text_uc%", L"a\x20ac", L"A&#x20ac;, A\x20ac"},
        {L"%copy_text_ucFirstWord%, %copy_text_lc%", L"ONE TWO", L"One two, one two"},
        {L"%copy_text_lc_ucFirstAllWords%, %copy_text_ucFirstAllWords%", L"a bC", L"A Bc, A BC"},
        {L"%copy_text%%copy_text_uc%%copy_text_mix_lc_uc%", L"", L""},
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

TEST(Placeholders, HtmlPrefixOnlyAtTheBeginning) {
    const struct {
        const wchar_t* text;
        bool taken;
        const wchar_t* rest;
    } rows[] = {
        {L"pastehtml:<b>x</b>", true, L"<b>x</b>"}, {L"pastehtml:", true, L""},
        {L" pastehtml:x", false, L" pastehtml:x"},  {L"PasteHtml:x", false, L"PasteHtml:x"},
        {L"pastehtml", false, L"pastehtml"},        {L"pastehtml:pastehtml:", true, L"pastehtml:"},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        EXPECT_EQ(TakeHtmlPrefix(text), row.taken) << row.text;
        EXPECT_EQ(text, row.rest);
    }
}

TEST(Placeholders, RunTokens) {
    std::wstring line = L"app.exe %cpy% %pptxt% http://x/?q=%cpy_txt_urlencode%";
    ReplaceRunTokens(line, L"a&b c");
    EXPECT_EQ(line, L"app.exe a&b c a&b c http://x/?q=a%26b%20c");
}

TEST(Placeholders, NumberedControlCodes) {
    const struct {
        const wchar_t* text;
        const wchar_t* replaced;
    } rows[] = {
        {L"a%09b%13%10c", L"a\tb\r\nc"}, {L"%04%25%99%5%", L"%04%25%99%5%"}, {L"%05%24", L"\x05\x18"},
        {L"%%09%1%100", L"%\t%1\n0"},    {L"no code", L"no code"},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        ReplaceNumberedControlCodes(text);
        EXPECT_EQ(text, row.replaced) << row.text;
    }
    std::wstring signs(4095, L'%');
    ReplaceNumberedControlCodes(signs);
    EXPECT_EQ(signs, std::wstring(4095, L'%'));
}

TEST(Placeholders, DeliveryBreaksLinesAndDropsMarkers) {
    EXPECT_EQ(DeliveredText(L"a\\nb\\N\n"), L"a\r\nb\\N\n");
    std::wstring text = L"a\\%nc%n%nc%b";
    ReplaceKnown(text, Facts(false, false));
    EXPECT_EQ(DeliveredText(text), L"a\\nb");
}

TEST(Placeholders, AnyTextIsSurvived) {
    std::vector<std::wstring> fragments = {
        L"%",         L"%%",   L" ",           L"x",      L"\\n",    L"\\",   L"n",     L"%nc", L"nc%",
        L"copy_text", L"_uc%", L"%copy_text_", L"\xd83d", L"\xde00", L"%DD%", L"%d+1%", L"%07", L"<---F_"};
    for (const auto tokens : {Placeholders(), RunPlaceholders()}) {
        for (const wchar_t* token : tokens) fragments.emplace_back(token);
    }
    const KnownFacts facts = Facts(true, true);
    std::mt19937 random(20260305);
    for (int round = 0; round < 100000; ++round) {
        std::wstring text;
        for (std::size_t count = random() % 9; count > 0; --count) {
            text += fragments[random() % fragments.size()];
        }
        const std::wstring original = text;
        ReplaceKnown(text, facts);
        ReplaceCopiedText(text, L"sel");
        ASSERT_FALSE(UsesCopiedText(text) || UsesNames(text)) << original;
        TakeHtmlPrefix(text);
        ReplaceRunTokens(text, L"sel");
        ASSERT_EQ(text.find(L"%cpy%"), std::wstring::npos) << original;
        ASSERT_EQ(DeliveredText(text).find(kNoConversionMarker), std::wstring::npos) << original;
        ReplaceNumberedControlCodes(text);
        ASSERT_EQ(text.find(L"%07"), std::wstring::npos) << original;
    }
}

}  // namespace
}  // namespace verbatix
