// Commands by number: one table for the menu bar, one for everything else that sends WM_COMMAND.
#pragma once

#include <windows.h>

namespace verbatix {

// Carries a WM_COMMAND out. Unknown numbers do nothing; returns whether the number was in a table.
bool RouteCommand(WPARAM wParam, LPARAM lParam);

}  // namespace verbatix
