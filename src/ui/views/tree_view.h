// The tree of entries in the place of the list, by the user's choice. The list keeps the selection for both
// views: what is selected here is selected there. Items are made when their parent is opened first, and
// names are asked for when they are shown, so that ten thousand entries cost little. UI thread only.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <set>

#include "ui/views/tree_rows.h"

namespace verbatix {

// What the control shows; empty while the list is shown.
const EntryTree& ShownTree();

// Builds the tree of `mainWindow.rows` anew and selects that entry; for -1 the hotkey or group that was
// selected stays so. What was open stays open; while a filter narrows the tree, all of it is.
void RefreshTree(int selected, bool filtered);

// Selects those entries and opens what `shown` lies in, the one that the editor shows; -1 selects nothing.
void SelectInTree(const std::vector<int>& positions, int shown);
// The same for any node; one that is not there is ignored.
void SelectNode(const TreeNode& node);

// Index of the selected node in ShownTree(), -1 when none is.
int SelectedNode();

// All selected nodes, in the order of the tree: those that are marked, else the control's own one.
std::vector<int> MarkedNodes();
// Marks those nodes, with the control's own selection at `caret`, marked or not. The list follows.
void SetMarks(const std::set<int>& nodes, int caret);
// While it is on, the control's own selection moves and the marks stay.
void KeepMarks(bool on);

// Index of the node at a place in the client area, -1 when there is none; `item` gets its rectangle.
int NodeAt(POINT place, RECT& item);
// Rectangle of an item, or of its name alone, in the client area; false when it is not in sight.
bool NodeRectangle(HTREEITEM node, bool nameOnly, RECT& item);
// Item of a node; null when it has none yet. And the node of an item; -1 when there is none.
HTREEITEM ItemOf(int node);
int NodeOf(HTREEITEM item);

// A group has a new path, or all entries of a hotkey another one: what was open in it stays open under its
// new name at the next refresh.
void KeepOpenUnder(const TreeNode& node, const TreeNode& renamed);

void ExpandAll();
void CollapseAll();

// Answers the control's notifications about what it shows.
void OnTreeNotify(const NMHDR& header);

}  // namespace verbatix
