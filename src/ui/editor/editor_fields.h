// What the editor's fields mean: pure, apart from the display names, which follow the user's language.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"
#include "ui/state/undo_history.h"

namespace verbatix {

// The keys that the drop-down offers, by the names that are stored; the first, empty one is "no key".
std::vector<std::wstring> OfferedKeyNames();

// The key code as a record holds it: sign-extended from 8 bits.
unsigned RecordKey(unsigned key);

// The key that the user means by a name typed in any case, as the record holds it; 0, no key, for an empty
// text. Nothing for a name that no key has: what is half of one, or more than one, is none.
std::optional<unsigned> KeyFromInput(std::wstring_view input);

// What stands in the fields.
struct EditorFields {
    std::wstring text;  // with real line breaks
    std::wstring label;
    unsigned key = 0;  // as the record holds it
    unsigned modifier = 0;
};

// The record that the fields make of `old`; nothing when the text has been changed and is too long.
std::optional<ListEntry> EditedEntry(const ListEntry& old, const EditorFields& fields);

// The same with the text that `old` has.
ListEntry EditedButText(const ListEntry& old, const EditorFields& fields);

// Position of the first other entry that answers to this hotkey, which must have a key.
std::optional<int> FindClash(const EntryList& list, int position, unsigned key, unsigned modifier);

// How an entry is called in a message: its label, else the beginning of its text.
std::wstring EntryName(const ListEntry& entry);

// How those entries are called in a line of text: the one by its name, quoted and cut short, more by their
// number.
std::wstring NameOfEntries(const EntryList& list, const std::vector<int>& positions);
std::wstring QuotedName(std::wstring_view name);

// What an edit of one entry is, as a step that can be taken back.
Action EditAction(const ListEntry& old, const ListEntry& edited, int position);

}  // namespace verbatix
