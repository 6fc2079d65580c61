#include "store/entry_moves.h"

#include <algorithm>
#include <iterator>
#include <map>
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

static bool HoldTheSame(std::vector<int> a, std::vector<int> b) {
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a == b && std::adjacent_find(a.begin(), a.end()) == a.end();
}

void ArrangeEntries(EntryList& list, const std::vector<int>& places, const std::vector<int>& sources) {
    if (!HoldTheSame(places, sources)) return;
    std::map<int, int> sourceOf;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool isThere = list.count(places[i]) != 0;
        if (isThere && places[i] != sources[i]) sourceOf[places[i]] = sources[i];
    }
    // Round by round: who moves next goes into the place that has just become free. A record is large, so
    // only one of a round is put aside.
    while (!sourceOf.empty()) {
        const int first = sourceOf.begin()->first;
        const ListEntry aside = list.at(first).current;
        int place = first;
        for (int source = sourceOf.at(place); source != first; source = sourceOf.at(place)) {
            Put(list.at(place), list.at(source).current);
            sourceOf.erase(place);
            place = source;
        }
        Put(list.at(place), aside);
        sourceOf.erase(place);
    }
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
