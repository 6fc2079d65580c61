#include "ui/views/clashes.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <unordered_map>

namespace verbatix {

namespace {

// Entries by their place among those that are looked at, joined in groups. A group goes by its first one.
class Groups {
  public:
    explicit Groups(std::size_t count) : parent_(count) {
        std::iota(parent_.begin(), parent_.end(), std::size_t{0});
    }
    std::size_t Of(std::size_t place) {
        while (parent_[place] != place) place = parent_[place] = parent_[parent_[place]];
        return place;
    }
    void Join(std::size_t a, std::size_t b) {
        a = Of(a);
        b = Of(b);
        parent_[std::max(a, b)] = std::min(a, b);
    }

  private:
    std::vector<std::size_t> parent_;
};

unsigned HotkeyOf(const ListEntry& entry) {
    constexpr unsigned kModifiers = 10;
    const unsigned modifier = entry.modifier < kModifiers ? entry.modifier : 0;
    return modifier << 8 | (entry.keyCode & 0xff);
}

}  // namespace

std::vector<ClashRow> FindClashes(const EntryList& list) {
    std::vector<ClashRow> rows;
    std::vector<const ListEntry*> entries;
    for (const auto& [position, slot] : list) {
        if (slot.current.text[0] == L'\0') continue;
        rows.push_back({position, (slot.current.keyCode & 0xff) ? 0U : unsigned{kLacksHotkey}});
        entries.push_back(&slot.current);
    }
    Groups groups(rows.size());
    const auto share = [&](auto& firsts, auto key, std::size_t place, unsigned reason) {
        const auto [first, isNew] = firsts.try_emplace(key, place);
        if (isNew) return;
        rows[first->second].reasons |= reason;
        rows[place].reasons |= reason;
        groups.Join(first->second, place);
    };
    std::unordered_map<unsigned, std::size_t> hotkeys;
    std::unordered_map<std::wstring_view, std::size_t> texts;
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const ListEntry& entry = *entries[place];
        if (entry.keyCode & 0xff) share(hotkeys, HotkeyOf(entry), place, kSharesHotkey);
        share(texts, std::wstring_view(entry.text), place, kSharesText);
    }
    std::vector<unsigned> reasons(rows.size());  // of whole groups
    for (std::size_t place = 0; place < rows.size(); ++place)
        reasons[groups.Of(place)] |= rows[place].reasons;
    // Hotkeys, texts, the rest; in each the groups as they begin.
    const auto rank = [&](std::size_t place) {
        const std::size_t group = groups.Of(place);
        const int kind = (reasons[group] & kSharesHotkey) ? 0 : (reasons[group] & kSharesText) ? 1 : 2;
        return std::pair(kind, group);
    };
    std::vector<std::pair<std::pair<int, std::size_t>, ClashRow>> ranked;
    for (std::size_t place = 0; place < rows.size(); ++place) {
        if (rows[place].reasons) ranked.emplace_back(rank(place), rows[place]);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<ClashRow> found;
    for (const auto& [place, row] : ranked) found.push_back(row);
    return found;
}

}  // namespace verbatix
