#include "ui/views/list_rows.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "base/text.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix {

namespace {

constexpr int kColumns = 5;
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

// The same for when and how often an entry was used.
std::string UseSortKey(const Uses& uses, int column) {
    constexpr int kDigits = 20;
    const auto number = column == kUsesColumn ? std::int64_t{uses.count} : uses.last;
    std::string digits = std::to_string(uses.count ? number : 0);
    digits.insert(0, kDigits - digits.size(), '0');
    return digits;
}

std::string SortKeyOf(const ListEntry& entry, const ListOrder& order) {
    if (order.sortColumn <= kTextColumn)
        return SortKey(CellText(entry, order.sortColumn), order.ignoreCase);
    return UseSortKey(order.usesOf ? order.usesOf(entry) : Uses{}, order.sortColumn);
}

void SortRows(std::vector<int>& rows, const EntryList& list, const ListOrder& order) {
    std::vector<std::pair<std::string, int>> keyed;
    keyed.reserve(rows.size());
    for (const int position : rows) {
        keyed.emplace_back(SortKeyOf(list.at(position).current, order), position);
    }
    std::stable_sort(keyed.begin(), keyed.end(), [&order](const auto& a, const auto& b) {
        return order.descending ? b.first < a.first : a.first < b.first;
    });
    std::transform(keyed.begin(), keyed.end(), rows.begin(), [](const auto& row) { return row.second; });
}

std::wstring Folded(std::wstring_view text, bool ignoreCase) {
    return ignoreCase ? LowerCase(text) : std::wstring(text);
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

std::vector<std::wstring> FilterWords(std::wstring_view filter, bool ignoreCase) {
    std::vector<std::wstring> words;
    for (const std::wstring_view word : Split(filter, L' ')) {
        if (!word.empty()) words.push_back(Folded(word, ignoreCase));
    }
    return words;
}

// In display form, and once more without blanks: "Ctrl + Alt + W", "Ctrl+Alt+W".
static std::wstring HotkeyForms(const ListEntry& entry) {
    const std::wstring shown = CellText(entry, 0);
    std::wstring packed = shown;
    ReplaceAll(packed, L" ", L"");
    return shown + L'\n' + packed;
}

bool MatchesFilter(const ListEntry& entry, const std::vector<std::wstring>& words, bool ignoreCase) {
    // Made only where a word needs it: mostly the label has it already, and texts are long.
    std::optional<std::wstring> label;
    std::optional<std::wstring> hotkey;
    std::optional<std::wstring> text;
    return std::all_of(words.begin(), words.end(), [&](const std::wstring& word) {
        if (!label) label = Folded(entry.label, ignoreCase);
        if (label->find(word) != std::wstring::npos) return true;
        if (!text) text = Folded(entry.text, ignoreCase);
        if (text->find(word) != std::wstring::npos) return true;
        if (!hotkey) hotkey = Folded(HotkeyForms(entry), ignoreCase);
        return hotkey->find(word) != std::wstring::npos;
    });
}

std::vector<int> ShownRows(const EntryList& list, const ListOrder& order) {
    std::vector<int> rows;
    rows.reserve(list.size());
    const std::vector<std::wstring> words = FilterWords(order.filter, order.ignoreCase);
    for (const auto& [position, slot] : list) {
        if (IsBlank(slot.current)) continue;
        if (position == order.pinned || MatchesFilter(slot.current, words, order.ignoreCase)) {
            rows.push_back(position);
        }
    }
    if (order.sortColumn >= 0 && order.sortColumn < kColumns) SortRows(rows, list, order);
    return rows;
}

int FindRow(const EntryList& list, const std::vector<int>& rows, int from, std::wstring_view beginning) {
    const std::size_t count = rows.size();
    const std::size_t first = from < 0 ? 0U : static_cast<std::size_t>(from);
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t row = (first + step) % count;
        const auto found = list.find(rows[row]);
        if (found == list.end()) continue;
        const ListEntry& entry = found->second.current;
        const std::wstring_view name = *entry.label ? entry.label : entry.text;
        if (EqualsIgnoreCase(name.substr(0, beginning.size()), beginning)) return static_cast<int>(row);
    }
    return -1;
}

std::size_t CountEntries(const EntryList& list) {
    const auto isThere = [](const auto& row) { return !IsBlank(row.second.current); };
    return static_cast<std::size_t>(std::count_if(list.begin(), list.end(), isThere));
}

std::array<int, 3> ColumnWidths(int list, int hotkey, int label, int least) {
    constexpr int kHotkeyPercent = 34;
    constexpr int kLabelPercent = 28;
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
