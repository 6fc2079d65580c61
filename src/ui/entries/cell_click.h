// A click on a cell of the row that is selected already: after the time of a double click the cell can be
// edited, the label in place, hotkey and text in their fields. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Makes the list notice where it is clicked. To be called once.
void SetUpCellClicks(HWND list);

// NM_CLICK of the list: neither a drag nor the second half of a double click.
void OnCellClick();

// TIMER_CELL_EDIT has run out.
void OnCellTimer();

}  // namespace verbatix
