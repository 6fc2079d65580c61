// The list of entries as a virtual list view: the control asks for what it shows, so that ten thousand
// entries cost no more than the dozen in sight. While the tree stands in its place it goes on keeping rows
// and selection: there is one selected entry, whichever view shows it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "ui/views/list_rows.h"

namespace verbatix {

// Gives the control its columns: hotkey in display form, label, text.
void SetUpListView(HWND list);

// Shows the columns' titles in the language that is active now.
void RelabelColumns(HWND list);

// Collects the entries to show, by filter and order, and makes list and tree show them. With
// `keepSelection` the selected entry stays selected, and shown as long as the filter has not changed;
// otherwise none is.
void RefreshListView(bool keepSelection);

// Selects the entry at that position and scrolls it into sight; a filter that hides it is taken away. One
// that does not exist selects nothing.
void SelectEntry(int position);

// The same in the list alone, for the tree, whose selection the list keeps.
void SelectListRow(int position);

// Selects the entry that stands first in the shown view, if there is one.
void SelectFirstEntry();

// Position of the selected entry, -1 when none is.
int SelectedEntry();

// The entry below, else above, that one in the shown view; -1 when there is none.
int NeighbourOf(int position);

// Answers the control's notifications; returns the result for LVN_... messages that want one.
LRESULT OnListNotify(const NMHDR& header);

// WM_SELECTION_CHANGED: the editor follows the selection. A text that is too long keeps the selection where
// it is.
void OnSelectionChanged();

// Shares the width of the list among the columns.
void LayOutColumns(HWND list);

// Gives the text what the other columns leave, when the list has another width.
void StretchTextColumn(HWND list);

}  // namespace verbatix
