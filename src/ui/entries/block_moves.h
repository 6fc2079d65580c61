// Several entries at once: another order, another group or hotkey. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/entry.h"
#include "ui/views/tree_rows.h"

namespace verbatix {

// A new order of the entries at some places: each place gets the entry that stands at its source now. Both
// have the same positions in them.
struct Rearrangement {
    std::vector<int> places;
    std::vector<int> sources;
};

// Where the entry at `position` goes.
int LandingOf(const Rearrangement& order, int position);
std::vector<int> LandingsOf(const Rearrangement& order, const std::vector<int>& positions);

// One step up or down of the selected entries among the rows of the list. Those at the end, and those that
// lie behind them, stay.
Rearrangement StepManyInRows(const std::vector<int>& rows, const std::vector<int>& selected, bool down);

// The same for nodes of the tree, each among its siblings; a group goes with all that is in it.
Rearrangement StepManyInTree(const EntryTree& tree, const std::vector<int>& nodes, bool down);

// The entries of `block` as one, in that order, before or behind the entry at `reference`, which is none of
// them.
Rearrangement BlockBeside(const EntryList& list, const std::vector<int>& block, int reference, bool after);

// Carries it out; the order numbers of the hotkeys that are touched follow.
void Rearrange(EntryList& list, const Rearrangement& order);

// An entry of what is moved, and how many groups of its label stay behind: those outside of a group that
// is moved as a whole, all for an entry by itself.
struct Moved {
    int position = -1;
    std::size_t outerGroups = 0;
};

// The entries in those nodes of the tree, each once.
std::vector<Moved> MovedNodes(const EntryTree& tree, const std::vector<int>& nodes);
// Entries by themselves.
std::vector<Moved> MovedEntries(const std::vector<int>& positions);

// Where they all go.
struct Destination {
    std::optional<unsigned> key;       // as the record holds it; nothing: each stays on its hotkey
    unsigned modifier = 0;             // of that key, unless it is 0
    std::optional<std::wstring> path;  // group, "" for none; nothing: the labels stay
    int reference = -1;                // entry beside which they go; -1: each keeps its place in the list
    bool after = false;
};

// A drop of those nodes onto another one, as that of one entry. Nothing where it would change nothing, and
// into a group that is itself moved.
std::optional<Destination> DropManyOnNode(const EntryTree& tree, const std::vector<int>& nodes, int target,
                                          bool lowerHalf);

// A drop of entries between the rows of the list, before row `gap`. Nothing where no other row is left.
std::optional<Destination> DropManyInGap(const std::vector<int>& rows, const std::vector<int>& positions,
                                         int gap);

// Carries it out and returns where the entries stand then; nothing, and nothing is changed, when a label
// would become too long.
std::optional<std::vector<int>> PlaceMany(EntryList& list, const std::vector<Moved>& moved,
                                          const Destination& destination);

}  // namespace verbatix
