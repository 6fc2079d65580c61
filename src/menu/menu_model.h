// The paste menu as data: which entries share a hotkey, in which order their rows stand, and how group
// paths and directives in labels make a tree of them. Pure; the popup only walks the tree. Everything is a
// copy, so a menu outlives changes of the list. Nothing here fails except where it says so.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"

namespace verbatix {

inline constexpr std::size_t kMaximumMenuRows = 900;
inline constexpr int32_t kHeadingKind = 6;

// An entry whose text begins with this is a list of characters or short texts, separated by commas.
inline constexpr std::wstring_view kCharacterListPrefix = L"charmap:";

// What such an entry offers, without the empty ones.
std::vector<std::wstring_view> CharacterPieces(std::wstring_view text);

// The user's settings that the menu follows.
struct MenuOptions {
    int sortMode = 1;  // 0: as the list stands; 1 and 2 order alike
    bool ignoreCase = true;
    bool useMenuOrder = true;
};

// A candidate of the hotkey.
struct MenuRow {
    std::wstring label;
    std::wstring text;              // what is executed, or pasted where it is a piece
    bool piece = false;             // cut from a character list
    int position = 0;               // of the entry in the list
    uint32_t number = 0;            // of the entry; tells whether it still stands at that position
    int32_t order = 0;              // of the entry
    bool labelIsMenuLabel = false;  // otherwise the label is the text
    int32_t kind = 0;               // kHeadingKind for a heading
};

// The rows of that hotkey in list order; nothing when there are more than kMaximumMenuRows. Codes are
// compared as the keyboard hook does: the key's low byte, a modifier that does not exist as 0.
std::optional<std::vector<MenuRow>> CollectMenuRows(const EntryList& list, unsigned key, unsigned modifier);

// Puts the rows into ascending order of their sort keys; with sort mode 0 they stay as they are.
void OrderMenuRows(std::vector<MenuRow>& rows, const MenuOptions& options);

// The directives at the start of a label: "MenuBreak:" makes a separator line, "MenuBreakName:" a heading
// of what follows it. Extends the MF_ flags and changes label and row accordingly.
void ApplyMenuDirective(unsigned& flags, std::wstring& label, MenuRow& row);

// One line of the menu, or the menu itself.
struct MenuNode {
    std::wstring label;              // as Windows wants it: "&" marks the access key, "&&" stands for "&"
    unsigned flags = 0;              // MF_ flags; MF_POPUP for a submenu
    std::size_t row = 0;             // index into the rows, where it is no submenu
    std::vector<MenuNode> children;  // of a submenu
};

// Appends a row to the menu or, when its label is a menu label with "/" in it, to the submenu that the
// label names, which is made where it does not exist.
void AppendMenuItem(MenuNode& menu, std::vector<MenuRow>& rows, std::size_t row);

// The menu of all rows, in their order.
MenuNode BuildMenuTree(std::vector<MenuRow>& rows);

// The label in a menu's one line: line breaks and tabs as blanks, cut to a width that leaves the menu
// usable. In a text taken for a label "&" is meant as it stands and backslash-n is a line break; a menu
// label stays as it was typed, and "&" marks the access key.
std::wstring ShownLabel(std::wstring_view label, bool isMenuLabel);

// The first lines of an entry's text for a tooltip, with real line breaks.
std::wstring MenuTooltipText(std::wstring_view text);

}  // namespace verbatix
