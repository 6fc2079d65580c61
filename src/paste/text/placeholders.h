// The placeholders of an entry's text and what replaces them once it is known: the pure half of expansion.
// Tokens are matched exactly and case-sensitively; an unknown one stays as typed. Nothing fails.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "paste/text/date_codes.h"

namespace verbatix {

// Stands where "%nc%" stood until delivery, so that no token and no line break forms across that place.
inline constexpr std::wstring_view kNoConversionMarker = L"<---F_DGDSFHFHFDJBVBC--->";

inline constexpr std::wstring_view kPreviousClipboardToken = L"%pptxt%";
inline constexpr std::wstring_view kClipboardHtmlToken = L"%phtml%";
inline constexpr std::wstring_view kSelectionHtmlToken = L"%copy_html%";

// The longest text in UTF-16 units that a replacement may make; one that could make a longer one leaves its
// token as typed. A selection is anybody's text: it may hold tokens itself, and each pass would multiply
// it.
inline constexpr std::size_t kLongestExpansion = 64u << 20;

// Every token in the order in which it is applied, for showing them to the user. The second table has
// those of entries that run programs.
std::span<const wchar_t* const> Placeholders();
std::span<const wchar_t* const> RunPlaceholders();

// What is known before the clipboard or another program is asked for anything.
struct KnownFacts {
    std::wstring userName;
    std::wstring computerName;
    DateTimePass dates;  // not run at all when it uses neither group
};

// Whether the text asks for one of the two names, so that they have to be fetched.
bool UsesNames(std::wstring_view text);

// Tabs, markers, names, date and time codes.
void ReplaceKnown(std::wstring& text, const KnownFacts& facts);

// Whether a token of the "%copy_text%" family occurs, so that the selection has to be fetched.
bool UsesCopiedText(std::wstring_view text);

// Replaces the family in the order of its table. Each token transforms what the one before it has left, so
// that with "%copy_text_lc%" in the text "%copy_text_ucFirstWord%" gives a lower-case text with one
// capital: texts rely on the accumulation. `trace` is told each token and the whole text after it.
using ReplacementTrace = void (*)(const wchar_t* token, const std::wstring& text);
void ReplaceCopiedText(std::wstring& text, std::wstring copiedText, ReplacementTrace trace = nullptr);

// Replaces every `token`. Returns false, and leaves the text as it is, when it would grow beyond
// kLongestExpansion.
bool ReplaceToken(std::wstring& text, std::wstring_view token, std::wstring_view value);

// Removes the prefix that asks for delivery as HTML. Returns whether it was there; only the very beginning
// counts.
bool TakeHtmlPrefix(std::wstring& text);

// The tokens of a line that runs a program; `selection` goes in as it is and URL-encoded.
void ReplaceRunTokens(std::wstring& line, const std::wstring& selection);

// "%05" to "%24" become the control characters of that number, for the patterns of search and replace.
void ReplaceNumberedControlCodes(std::wstring& text);

// Where the values of the placeholders come from that nothing in the text tells. Each is asked once at
// most, and only where the text needs it.
struct ExpansionSources {
    std::function<KnownFacts(std::wstring_view text)> knownFacts;
    std::function<std::wstring()> clipboardText;
    std::function<std::wstring()> clipboardHtml;
    std::function<std::wstring()> selection;
    std::function<std::wstring()> selectionHtml;
    ReplacementTrace trace = nullptr;  // of the "%copy_text%" family
};

// All passes over a text, in place, in the order that texts rely on. Returns whether it begins with the
// prefix that asks for delivery as HTML, which is taken out.
bool ExpandFrom(std::wstring& text, const ExpansionSources& sources);

// One line of a run entry as it is handed to the launcher; empty where there is nothing to start.
std::wstring ExpandedRunLine(std::wstring_view line, const ExpansionSources& sources,
                             const std::wstring& selection);

// What is put on the clipboard for an expanded text: backslash-n as CR LF, then the markers gone.
std::wstring DeliveredText(std::wstring text);

// The text without what "%nc%" has left in it.
std::wstring WithoutMarkers(std::wstring text);

}  // namespace verbatix
