// What the user does to the selected entry as a whole, in either view: move it, put it into a group. Every
// action keeps what is typed in the editor first and stops where that cannot be kept.
#pragma once

#include "ui/entries/entry_placing.h"

namespace verbatix {

// The list has changed: writes it, renews the hotkeys and shows it, with that entry selected; -1 leaves the
// selection to the views.
void SaveAndShow(int position);

// Carries a placement of that entry out. A label that would become too long is told of.
void PlaceAndShow(int position, const Placement& placement);

// Whether the order of the shown view is the list's own, so that an entry can be moved in it.
bool CanMoveInView();

// One step up or down. Says in the status bar why not.
void MoveSelected(bool down);

}  // namespace verbatix
