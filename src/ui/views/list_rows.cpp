#include "ui/views/list_rows.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix {

namespace {

constexpr int kColumns = 3;
// Texts that agree so far may stand in any order.
constexpr std::size_t kSortedCharacters = 200;

// Bytes whose order is that of the texts in the user's language. Made once an entry, because comparing
// texts by language is slow.
std::string SortKey(std::wstring_view text, bool ignoreCase) {
    text = text.substr(0, kSortedCharacters);
    if (text.empty()) return {};
    const DWORD flags = LCMAP_SORTKEY | (ignoreCase ? NORM_IGNORECASE : 0U);
    // Some four to eight bytes a character; asking for the size first would cost as much as the key.
    char key[16 * kSortedCharacters];
    // For a sort key the function counts bytes, and takes them by the pointer to wide characters.
    const int size = LCMapStringW(LOCALE_USER_DEFAULT, flags, text.data(), static_cast<int>(text.size()),
                                  reinterpret_cast<wchar_t*>(key), sizeof key);
    return {key, static_cast<std::size_t>(std::max(size, 0))};
}

void SortRows(std::vector<int>& rows, const EntryList& list, const ListOrder& order) {
    std::vector<std::pair<std::string, int>> keyed;
    keyed.reserve(rows.size());
    for (const int position : rows) {
        const std::wstring cell = CellText(list.at(position).current, order.sortColumn);
        keyed.emplace_back(SortKey(cell, order.ignoreCase), position);
    }
    std::stable_sort(keyed.begin(), keyed.end(), [&order](const auto& a, const auto& b) {
        return order.descending ? b.first < a.first : a.first < b.first;
    });
    std::transform(keyed.begin(), keyed.end(), rows.begin(), [](const auto& row) { return row.second; });
}

bool Holds(std::wstring_view text, std::wstring_view part, bool ignoreCase) {
    if (!ignoreCase) return text.find(part) != std::wstring_view::npos;
    return LowerCase(text).find(part) != std::wstring::npos;
}

}  // namespace

std::wstring CellText(const ListEntry& entry, int column) {
    switch (column) {
        case 0:
            return (entry.keyCode & 0xff) ? FormatHotkeyDisplay(entry.keyCode, entry.modifier)
                                          : std::wstring();
        case 1: return entry.label;
        default: return entry.text;
    }
}

bool MatchesFilter(const ListEntry& entry, std::wstring_view filter, bool ignoreCase) {
    if (filter.empty()) return true;
    const std::wstring wanted = ignoreCase ? LowerCase(filter) : std::wstring(filter);
    return Holds(entry.label, wanted, ignoreCase) || Holds(entry.text, wanted, ignoreCase) ||
           Holds(CellText(entry, 0), wanted, ignoreCase);
}

std::vector<int> ShownRows(const EntryList& list, const ListOrder& order) {
    std::vector<int> rows;
    rows.reserve(list.size());
    for (const auto& [position, slot] : list) {
        if (IsBlank(slot.current)) continue;
        if (position == order.pinned || MatchesFilter(slot.current, order.filter, order.ignoreCase)) {
            rows.push_back(position);
        }
    }
    if (order.sortColumn >= 0 && order.sortColumn < kColumns) SortRows(rows, list, order);
    return rows;
}

std::size_t CountEntries(const EntryList& list) {
    const auto isThere = [](const auto& row) { return !IsBlank(row.second.current); };
    return static_cast<std::size_t>(std::count_if(list.begin(), list.end(), isThere));
}

std::array<int, 3> ColumnWidths(int list, int hotkey, int label, int least) {
    constexpr int kHotkeyPercent = 26;
    constexpr int kLabelPercent = 30;
    if (hotkey <= 0) hotkey = list * kHotkeyPercent / 100;
    if (label <= 0) label = list * kLabelPercent / 100;
    const int forBoth = std::max(list - least, 0);
    if (hotkey > forBoth || label > forBoth - hotkey) {
        // Wide, for each may be as large as a number in a file.
        const long long both = static_cast<long long>(hotkey) + label;
        hotkey = static_cast<int>(static_cast<long long>(hotkey) * forBoth / both);
        label = forBoth - hotkey;
    }
    return {hotkey, label, list - hotkey - label};
}

void ClickColumn(int column, int& sortColumn, int& sortDescending) {
    if (column != sortColumn) {
        sortColumn = column;
        sortDescending = 0;
    } else if (!sortDescending) {
        sortDescending = 1;
    } else {
        sortColumn = -1;
        sortDescending = 0;
    }
}

}  // namespace verbatix
