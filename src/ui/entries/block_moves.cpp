#include "ui/entries/block_moves.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>
#include <set>
#include <utility>

#include "base/text.h"
#include "store/entry_moves.h"

namespace verbatix {

namespace {

constexpr std::size_t kAllGroups = std::numeric_limits<std::size_t>::max();

const TreeNode& Node(const EntryTree& tree, int index) {
    return tree.nodes[static_cast<std::size_t>(index)];
}

bool Holds(const std::vector<int>& sorted, int value) {
    return std::binary_search(sorted.begin(), sorted.end(), value);
}

std::vector<int> Sorted(std::vector<int> values) {
    std::sort(values.begin(), values.end());
    return values;
}

// Whoever is selected changes places with the one before, or behind, who is not.
std::vector<int> Stepped(std::vector<int> row, const std::vector<int>& selected, bool down) {
    const std::vector<int> sorted = Sorted(selected);
    if (down) std::reverse(row.begin(), row.end());
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (Holds(sorted, row[i]) && !Holds(sorted, row[i - 1])) std::swap(row[i], row[i - 1]);
    }
    if (down) std::reverse(row.begin(), row.end());
    return row;
}

bool IsBelow(const EntryTree& tree, int node, int above) {
    while (node > 0 && node != above) node = Node(tree, node).parent;
    return node == above;
}

// Without those that lie in another one of them.
std::vector<int> Outermost(const EntryTree& tree, const std::vector<int>& nodes) {
    const std::vector<int> sorted = Sorted(nodes);
    std::vector<int> outer;
    for (const int node : nodes) {
        int above = Node(tree, node).parent;
        while (above > 0 && !Holds(sorted, above)) above = Node(tree, above).parent;
        if (above <= 0) outer.push_back(node);
    }
    return outer;
}

std::size_t OuterGroups(const TreeNode& node) {
    if (node.kind == NodeKind::kEntry) return kAllGroups;
    return node.path.empty() ? 0 : Split(node.path, L'/').size() - 1;
}

std::wstring LabelIn(std::wstring_view label, const std::wstring& path, std::size_t outerGroups) {
    LabelParts parts = SplitLabel(label);
    const auto outer = std::min(outerGroups, parts.groups.size());
    parts.groups.erase(parts.groups.begin(), parts.groups.begin() + static_cast<std::ptrdiff_t>(outer));
    std::wstring moved = path;
    if (!moved.empty()) moved += L'/';
    return moved + JoinLabel(parts);
}

}  // namespace

int LandingOf(const Rearrangement& order, int position) {
    const auto found = std::find(order.sources.begin(), order.sources.end(), position);
    return found == order.sources.end()
               ? position
               : order.places[static_cast<std::size_t>(found - order.sources.begin())];
}

std::vector<int> LandingsOf(const Rearrangement& order, const std::vector<int>& positions) {
    std::vector<std::pair<int, int>> landing;
    for (std::size_t i = 0; i < order.places.size(); ++i) {
        landing.emplace_back(order.sources[i], order.places[i]);
    }
    std::sort(landing.begin(), landing.end());
    std::vector<int> result;
    for (const int position : positions) {
        const auto found = std::lower_bound(landing.begin(), landing.end(),
                                            std::pair{position, std::numeric_limits<int>::min()});
        const bool isMoved = found != landing.end() && found->first == position;
        result.push_back(isMoved ? found->second : position);
    }
    return result;
}

Rearrangement StepManyInRows(const std::vector<int>& rows, const std::vector<int>& selected, bool down) {
    return {rows, Stepped(rows, selected, down)};
}

// The entries below a node when the selected ones among all siblings have made their step.
static void AppendStepped(const EntryTree& tree, int node, const std::vector<int>& selected, bool down,
                          std::vector<int>& positions) {
    if (Node(tree, node).kind == NodeKind::kEntry) positions.push_back(Node(tree, node).position);
    for (const int child : Stepped(Node(tree, node).children, selected, down)) {
        AppendStepped(tree, child, selected, down, positions);
    }
}

Rearrangement StepManyInTree(const EntryTree& tree, const std::vector<int>& nodes, bool down) {
    Rearrangement order;
    const std::vector<int> selected = Outermost(tree, nodes);
    // Hotkeys stand in an order of their own.
    for (const int hotkey : Node(tree, 0).children) {
        const std::vector<int> before = EntriesBelow(tree, hotkey);
        std::vector<int> stepped;
        AppendStepped(tree, hotkey, selected, down, stepped);
        if (stepped == before) continue;
        const std::vector<int> places = Sorted(before);
        order.places.insert(order.places.end(), places.begin(), places.end());
        order.sources.insert(order.sources.end(), stepped.begin(), stepped.end());
    }
    return order;
}

Rearrangement BlockBeside(const EntryList& list, const std::vector<int>& block, int reference, bool after) {
    Rearrangement order;
    const std::vector<int> sorted = Sorted(block);
    for (const auto& [position, slot] : list) {
        order.places.push_back(position);
        if (Holds(sorted, position)) continue;
        const bool isHere = position == reference;
        if (isHere && !after) order.sources.insert(order.sources.end(), block.begin(), block.end());
        order.sources.push_back(position);
        if (isHere && after) order.sources.insert(order.sources.end(), block.begin(), block.end());
    }
    return order;
}

void Rearrange(EntryList& list, const Rearrangement& order) {
    std::set<std::pair<unsigned, unsigned>> hotkeys;
    for (std::size_t i = 0; i < order.places.size(); ++i) {
        if (order.places[i] == order.sources[i]) continue;
        const ListEntry& entry = list.at(order.places[i]).current;
        hotkeys.emplace(entry.keyCode, entry.modifier);
    }
    ArrangeEntries(list, order.places, order.sources);
    for (const auto& [key, modifier] : hotkeys) AlignOrders(list, key, modifier);
}

std::vector<Moved> MovedNodes(const EntryTree& tree, const std::vector<int>& nodes) {
    std::vector<Moved> moved;
    for (const int node : Outermost(tree, nodes)) {
        const std::size_t outer = OuterGroups(Node(tree, node));
        for (const int position : EntriesBelow(tree, node)) moved.push_back({position, outer});
    }
    return moved;
}

std::vector<Moved> MovedEntries(const std::vector<int>& positions) {
    std::vector<Moved> moved;
    for (const int position : positions) moved.push_back({position, kAllGroups});
    return moved;
}

std::optional<Destination> DropManyOnNode(const EntryTree& tree, const std::vector<int>& nodes, int target,
                                          bool lowerHalf) {
    if (target <= 0) return std::nullopt;
    const TreeNode& onto = Node(tree, target);
    const std::vector<int> outer = Outermost(tree, nodes);
    const auto holdsTarget = [&](int node) { return IsBelow(tree, target, node); };
    if (outer.empty() || std::any_of(outer.begin(), outer.end(), holdsTarget)) return std::nullopt;
    const auto isIn = [&](int node) { return Node(tree, node).parent == target; };
    if (std::all_of(outer.begin(), outer.end(), isIn)) return std::nullopt;
    Destination destination;
    const auto isOn = [&](int node) {
        return Node(tree, node).key == onto.key && Node(tree, node).modifier == onto.modifier;
    };
    const bool sameHotkey = std::all_of(outer.begin(), outer.end(), isOn);
    if (!sameHotkey) {
        destination.key = ((onto.key & 0xff) ^ 0x80) - 0x80;
        destination.modifier = onto.modifier;
    }
    if (onto.kind == NodeKind::kEntry) {
        destination.reference = onto.position;
        destination.after = lowerHalf;
        const auto isBeside = [&](int node) { return Node(tree, node).parent == onto.parent; };
        const bool allBeside = std::all_of(outer.begin(), outer.end(), isBeside);
        if (tree.grouped && !allBeside) destination.path = Node(tree, onto.parent).path;
    } else if (onto.kind == NodeKind::kGroup || sameHotkey) {
        destination.path = onto.path;
    }
    return destination;
}

std::optional<Destination> DropManyInGap(const std::vector<int>& rows, const std::vector<int>& positions,
                                         int gap) {
    const std::vector<int> sorted = Sorted(positions);
    Destination destination;
    const auto count = static_cast<int>(rows.size());
    if (gap < 0 || gap > count) return std::nullopt;
    const auto at = rows.begin() + gap;
    const auto isOther = [&](int position) { return !Holds(sorted, position); };
    const auto behind = std::find_if(at, rows.end(), isOther);
    const auto before = std::find_if(std::make_reverse_iterator(at), rows.rend(), isOther);
    destination.after = behind == rows.end();
    if (destination.after && before == rows.rend()) return std::nullopt;
    destination.reference = destination.after ? *before : *behind;
    return destination;
}

std::optional<std::vector<int>> PlaceMany(EntryList& list, const std::vector<Moved>& moved,
                                          const Destination& destination) {
    std::vector<int> positions;
    std::vector<std::wstring> labels;
    for (const Moved& one : moved) {
        const wchar_t* label = list.at(one.position).current.label;
        positions.push_back(one.position);
        labels.push_back(destination.path ? LabelIn(label, *destination.path, one.outerGroups) : label);
        if (labels.back().size() >= kLabelLimit) return std::nullopt;
    }
    for (std::size_t i = 0; i < moved.size(); ++i) {
        ListEntry& entry = list.at(positions[i]).current;
        CopyText(entry.label, labels[i], kLabelLimit);
        if (!destination.key) continue;
        entry.keyCode = *destination.key;
        if (*destination.key) entry.modifier = destination.modifier;
    }
    if (destination.reference < 0) return positions;
    const Rearrangement order = BlockBeside(list, positions, destination.reference, destination.after);
    Rearrange(list, order);
    return LandingsOf(order, positions);
}

}  // namespace verbatix
