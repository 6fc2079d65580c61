// Dragging what is selected: in the list to another place in its order, in the tree to another place, group
// or hotkey. A line or a lit group shows where it would go; near the edges the view scrolls; Escape, the
// right button or another window in front end it with nothing changed. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// A notification of list or tree: where it tells that the mouse drags an entry, the drag begins. A
// group or a hotkey of the tree goes with all that is in it.
void OnDragNotify(const NMHDR& header);

bool IsDragging();
void CancelDrag();

// A message of the main dialog. Returns true when it belonged to a drag.
bool OnDragMessage(UINT message, LPARAM lParam);

// TIMER_DRAG_SCROLL.
void OnDragTimer();

}  // namespace verbatix
