#include "ui/entries/entry_placing.h"

#include <algorithm>

#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "store/entry_moves.h"

namespace verbatix {

namespace {

const TreeNode& Node(const EntryTree& tree, int index) {
    return tree.nodes[static_cast<std::size_t>(index)];
}

// The key as a record holds it, sign-extended from one byte.
unsigned RecordKey(unsigned key) {
    return ((key & 0xff) ^ 0x80) - 0x80;
}

unsigned RecordModifier(const ListEntry& entry) {
    return entry.modifier < kModifierCount ? entry.modifier : 0U;
}

bool IsOn(const ListEntry& entry, unsigned key, unsigned modifier) {
    const unsigned code = entry.keyCode & 0xff;
    return !IsBlank(entry) && code == (key & 0xff) && (code == 0 || RecordModifier(entry) == modifier);
}

std::wstring LabelIn(const ListEntry& entry, const std::wstring& path) {
    return path.empty() ? SplitLabel(entry.label).name : path + L'/' + SplitLabel(entry.label).name;
}

// Behind or before the first entry of the node beside: that one says where a group stands.
std::optional<Placement> Beside(const EntryTree& tree, const EntryList& list, int position, int neighbour,
                                bool down) {
    const std::vector<int> below = EntriesBelow(tree, neighbour);
    if (below.empty()) return std::nullopt;
    Placement placement = PlacementOf(list.at(position).current);
    placement.reference = *std::min_element(below.begin(), below.end());
    placement.after = down;
    return placement;
}

// Where an entry must go to stand beside `reference`, when the others have closed up.
int LandingOf(int from, const Placement& placement) {
    const int gap = placement.reference + (placement.after ? 1 : 0);
    return from < gap ? gap - 1 : gap;
}

}  // namespace

Placement PlacementOf(const ListEntry& entry) {
    Placement placement;
    placement.key = entry.keyCode;
    placement.modifier = entry.modifier;
    return placement;
}

std::optional<Placement> DropOnNode(const EntryTree& tree, const EntryList& list, int position, int node,
                                    bool lowerHalf) {
    const int dragged = FindEntryNode(tree, position);
    if (node <= 0 || dragged < 0 || node == dragged) return std::nullopt;
    const TreeNode& target = Node(tree, node);
    const int parent = Node(tree, dragged).parent;
    if (node == parent) return std::nullopt;
    Placement placement = PlacementOf(list.at(position).current);
    const bool sameHotkey =
        target.key == Node(tree, dragged).key && target.modifier == Node(tree, dragged).modifier;
    if (!sameHotkey) {
        placement.key = RecordKey(target.key);
        if (target.key) placement.modifier = target.modifier;
    }
    if (target.kind == NodeKind::kEntry) {
        placement.reference = target.position;
        placement.after = lowerHalf;
        if (tree.grouped && target.parent != parent) placement.path = Node(tree, target.parent).path;
    } else if (target.kind == NodeKind::kGroup || sameHotkey) {
        placement.path = target.path;
    }
    return placement;
}

std::optional<Placement> DropInGap(const std::vector<int>& rows, const EntryList& list, int position,
                                   int gap) {
    const auto found = std::find(rows.begin(), rows.end(), position);
    const int row = static_cast<int>(found - rows.begin());
    const int count = static_cast<int>(rows.size());
    if (found == rows.end() || gap < 0 || gap > count || gap == row || gap == row + 1) return std::nullopt;
    Placement placement = PlacementOf(list.at(position).current);
    placement.after = gap == count;
    placement.reference = rows[static_cast<std::size_t>(placement.after ? gap - 1 : gap)];
    return placement;
}

std::optional<Placement> StepInRows(const std::vector<int>& rows, const EntryList& list, int position,
                                    bool down) {
    const int row = static_cast<int>(std::find(rows.begin(), rows.end(), position) - rows.begin());
    return DropInGap(rows, list, position, down ? row + 2 : row - 1);
}

std::optional<Placement> StepInTree(const EntryTree& tree, const EntryList& list, int position, bool down) {
    const int node = FindEntryNode(tree, position);
    if (node < 0) return std::nullopt;
    const std::vector<int>& siblings = Node(tree, Node(tree, node).parent).children;
    const auto place = std::find(siblings.begin(), siblings.end(), node);
    if (down ? place + 1 == siblings.end() : place == siblings.begin()) return std::nullopt;
    return Beside(tree, list, position, down ? place[1] : place[-1], down);
}

std::optional<int> PlaceEntry(EntryList& list, int position, const Placement& placement) {
    const auto found = list.find(position);
    if (found == list.end()) return std::nullopt;
    ListEntry record = found->second.current;
    if (placement.path) {
        const std::wstring label = LabelIn(record, *placement.path);
        if (label.size() >= kLabelLimit) return std::nullopt;
        CopyText(record.label, label, kLabelLimit);
    }
    record.keyCode = placement.key;
    record.modifier = placement.modifier;
    UpdateEntry(list, position, record);
    if (placement.reference < 0) return position;
    const int landing = LandingOf(position, placement);
    MoveEntry(list, position, landing);
    AlignOrders(list, placement.key, placement.modifier);
    return landing;
}

bool SetLabel(EntryList& list, int position, std::wstring_view label) {
    const auto found = list.find(position);
    if (found == list.end() || label.size() >= kLabelLimit) return false;
    ListEntry record = found->second.current;
    CopyText(record.label, label, kLabelLimit);
    return UpdateEntry(list, position, record);
}

bool RenameGroup(EntryList& list, const TreeNode& group, std::wstring_view name) {
    if (TrimBlanks(name).empty()) return true;
    const std::vector<std::wstring_view> path = Split(group.path, L'/');
    std::vector<std::pair<int, std::wstring>> labels;
    for (const auto& [position, slot] : list) {
        if (!IsOn(slot.current, group.key, group.modifier)) continue;
        LabelParts parts = SplitLabel(slot.current.label);
        const bool below = parts.groups.size() >= path.size() &&
                           std::equal(path.begin(), path.end(), parts.groups.begin());
        if (!below) continue;
        parts.groups[path.size() - 1] = name;
        labels.emplace_back(position, JoinLabel(parts));
        if (labels.back().second.size() >= kLabelLimit) return false;
    }
    for (const auto& [position, label] : labels) SetLabel(list, position, label);
    return true;
}

std::vector<int> EntriesOn(const EntryList& list, unsigned key, unsigned modifier) {
    std::vector<int> positions;
    for (const auto& [position, slot] : list) {
        if (IsOn(slot.current, key, modifier)) positions.push_back(position);
    }
    return positions;
}

std::vector<std::wstring> GroupsOn(const EntryList& list, unsigned key, unsigned modifier) {
    std::vector<std::wstring> paths;
    for (const auto& [position, slot] : list) {
        if (!IsOn(slot.current, key, modifier)) continue;
        std::wstring path;
        for (const std::wstring& group : SplitLabel(slot.current.label).groups) {
            path += (path.empty() ? L"" : L"/") + group;
            if (std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
        }
    }
    return paths;
}

}  // namespace verbatix
