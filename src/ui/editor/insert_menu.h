// The menu of the Insert button: everything that means something in an entry's text, by kind, each with a
// word on what it does.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace verbatix {

// One line of the menu.
struct InsertItem {
    int group;             // language text that names the submenu
    std::wstring token;    // what is inserted
    std::wstring meaning;  // may be empty
    bool atStart = false;  // means something only at the beginning of the text
};

// Every line, those of a group together, from the tables that the expansion works with; date and time codes
// are explained by what they print for `now`.
std::vector<InsertItem> InsertItems(const SYSTEMTIME& now);

// Shows the menu below that button of the main dialog and inserts the choice into the editor's text.
void ShowInsertMenu(HWND button);

}  // namespace verbatix
