// What the user does to the selected entry as a whole, in either view: move it, put it into a group. Every
// action keeps what is typed in the editor first and stops where that cannot be kept.
#pragma once

#include "ui/entries/block_moves.h"
#include "ui/entries/entry_placing.h"
#include "ui/state/undo_history.h"

namespace verbatix {

// The list has changed by that action: writes it, renews the hotkeys and shows it, with the entries
// selected that the action names; none leaves the selection to the views.
void SaveAndShow(Action action);
// The same when the change has been noted already. For one that filter or mode hides these are taken away,
// or they stay and the first one of the view is selected.
enum class Hidden { kBringUp, kStay };
void ShowKept(const std::vector<int>& positions, Hidden hidden = Hidden::kBringUp);

// Carries a placement of that entry out, which the user knows as that kind of action. A label that would
// become too long is told of.
void PlaceAndShow(int position, const Placement& placement, Act act);

// The same for several; false when nothing came of it.
bool PlaceManyAndShow(const std::vector<Moved>& moved, const Destination& destination, Act act);

// Whether the order of the shown view is the list's own, so that an entry can be moved in it.
bool CanMoveInView();

// One step up or down of all that is selected. Says in the status bar why not.
void MoveSelected(bool down);

}  // namespace verbatix
