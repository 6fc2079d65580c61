// A tooltip beside the highlighted row of a menu. One window, made on first use by the thread that shows
// the menu; where it cannot be made, there is no tooltip.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

struct MenuTooltip {
    HWND window = nullptr;
    HWND owner = nullptr;
    std::wstring text;
};

// Shows `text` at the level of `row` to the right of `menu`, or to the left where the screen ends; both
// rectangles are in screen coordinates.
void ShowMenuTooltip(MenuTooltip& tooltip, HWND owner, std::wstring text, const RECT& row,
                     const RECT& menu);
void HideMenuTooltip(MenuTooltip& tooltip);

}  // namespace verbatix
