// The list as a tree: hotkey, the groups of the label's path, entries. Pure, over the list and the rows
// that the filter has left. Nothing fails.
//
// A label "Letters/Business/Regards" stands for an entry "Regards" in the group "Business" of the group
// "Letters", as in the paste menu; parts without a name make no group.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"

namespace verbatix {

enum class NodeKind { kRoot, kHotkey, kGroup, kEntry };

// Kind, hotkey, path and position together tell a node from all others, before and after a refresh.
struct TreeNode {
    NodeKind kind = NodeKind::kRoot;
    unsigned key = 0;  // low byte of the key code
    unsigned modifier = 0;
    std::wstring path;  // of a group: the names from the outermost group to this one, with "/" between
    int position = -1;  // of an entry
    int parent = -1;
    std::vector<int> children;
    std::wstring name;  // as it is shown
};

// Nodes name each other by their index; the first is the root, whose children are the hotkeys.
struct EntryTree {
    std::vector<TreeNode> nodes = std::vector<TreeNode>(1);
    bool grouped = true;
};

// The parts of a label: its groups, without nameless ones, and what stands behind the last "/".
struct LabelParts {
    std::vector<std::wstring> groups;
    std::wstring name;
};
LabelParts SplitLabel(std::wstring_view label);
std::wstring JoinLabel(const LabelParts& parts);

// The tree of the entries at those positions, entries and groups in the order in which they come up there,
// hotkeys by modifier and key and the entries without hotkey last. Not `grouped`, labels are not taken
// apart.
EntryTree BuildTree(const EntryList& list, const std::vector<int>& rows, bool grouped);

// Whether both are the same node, whatever their names and children.
bool IsSameNode(const TreeNode& a, const TreeNode& b);

// Index of the node that is the same as `node`; -1 when there is none.
int FindNode(const EntryTree& tree, const TreeNode& node);
// Of an entry's.
int FindEntryNode(const EntryTree& tree, int position);

// The nodes of `now` that are the same as those of `before`; what has gone is left out.
std::set<int> FindSameNodes(const EntryTree& before, const std::set<int>& nodes, const EntryTree& now);

// Whether both have the same nodes at the same places, so that at most names differ.
bool HaveSameShape(const EntryTree& a, const EntryTree& b);

// Positions of the entries in and below a node, in the order of the tree; none of node -1.
std::vector<int> EntriesBelow(const EntryTree& tree, int node);

}  // namespace verbatix
