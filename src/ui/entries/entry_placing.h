// Where an entry goes: what a drop, a step up or down, or the choice of a group means for its hotkey, its
// label and its place in the list. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"
#include "ui/views/tree_rows.h"

namespace verbatix {

struct Placement {
    unsigned key = 0;  // as the record holds it
    unsigned modifier = 0;
    std::optional<std::wstring> path;  // group for the entry, "" for none; nothing: the label stays
    int reference = -1;                // entry beside which it goes; -1: it keeps its place in the list
    bool after = false;
};

// The entry stays as it is but for what the caller adds.
Placement PlacementOf(const ListEntry& entry);

// A drop of the entry at `position` onto a node of the tree: into a group, onto another hotkey (its own:
// out of all groups), or before or after another entry, whose hotkey and group it then takes. Nothing where
// it would change nothing or cannot be.
std::optional<Placement> DropOnNode(const EntryTree& tree, const EntryList& list, int position, int node,
                                    bool lowerHalf);

// A drop between the rows of the list, before row `gap`; a gap of the number of rows is the end.
std::optional<Placement> DropInGap(const std::vector<int>& rows, const EntryList& list, int position,
                                   int gap);

// One step up or down among the rows of the list, or among the entries and groups beside it in the tree.
std::optional<Placement> StepInRows(const std::vector<int>& rows, const EntryList& list, int position,
                                    bool down);
std::optional<Placement> StepInTree(const EntryTree& tree, const EntryList& list, int position, bool down);

// Carries a placement out and returns where the entry stands then; nothing, and nothing is changed, when
// its label would become too long.
std::optional<int> PlaceEntry(EntryList& list, int position, const Placement& placement);

// Gives the entry that label; false when it is too long.
bool SetLabel(EntryList& list, int position, std::wstring_view label);

// Renames the group of that node in the labels of all entries of the hotkey, shown or not. The name may
// hold "/". False, and nothing is changed, when a label would become too long; a blank name changes
// nothing.
bool RenameGroup(EntryList& list, const TreeNode& group, std::wstring_view name);

// The entries of that hotkey, shown or not.
std::vector<int> EntriesOn(const EntryList& list, unsigned key, unsigned modifier);

// Paths of the groups on that hotkey, in the order in which they come up, outer ones before inner ones.
std::vector<std::wstring> GroupsOn(const EntryList& list, unsigned key, unsigned modifier);

}  // namespace verbatix
