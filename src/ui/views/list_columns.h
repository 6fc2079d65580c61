// The columns of the list: those that are always there, and those that the user has switched on or that the
// shown mode brings along. UI thread only.
#pragma once

#include <windows.h>

#include <string>

#include "ui/views/list_rows.h"

namespace verbatix {

// To be called once: the first columns, and the watch over their widths.
void SetUpColumns(HWND list);

// Gives the control the columns that are to be shown now, and keeps the widths of those that stay.
void ShowColumns(HWND list);

// Shows the columns' titles in the language that is active now.
void RelabelColumns(HWND list);

// The column that the control has under that number.
ListColumn ColumnAt(int index);

// What stands in a column that is not the entry's own: when and how often it was used, what it clashes
// with.
std::wstring ExtraCellText(int position, const ListEntry& entry, ListColumn column);

// Shares the width of the list among the columns: the text gets what the widths that the user has chosen
// leave; those beside them follow resolution and size. To be called when any of that has changed, or a
// scroll bar.
void ShareListWidth();

// Writes the widths that the user has chosen since they were read.
void RememberColumns();

// Marks the column that is sorted by.
void ShowSortArrow(HWND list);

}  // namespace verbatix
