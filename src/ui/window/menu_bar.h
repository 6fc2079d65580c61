// The menu bar of the main window, from one table.
#pragma once

#include <windows.h>

namespace verbatix {

// What a command of the menu bar carries as lParam. The bar's numbers overlap with those of the main table;
// the marker keeps them apart.
inline constexpr LPARAM kMenuBarMarker = 0xAFFE0000;

// Builds the bar in the active language. Its choices arrive as WM_MENUCOMMAND, so that they can be told
// from commands with the same number.
HMENU CreateMenuBar();

// The menu of the options alone, for the tray icon. The caller owns it and carries out what is chosen.
HMENU CreateOptionsMenu();

// Gives the main window a new bar, in the language that is active now.
void RebuildMenuBar();

// Shows which options are on, and greys what would do nothing now.
void RefreshMenuChecks(HMENU menuBar);

// Turns the choice of a WM_MENUCOMMAND into the WM_COMMAND with the menu bar's marker.
void OnMenuCommand(HWND window, WPARAM position, LPARAM menu);

}  // namespace verbatix
