// The list of entries as a virtual list view: the control asks for what it shows, so that ten thousand
// entries cost no more than the dozen in sight. It keeps the selection for the tree too, which may stand in
// its place: there is one selected entry, whichever view shows it. UI thread only.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/views/list_rows.h"

namespace verbatix {

// Gives the control its look and its columns.
void SetUpListView(HWND list);

// Shows the rows of `mainWindow.rows` anew, with that entry selected, or none for -1.
void RefreshList(int selected);

// Position of the selected entry, -1 when none is.
int SelectedEntry();

// Selects the row of the entry at that position; none when it has no row.
void SelectListRow(int position);

// Whether the list has a row for that entry, which it then scrolls into sight.
bool HasListRow(int position);
void ScrollToListRow(int position);

// The row that the control looks for when letters are typed in it, by which an entry is found; -1: none,
// and the selection stays.
int FindTyped(const NMLVFINDITEMW& request);

// Answers the control's notifications about what it shows. A changed selection is told by
// WM_SELECTION_CHANGED.
void OnListNotify(const NMHDR& header);

}  // namespace verbatix
