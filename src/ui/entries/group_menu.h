// The menu that puts the selected entries into a group: the groups of their hotkeys, none, or a new one.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace verbatix {

// Appends the menu's rows for those entries, and the switch of the tree's groups. Returns the groups'
// paths; the row of each has the number CMD_FIRST_GROUP plus its index.
std::vector<std::wstring> AppendGroupRows(HMENU menu, const std::vector<int>& positions);

// Carries the choice of such a row out; false for a number of another kind.
bool RunGroupRow(int command, const std::vector<int>& positions, const std::vector<std::wstring>& groups);

// Shows the menu alone, at the mouse.
void ShowGroupMenu();

// Asks for a group's name; nothing for Cancel and for a blank one.
std::optional<std::wstring> AskGroupName();

}  // namespace verbatix
