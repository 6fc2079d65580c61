// List and tree together: which entries they show, and the one that is selected in both. The editor follows
// the selection. UI thread only.
#pragma once

#include <windows.h>

#include <vector>

#include "ui/state/main_window.h"

namespace verbatix {

// Shows the tree or the list, as the option says. The keyboard stays in the view.
void ShowChosenView();

// Collects the entries to show, by filter and order, and makes list and tree show them. With
// `keepSelection` the selected entry stays selected, and shown as long as the filter has not changed;
// otherwise none is.
void RefreshViews(bool keepSelection);

// Shows all entries, those that were never used, or those that clash.
void ShowListMode(ListMode mode);

// Uses have been counted: shows them where they are to be seen.
void ShowUsesAnew();

// The option for the columns about them.
void SwitchUseColumns();

// Selects the entry at that position and scrolls it into sight; a filter or mode that hides it is taken
// away. One that does not exist selects nothing.
void SelectEntry(int position);

// The same with several, of which the first is the one that the editor shows; none changes nothing.
void SelectEntries(const std::vector<int>& positions);
// All that the views show.
void SelectAllEntries();

// The selected entries in the order of the shown view, those in selected groups and hotkeys of the tree
// too.
std::vector<int> SelectedEntries();
// Counts them for the status bar.
void CountSelected();

// Selects the entry that stands first in the shown view, if there is one.
void SelectFirstEntry();

// Selects the entry below, or above, the selected one in the shown view, from the end on from the other.
void SelectNextHit(bool above);

// The entry below, else above, those in the shown view; -1 when there is none.
int NeighbourOf(const std::vector<int>& positions);

// WM_SELECTION_CHANGED: the editor follows the selection. A text that is too long keeps the selection where
// it is.
void OnSelectionChanged();

// A notification of the filter. What is typed there selects the first hit; once it is empty again, what had
// been selected before is, unless the user has turned to a hit.
void OnFilterNotification(int code);

// Sorts the list by a column, a ListColumn, or shows it in its own order with one below 0, and keeps that.
// The tree and the clashes have an order of their own.
bool CanSort();
void SortEntries(int sortColumn, int descending);

// A notification of either view about what it shows.
void OnViewNotify(const NMHDR& header);

}  // namespace verbatix
