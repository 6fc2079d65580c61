// How often each entry was used, and when last. Kept apart from the list: what is counted never makes the
// list be written. An entry is known here by what it is, hotkey and text, not by its place, number or
// label, so that it keeps its count wherever it is moved and whatever it is called. Pure but for the file
// functions; nothing fails, a count that cannot be kept is lost.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "store/entry.h"

namespace verbatix {

using UseKey = std::uint64_t;

// A key code counts by its low byte and a modifier that does not exist as 0, as the keyboard hook takes
// them.
UseKey UseKeyOf(unsigned keyCode, unsigned modifier, std::wstring_view text);
inline UseKey UseKeyOf(const ListEntry& entry) {
    return UseKeyOf(entry.keyCode, entry.modifier, entry.text);
}

struct Uses {
    std::uint32_t count = 0;  // 0: never used
    std::int64_t last = 0;    // seconds since 1970, UTC
    bool operator==(const Uses&) const = default;
};

using UseBook = std::unordered_map<UseKey, Uses>;

void CountUse(UseBook& book, UseKey key, std::int64_t now);

// Entries that have been edited, from what they were to what they are: each takes its count along. Where
// both are among the others, entries have only changed places, which changes nothing. The old counts stay
// in the book, for when the edit is taken back.
using EditedKeys = std::vector<std::pair<UseKey, UseKey>>;
void CarryUses(UseBook& book, const EditedKeys& edited);

// The book as a file: a line for each entry of `kept` that was ever used. What is in the file of no such
// form is passed over.
std::string FormatUses(const UseBook& book, const std::unordered_set<UseKey>& kept);
UseBook ParseUses(std::string_view bytes);

// The file beside the settings file, and what it holds; nothing where it cannot be read.
std::wstring UsesPath();
UseBook ReadUses();

}  // namespace verbatix
