#include "menu/menu_model.h"

#include <windows.h>

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/text.h"
#include "hotkeys/hotkey_tables.h"

namespace verbatix {

static bool IsOnHotkey(const ListEntry& entry, unsigned key, unsigned modifier) {
    const unsigned entryKey = entry.keyCode & 0xffU;
    const unsigned entryModifier = entry.modifier < kModifierCodeCount ? entry.modifier : 0;
    return entryKey != 0 && entryKey == (key & 0xffU) && entryModifier == modifier;
}

std::vector<std::wstring_view> CharacterPieces(std::wstring_view text) {
    std::vector<std::wstring_view> pieces = Split(text.substr(kCharacterListPrefix.size()), L',');
    std::erase_if(pieces, [](std::wstring_view piece) { return piece.empty(); });
    return pieces;
}

// Adds the entry's rows; of a character list that is too long no more than shows that it is.
static void AppendRows(std::vector<MenuRow>& rows, int position, const ListEntry& entry) {
    MenuRow row;
    row.position = position;
    row.number = entry.number;
    row.order = entry.order;
    const std::wstring_view text = entry.text;
    if (!text.starts_with(kCharacterListPrefix)) {
        const std::wstring_view label = entry.label;
        row.labelIsMenuLabel = label.size() > 1;  // one character is no label worth showing
        row.label = row.labelIsMenuLabel ? label : text;
        row.text = text;
        if (!row.label.empty()) rows.push_back(std::move(row));
        return;
    }
    row.piece = true;
    for (const std::wstring_view piece : CharacterPieces(text)) {
        if (rows.size() > kMaximumMenuRows) return;
        row.label = piece;
        row.text = piece;
        rows.push_back(row);
    }
}

std::optional<std::vector<MenuRow>> CollectMenuRows(const EntryList& list, unsigned key,
                                                    unsigned modifier) {
    std::vector<MenuRow> rows;
    for (const auto& [position, slot] : list) {
        if (!IsOnHotkey(slot.current, key, modifier)) continue;
        AppendRows(rows, position, slot.current);
        if (rows.size() > kMaximumMenuRows) return std::nullopt;
    }
    return rows;
}

static std::wstring SortKey(const MenuRow& row, const MenuOptions& options) {
    std::wstring key = options.ignoreCase ? LowerCase(row.label) : row.label;
    std::erase(key, L'&');
    if (options.useMenuOrder) key.insert(0, Format(L"%08d ", row.order));
    return key;
}

namespace {

// Makes keys unique: "0" is appended to one that exists already until it does not. Equal texts of
// thousands of characters are not compared anew for each "0": a key is kept as its stem and its zeros'
// count.
class UniqueKeys {
  public:
    std::wstring Add(std::wstring key) {
        const std::size_t stem = key.find_last_not_of(L'0') + 1;
        std::set<std::size_t>& taken = zeros_[key.substr(0, stem)];
        std::size_t count = key.size() - stem;
        for (auto next = taken.lower_bound(count); next != taken.end() && *next == count; ++next) ++count;
        taken.insert(count);
        key.resize(stem + count, L'0');
        return key;
    }

  private:
    std::map<std::wstring, std::set<std::size_t>> zeros_;
};

}  // namespace

void OrderMenuRows(std::vector<MenuRow>& rows, const MenuOptions& options) {
    if (options.sortMode == 0) return;
    UniqueKeys unique;
    std::vector<std::pair<std::wstring, std::size_t>> keys;
    keys.reserve(rows.size());
    for (const MenuRow& row : rows) keys.emplace_back(unique.Add(SortKey(row, options)), keys.size());
    std::sort(keys.begin(), keys.end());
    std::vector<MenuRow> ordered;
    ordered.reserve(rows.size());
    for (const auto& [key, index] : keys) ordered.push_back(std::move(rows[index]));
    rows = std::move(ordered);
}

void ApplyMenuDirective(unsigned& flags, std::wstring& label, MenuRow& row) {
    constexpr std::wstring_view kSeparator = L"MenuBreak:";
    constexpr std::wstring_view kHeading = L"MenuBreakName:";
    if (label.starts_with(kSeparator)) flags |= MF_SEPARATOR;
    if (label.starts_with(kHeading)) {
        label.erase(0, kHeading.size());
        row.kind = kHeadingKind;
        flags |= MF_DISABLED;
    }
}

// The submenu of that name, made at the end where there is none.
static MenuNode& FindGroup(MenuNode& menu, std::wstring_view name) {
    std::wstring label = ShownLabel(name, true);
    for (MenuNode& child : menu.children) {
        if ((child.flags & MF_POPUP) != 0 && child.label == label) return child;
    }
    MenuNode& group = menu.children.emplace_back();
    group.label = std::move(label);
    group.flags = MF_BYPOSITION | MF_POPUP;
    return group;
}

void AppendMenuItem(MenuNode& menu, std::vector<MenuRow>& rows, std::size_t row) {
    constexpr int kDeepestGroup = 16;  // Windows refuses menus nested much deeper
    MenuRow& source = rows[row];
    MenuNode* place = &menu;
    MenuNode item;
    item.row = row;
    item.flags = MF_BYPOSITION;
    std::wstring label = source.label;
    bool isMenuLabel = source.labelIsMenuLabel;
    if (isMenuLabel) {
        const std::vector<std::wstring_view> parts = Split(source.label, L'/');
        int depth = 0;
        for (std::size_t part = 0; part + 1 < parts.size() && depth < kDeepestGroup; ++part) {
            // A group without a name could not be told from others in the menu.
            if (TrimBlanks(parts[part]).empty()) continue;
            place = &FindGroup(*place, parts[part]);
            ++depth;
        }
        isMenuLabel = !TrimBlanks(parts.back()).empty();
        label = isMenuLabel ? parts.back() : source.text;
    }
    ApplyMenuDirective(item.flags, label, source);
    item.label = ShownLabel(label, isMenuLabel);
    place->children.push_back(std::move(item));
}

MenuNode BuildMenuTree(std::vector<MenuRow>& rows) {
    MenuNode menu;
    for (std::size_t row = 0; row < rows.size(); ++row) AppendMenuItem(menu, rows, row);
    return menu;
}

// At most `limit` units from the start, not ending inside a surrogate pair.
static std::wstring_view Cut(std::wstring_view text, std::size_t limit) {
    if (text.size() <= limit) return text;
    if (IS_HIGH_SURROGATE(text[limit - 1])) --limit;
    return text.substr(0, limit);
}

std::wstring ShownLabel(std::wstring_view label, bool isMenuLabel) {
    constexpr std::size_t kLongest = 80;
    constexpr wchar_t kEllipsis = L'\x2026';
    std::wstring shown(Cut(label, 2 * kLongest));
    if (!isMenuLabel) ReplaceAll(shown, L"\\n", L" ");
    std::replace_if(
        shown.begin(), shown.end(), [](wchar_t unit) { return unit < L' '; }, L' ');
    if (shown.size() > kLongest || label.size() > 2 * kLongest) {
        shown = std::wstring(Cut(shown, kLongest)) + kEllipsis;
    }
    if (!isMenuLabel) ReplaceAll(shown, L"&", L"&&");
    return shown;
}

std::wstring MenuTooltipText(std::wstring_view text) {
    constexpr std::size_t kLongest = 600;
    constexpr int kMostLines = 10;
    constexpr wchar_t kEllipsis = L'\x2026';
    std::wstring shown(Cut(text, kLongest));
    ReplaceAll(shown, L"\\n", L"\n");
    bool isCut = text.size() > kLongest;
    int lines = 0;
    const auto end = std::find_if(shown.begin(), shown.end(),
                                  [&](wchar_t unit) { return unit == L'\n' && ++lines == kMostLines; });
    isCut = isCut || end != shown.end();
    shown.erase(end, shown.end());
    if (isCut) shown += kEllipsis;
    ReplaceAll(shown, L"\n", L"\r\n");
    return shown;
}

}  // namespace verbatix
