// Entries that stand in each other's way, or in nobody's: several on one hotkey, equal texts, no hotkey.
// Pure. Nothing fails.
#pragma once

#include <vector>

#include "store/entry.h"

namespace verbatix {

enum ClashReason : unsigned { kSharesHotkey = 1, kSharesText = 2, kLacksHotkey = 4 };

struct ClashRow {
    int position = 0;
    unsigned reasons = 0;  // of ClashReason
    bool operator==(const ClashRow&) const = default;
};

// The entries with a reason to be looked at. Those that share something stand together, in the order of the
// list, the groups in the order of their first entries: hotkeys first, then texts, then what only lacks a
// hotkey. An entry comes once, so that who shares a hotkey with one and a text with another joins the two.
// Entries without text, headings for one, do nothing and are left out. Hotkeys are compared as the keyboard
// hook does, texts to the letter.
std::vector<ClashRow> FindClashes(const EntryList& list);

}  // namespace verbatix
