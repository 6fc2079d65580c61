#include "paste/text/placeholders.h"

#include <array>
#include <utility>

#include "base/text.h"
#include "paste/text/text_transforms.h"

namespace verbatix {
namespace {

constexpr std::wstring_view kTab = L"%TAB%";
constexpr std::wstring_view kNoConversion = L"%nc%";
constexpr std::wstring_view kUserName = L"%user_name%";
constexpr std::wstring_view kComputerName = L"%computer_name%";
constexpr std::wstring_view kHtmlPrefix = L"pastehtml:";
constexpr std::wstring_view kRunSelection = L"%cpy%";
constexpr std::wstring_view kRunUrl = L"%cpy_txt_urlencode%";

struct CopyToken {
    const wchar_t* token;
    void (*transform)(std::wstring& copiedText);
    std::size_t growth = 1;  // how many times longer the transform can make a text
};

// The order is behaviour: the transforms accumulate.
constexpr CopyToken kCopyTokens[] = {
    {L"%copy_text%", [](std::wstring&) {}},
    {L"%copy_text_uc%", [](std::wstring& copied) { copied = UpperCase(copied); }},
    {L"%copy_text_lc%", [](std::wstring& copied) { copied = LowerCase(copied); }},
    {L"%copy_text_escape%", [](std::wstring& copied) { copied = EscapeHtmlNumeric(copied); }, 8},
    {L"%copy_text_ucFirstWord%", CapitalizeFirstWord},
    {L"%copy_text_ucFirstAllWords%", CapitalizeAllWords},
    {L"%copy_text_lc_ucFirstWord%",
     [](std::wstring& copied) {
         copied = LowerCase(copied);
         CapitalizeFirstWord(copied);
     }},
    {L"%copy_text_lc_ucFirstAllWords%",
     [](std::wstring& copied) {
         copied = LowerCase(copied);
         CapitalizeAllWords(copied);
     }},
    {L"%copy_text_mix_lc_uc%", MixCase},
};

bool Contains(std::wstring_view text, std::wstring_view token) {
    return text.find(token) != std::wstring_view::npos;
}

// Replaces every `token` from the one at `found` on.
bool ReplaceFrom(std::size_t found, std::wstring& text, std::wstring_view token, std::wstring_view value) {
    const std::size_t next = text.find(token, found + token.size());
    if (next == std::wstring::npos) {
        if (text.size() - token.size() + value.size() > kLongestExpansion) return false;
        // In place: what stands before a lone token can be megabytes of the selection already.
        text.replace(found, token.size(), value);
        return true;
    }
    std::wstring result;
    std::size_t start = 0;
    for (; found != std::wstring::npos; found = text.find(token, start)) {
        if (result.size() + (found - start) + value.size() > kLongestExpansion) return false;
        result.append(text, start, found - start).append(value);
        start = found + token.size();
    }
    if (result.size() + (text.size() - start) > kLongestExpansion) return false;
    result.append(text, start);
    text = std::move(result);
    return true;
}

}  // namespace

std::span<const wchar_t* const> Placeholders() {
    static constexpr std::wstring_view kBefore[] = {kTab, kNoConversion, kUserName, kComputerName,
                                                    kClipboardHtmlToken};
    static constexpr std::wstring_view kAfter[] = {kSelectionHtmlToken, kHtmlPrefix,
                                                   kPreviousClipboardToken};
    static constexpr auto kTokens = [] {
        std::array<const wchar_t*, std::size(kBefore) + std::size(kCopyTokens) + std::size(kAfter)> tokens =
            {};
        std::size_t count = 0;
        for (const std::wstring_view token : kBefore) tokens[count++] = token.data();
        for (const CopyToken& row : kCopyTokens) tokens[count++] = row.token;
        for (const std::wstring_view token : kAfter) tokens[count++] = token.data();
        return tokens;
    }();
    return kTokens;
}

std::span<const wchar_t* const> RunPlaceholders() {
    static constexpr const wchar_t* kTokens[] = {kRunSelection.data(), kPreviousClipboardToken.data(),
                                                 kRunUrl.data()};
    return kTokens;
}

bool UsesNames(std::wstring_view text) {
    return Contains(text, kUserName) || Contains(text, kComputerName);
}

void ReplaceKnown(std::wstring& text, const KnownFacts& facts) {
    ReplaceAll(text, kTab, L"\t");
    ReplaceAll(text, kNoConversion, kNoConversionMarker);
    ReplaceAll(text, kUserName, facts.userName);
    ReplaceAll(text, kComputerName, facts.computerName);
    if (facts.dates.useDate || facts.dates.useTime) ExpandDateTimeCodes(text, facts.dates);
}

bool UsesCopiedText(std::wstring_view text) {
    for (const CopyToken& row : kCopyTokens) {
        if (Contains(text, row.token)) return true;
    }
    return false;
}

void ReplaceCopiedText(std::wstring& text, std::wstring copiedText, ReplacementTrace trace) {
    for (const CopyToken& row : kCopyTokens) {
        const std::size_t found = text.find(row.token);
        if (found == std::wstring::npos || copiedText.size() > kLongestExpansion / row.growth) continue;
        row.transform(copiedText);
        ReplaceFrom(found, text, row.token, copiedText);
        if (trace) trace(row.token, text);
    }
}

bool ReplaceToken(std::wstring& text, std::wstring_view token, std::wstring_view value) {
    const std::size_t found = text.find(token);
    return found == std::wstring::npos || ReplaceFrom(found, text, token, value);
}

bool TakeHtmlPrefix(std::wstring& text) {
    if (!text.starts_with(kHtmlPrefix)) return false;
    text.erase(0, kHtmlPrefix.size());
    return true;
}

void ReplaceRunTokens(std::wstring& line, const std::wstring& selection) {
    ReplaceToken(line, kRunSelection, selection);
    // Expansion has replaced it in a line that went through there; other lines come here directly.
    ReplaceToken(line, kPreviousClipboardToken, selection);
    constexpr std::size_t kCodeLength = 3;
    if (Contains(line, kRunUrl) && selection.size() <= kLongestExpansion / kCodeLength) {
        ReplaceToken(line, kRunUrl, UrlEncode(selection));
    }
}

bool ExpandFrom(std::wstring& text, const ExpansionSources& sources) {
    bool usesClipboardText = false;
    std::wstring clipboardText;
    if (HasTwoPercentSigns(text)) {
        ReplaceKnown(text, sources.knownFacts(text));
        usesClipboardText = Contains(text, kPreviousClipboardToken);
        // Read before the copy strokes below overwrite it, put in after them, so that nothing in it is
        // taken for a token.
        if (usesClipboardText) clipboardText = sources.clipboardText();
        if (Contains(text, kClipboardHtmlToken)) {
            ReplaceToken(text, kClipboardHtmlToken, sources.clipboardHtml());
        }
        if (UsesCopiedText(text)) ReplaceCopiedText(text, sources.selection(), sources.trace);
        if (Contains(text, kSelectionHtmlToken)) {
            ReplaceToken(text, kSelectionHtmlToken, sources.selectionHtml());
        }
    }
    const bool asHtml = TakeHtmlPrefix(text);
    if (usesClipboardText) ReplaceToken(text, kPreviousClipboardToken, clipboardText);
    return asHtml;
}

std::wstring ExpandedRunLine(std::wstring_view line, const ExpansionSources& sources,
                             const std::wstring& selection) {
    std::wstring expanded(line);
    ExpandFrom(expanded, sources);
    if (expanded.size() <= 1) return {};
    ReplaceRunTokens(expanded, selection);
    return expanded;
}

void ReplaceNumberedControlCodes(std::wstring& text) {
    for (int number = 5; number <= 24 && Contains(text, L"%"); ++number) {
        const wchar_t character[] = {static_cast<wchar_t>(number), L'\0'};
        ReplaceAll(text, Format(L"%%%02d", number), character);
    }
}

std::wstring DeliveredText(std::wstring text) {
    ReplaceAll(text, L"\\n", L"\r\n");
    return WithoutMarkers(std::move(text));
}

std::wstring WithoutMarkers(std::wstring text) {
    ReplaceAll(text, kNoConversionMarker, L"");
    return text;
}

}  // namespace verbatix
