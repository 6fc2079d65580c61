// The entry record and the list of entries in memory. The list belongs to the UI thread; no lock protects
// it. Nothing here touches a file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace verbatix {

// Limits of copies into the record, terminator included.
inline constexpr std::size_t kTextLimit = 4096;
inline constexpr std::size_t kLabelLimit = 256;
// Longest text accepted from the editor.
inline constexpr std::size_t kEditorTextLimit = 4000;

// Copied, compared and cleared as one block: what lies behind a terminator is always zero.
struct ListEntry {
    wchar_t text[4104];  // a line break stands as the two characters backslash and "n"
    wchar_t label[264];  // what the menu shows
    uint32_t keyCode;    // virtual-key code, 0 = no hotkey; from 128 on sign-extended from 8 bits
    uint32_t modifier;   // modifier code 0 to 9
    uint32_t number;     // names the entry in the settings file
    int32_t order;       // its place in the menu
    uint32_t groupRef;   // set by the tree view, 0 = tied to no group
    int32_t kind;        // class of the text's prefix, -1 = not yet classified
};
static_assert(std::is_trivially_copyable_v<ListEntry>);
static_assert(std::has_unique_object_representations_v<ListEntry>,
              "padding would make clean entries dirty");

// `current` is what the program works with, `saved` what the settings file holds.
struct EntrySlot {
    ListEntry current;
    ListEntry saved;
};

// By position; the order of the positions is the order of the list.
using EntryList = std::map<int, EntrySlot>;

// Number of the next entry that is created; only ever incremented while the program runs.
extern uint32_t nextEntryNumber;

// Whether two records differ.
bool Differ(const ListEntry& a, const ListEntry& b);
inline bool IsDirty(const EntrySlot& slot) {
    return Differ(slot.current, slot.saved);
}

// A deleted entry: it keeps its place in the file with neither text nor label.
bool IsBlank(const ListEntry& entry);

// Position of the first blank entry, which a new one may take over; nothing when there is none.
std::optional<int> FirstBlankPosition(const EntryList& list);

// Appends an entry, clean, and returns the number it was given. Text and label are cut at their limits.
// `numberRequest` is not used.
uint32_t AddEntry(EntryList& list, std::wstring_view text, std::wstring_view label, unsigned keyCode,
                  unsigned modifier, int numberRequest, int order);

// Takes text, label, key and modifier of `edited` over into the entry at `position`, which the next save
// then writes. False when there is none.
bool UpdateEntry(EntryList& list, int position, const ListEntry& edited);

// What is stored for the text in the editor: line breaks as backslash-n, "???Text" instead of nothing.
// Nothing when the text is longer than kEditorTextLimit.
std::optional<std::wstring> StoredFromEditorText(std::wstring_view editorText);

// The way back: every backslash-n as CR LF.
std::wstring EditorFromStoredText(std::wstring_view storedText);

}  // namespace verbatix
