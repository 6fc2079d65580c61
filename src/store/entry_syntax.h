// The value of an entry in section "list_text": modifier name, "+", key name, "=", text, end marker; for
// example Ctrl+A=some text<E<N<D|. The marker keeps blanks at the text's end from being trimmed by the
// profile functions and shows that a value is complete.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "store/entry.h"

namespace verbatix {

inline constexpr std::wstring_view kEndMarker = L"<E<N<D|";

// What a value says.
struct StoredEntry {
    unsigned modifier = 0;
    unsigned key = 0;
    std::wstring text;
};

// The value without and with the end marker.
std::wstring FormatEntryValue(const ListEntry& entry);
std::wstring FormatStoredValue(const ListEntry& entry);

// The value of a label in section "list_label": in quotes where the profile functions would take blanks or
// quotes at its ends away.
std::wstring StoredLabel(std::wstring_view label);

// Reads a value, with or without marker, of which at most 4095 characters count. Nothing when it does not
// begin with a modifier name and "+" or has no "=".
std::optional<StoredEntry> ReadEntryValue(std::wstring_view value);

// Adds the entry that the value describes, or, where it does not match the syntax, nothing. Returns
// whether one was added.
bool ParseStoredEntry(EntryList& list, std::wstring_view value, std::wstring_view label, int order);

// Key of an entry in the list sections: "text_007", from 1000 on with as many digits as it takes.
std::wstring EntryKey(unsigned number);

// The number in a key that EntryKey made (case does not matter), nothing for any other key.
std::optional<unsigned> EntryNumberOfKey(std::wstring_view key);

}  // namespace verbatix
