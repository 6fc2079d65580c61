// The columns of the list: those that are always there, and those that the user has switched on or that the
// shown mode brings along. UI thread only.
#pragma once

#include <windows.h>

#include <string>

#include "store/entry.h"

namespace verbatix {

// By what is stored of a sorted column; the control may show them under other numbers.
enum ListColumn { kHotkeyColumn, kLabelColumn, kTextColumn, kLastUsedColumn, kUsesColumn, kClashColumn };

// Gives the control the columns that are to be shown now, in the language that is active, and keeps the
// widths of those that stay.
void ShowColumns(HWND list);

// The column that the control has under that number.
ListColumn ColumnAt(int index);

// What stands in a column that is not the entry's own: when and how often it was used, what it clashes
// with.
std::wstring ExtraCellText(int position, const ListEntry& entry, ListColumn column);

// Shares the width of the list among the columns.
void LayOutColumns(HWND list);

// Gives the text what the other columns leave, when the list has another width.
void StretchTextColumn(HWND list);

// Marks the column that is sorted by.
void ShowSortArrow(HWND list);

}  // namespace verbatix
