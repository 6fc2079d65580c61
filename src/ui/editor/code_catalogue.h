// Everything that means something in an entry's text, with a word on what it does: what the Insert list and
// the Insert menu offer, and what a code that was mistyped may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

struct CodeItem {
    int group;              // language text that names its kind
    std::wstring token;     // what is inserted
    std::wstring meaning;   // a sentence in the active language
    std::wstring keywords;  // other words by which somebody may look for it
    bool atStart = false;   // means something only at the beginning of the text
};

// Every code, those of a group together, from the tables that the expansion works with.
std::vector<CodeItem> CodeItems();

// The sentence of that code alone; empty when there is no such code.
std::wstring MeaningOf(std::wstring_view token);

}  // namespace verbatix
