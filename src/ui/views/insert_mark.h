// The line that shows between which rows something dragged would go. A window of its own over the view: a
// list in rows has no such mark.
#pragma once

#include <windows.h>

namespace verbatix {

// Shows the line along the top edge of `place`, in client coordinates of that view and not beyond it.
void ShowInsertMark(HWND view, const RECT& place);
void HideInsertMark();

}  // namespace verbatix
