#include "store/entry_syntax.h"

#include <cwctype>

#include "base/text.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix {

std::wstring FormatEntryValue(const ListEntry& entry) {
    std::wstring value;
    AppendModifierName(entry.modifier, value);
    return value + L'+' + FormatKeyName(entry.keyCode) + L'=' + entry.text;
}

std::wstring FormatStoredValue(const ListEntry& entry) {
    return FormatEntryValue(entry).append(kEndMarker);
}

std::wstring StoredLabel(std::wstring_view label) {
    const auto isBare = [](wchar_t c) { return c > L' ' && c != L'"' && c != L'\'' && !iswspace(c); };
    if (label.empty() || (isBare(label.front()) && isBare(label.back()))) return std::wstring(label);
    return L'"' + std::wstring(label) + L'"';
}

// The value without end marker. Of a value that fills the whole buffer the rest was cut off, perhaps in the
// middle of the marker, and what is left of a marker is not text.
static std::wstring_view WithoutEndMarker(std::wstring_view value) {
    if (value.size() > kEndMarker.size() && value.ends_with(kEndMarker)) {
        value.remove_suffix(kEndMarker.size());
        return value;
    }
    if (value.size() < kTextLimit - 1) return value;
    for (std::size_t length = kEndMarker.size() - 1; length > 0; --length) {
        if (!value.ends_with(kEndMarker.substr(0, length))) continue;
        value.remove_suffix(length);
        break;
    }
    return value;
}

std::optional<StoredEntry> ReadEntryValue(std::wstring_view value) {
    value = WithoutEndMarker(value.substr(0, kTextLimit - 1));
    StoredEntry entry;
    const std::size_t length = MatchModifierName(value, entry.modifier);
    if (length == 0 || value.substr(length, 1) != L"+") return std::nullopt;
    const std::size_t equals = value.find(L'=');
    if (equals == std::wstring_view::npos) return std::nullopt;
    // The key's name ends at the "=", so that an entry without hotkey, whose key has no name, stays without
    // one instead of taking the "=" for its key.
    entry.key = ParseKeyName(value.substr(length + 1, equals - length - 1));
    entry.text = value.substr(equals + 1);
    return entry;
}

bool ParseStoredEntry(EntryList& list, std::wstring_view value, std::wstring_view label, int order) {
    const std::optional<StoredEntry> entry = ReadEntryValue(value);
    if (!entry) return false;
    AddEntry(list, entry->text, label, entry->key, entry->modifier, -1, order);
    return true;
}

std::wstring EntryKey(unsigned number) {
    return Format(L"text_%03u", number);
}

std::optional<unsigned> EntryNumberOfKey(std::wstring_view key) {
    constexpr std::size_t prefix = 5;
    if (key.size() <= prefix || key.size() > prefix + 9) return std::nullopt;
    const auto number = static_cast<unsigned>(ToInt(key.substr(prefix)));
    // Compared with what would be written: "text_7" and "text_0007" are other keys than "text_007".
    if (!EqualsIgnoreCase(key, EntryKey(number))) return std::nullopt;
    return number;
}

}  // namespace verbatix
