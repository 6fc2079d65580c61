// What an entry's text would paste now, or do, told without doing any of it: no program is started or
// asked, no clipboard read, no dialog shown, no file touched. The expansion is the one that pastes; only
// the values that it would fetch are samples.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "paste/text/placeholders.h"

namespace verbatix {

// The values in the place of those that a paste would fetch.
struct PreviewSamples {
    KnownFacts facts;  // the names are the real ones; nobody is asked for a date
    std::wstring selection;
    std::wstring selectionHtml;
    std::wstring clipboardText;
    std::wstring clipboardHtml;
};

// Samples in the active language, with the names and the time of now.
PreviewSamples CurrentSamples(bool useDate, bool useTime);

enum class PreviewKind {
    kPasted,    // the text itself
    kStep,      // a word on what happens at this place of it
    kSentence,  // all that the entry does, or one of several things
};

struct PreviewPiece {
    PreviewKind kind;
    std::wstring text;
    bool operator==(const PreviewPiece&) const = default;
};

// `storedText` as the list keeps it, with backslash-n for a line break.
std::vector<PreviewPiece> PreviewPieces(std::wstring_view storedText, const PreviewSamples& samples);

// The pieces as one text to look at: steps in brackets, sentences on lines of their own, a mark at each
// line break and tab. Cut where it becomes too long to be looked at.
std::wstring PreviewText(const std::vector<PreviewPiece>& pieces);

}  // namespace verbatix
