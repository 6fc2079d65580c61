// Commands by number: one table for the menu bar, one for everything else that sends WM_COMMAND.
#pragma once

#include <windows.h>

namespace verbatix {

// What a command of the menu bar carries as lParam. The bar's numbers overlap with those of the main table;
// the marker keeps them apart.
inline constexpr LPARAM kMenuBarMarker = 0xAFFE0000;

// Carries a WM_COMMAND out. Unknown numbers do nothing; returns whether the number was in a table.
bool RouteCommand(WPARAM wParam, LPARAM lParam);

}  // namespace verbatix
