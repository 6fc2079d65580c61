// Which entries the list shows, and in which order: pure, over the list and what the user has asked for.
// Nothing fails.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"
#include "store/entry_uses.h"

namespace verbatix {

// By what is stored of a sorted column; the control may show them under other numbers.
enum ListColumn { kHotkeyColumn, kLabelColumn, kTextColumn, kLastUsedColumn, kUsesColumn, kClashColumn };

struct ListOrder {
    std::wstring filter;
    bool ignoreCase = true;
    int sortColumn = -1;  // a ListColumn that can be sorted by; anything else: the order of the list
    bool descending = false;
    // Shown whatever the filter says: the entry being edited must not vanish under the user's hands.
    int pinned = -1;
    // When and how often an entry was used; null: never.
    Uses (*usesOf)(const ListEntry& entry) = nullptr;
};

// What is shown of an entry: hotkey in display form (nothing without a key), label, text.
std::wstring CellText(const ListEntry& entry, int column);

// The words that the user has typed into the filter, by which it looks.
std::vector<std::wstring> FilterWords(std::wstring_view filter, bool ignoreCase);

// Whether each of these words stands somewhere in hotkey, label or text; the hotkey is looked at with and
// without its blanks. No words match every entry.
bool MatchesFilter(const ListEntry& entry, const std::vector<std::wstring>& words, bool ignoreCase);

// Positions of the entries to show; deleted ones never are. Equal entries stay in the order of the list,
// descending too.
std::vector<int> ShownRows(const EntryList& list, const ListOrder& order);

// The first row from `from` on whose label, or text where it has none, begins like that in any case; past
// the end it goes on from the top. -1 when there is none.
int FindRow(const EntryList& list, const std::vector<int>& rows, int from, std::wstring_view beginning);

// Entries that are not deleted.
std::size_t CountEntries(const EntryList& list);

// Widths of the columns in a list of that many pixels: hotkey and label have the wanted ones (0: a share),
// the text what is left, and at least `least`, for which the others become narrower.
std::array<int, 3> ColumnWidths(int list, int hotkey, int label, int least);

// The order after a click on that column: ascending, then descending, then the list's own again.
void ClickColumn(int column, int& sortColumn, int& sortDescending);

}  // namespace verbatix
