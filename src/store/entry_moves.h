// Another order of the list. Pure: the next save writes what has changed.
#pragma once

#include <vector>

#include "store/entry.h"

namespace verbatix {

// Moves the entry at `from` to `to`; those between close up. A number stays with its place: the file's keys
// come from the numbers and are read in their order, so the new order survives a restart. False when there
// is no such place or nothing to move.
bool MoveEntry(EntryList& list, int from, int to);

// Another order of the entries at `places`: each gets the one that stands at its source now. Both hold the
// same positions, each once; nothing is changed where they do not.
void ArrangeEntries(EntryList& list, const std::vector<int>& places, const std::vector<int>& sources);

// Makes the order numbers of the entries on that hotkey follow the list, so that a menu ordered by them
// shows a move too. Numbers that do already stay as they are; without a key there is no menu to order.
void AlignOrders(EntryList& list, unsigned key, unsigned modifier);

}  // namespace verbatix
