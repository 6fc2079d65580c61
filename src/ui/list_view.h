// The list of entries as a virtual list view: the control asks for what it shows, so that ten thousand
// entries cost no more than the dozen in sight.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "store/entry.h"

namespace verbatix {

// Gives the control its columns: hotkey in display form, label, text.
void SetUpListView(HWND list);

// Collects the entries to show (deleted ones, whose text and label are blank, are left out) and makes the
// control ask anew. With `keepSelection` the selected row stays selected, otherwise none is.
void RefreshListView(bool keepSelection);

// Selects the entry at that position and scrolls it into sight; one that is not shown selects nothing.
void SelectEntry(int position);

// What the control shows in one cell.
std::wstring CellText(const ListEntry& entry, int column);

// Answers the control's notifications; returns the result for LVN_... messages that want one.
LRESULT OnListNotify(const NMHDR& header);

// Shares the width of the list among the columns; the text gets what the other two leave.
void LayOutColumns(HWND list);

}  // namespace verbatix
