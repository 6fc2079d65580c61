#include "store/entry_moves.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace verbatix {

static void Put(EntrySlot& slot, const ListEntry& entry) {
    const uint32_t number = slot.current.number;
    slot.current = entry;
    slot.current.number = number;
}

bool MoveEntry(EntryList& list, int from, int to) {
    auto place = list.find(from);
    const auto end = list.find(to);
    if (place == list.end() || end == list.end() || from == to) return false;
    const ListEntry moved = place->second.current;
    while (place != end) {
        const auto next = from < to ? std::next(place) : std::prev(place);
        Put(place->second, next->second.current);
        place = next;
    }
    Put(end->second, moved);
    return true;
}

void AlignOrders(EntryList& list, unsigned key, unsigned modifier) {
    if ((key & 0xff) == 0) return;
    std::vector<std::pair<int, ListEntry*>> entries;
    for (auto& [position, slot] : list) {
        ListEntry& entry = slot.current;
        if (IsBlank(entry) || (entry.keyCode & 0xff) != (key & 0xff) || entry.modifier != modifier)
            continue;
        entries.emplace_back(position, &entry);
    }
    const auto descends = [](const auto& a, const auto& b) { return a.second->order >= b.second->order; };
    if (std::adjacent_find(entries.begin(), entries.end(), descends) == entries.end()) return;
    for (const auto& [position, entry] : entries) entry->order = position;
}

}  // namespace verbatix
