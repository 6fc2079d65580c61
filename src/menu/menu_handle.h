// The tree of the paste menu as a menu of Windows. A menu higher than the screen is broken into columns
// where they fit side by side, and scrolls where they do not.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "base/handle.h"
#include "menu/menu_model.h"

namespace verbatix {

// Command ids: a row's index plus kFirstRowItem, and the items that follow the rows.
inline constexpr UINT kFirstRowItem = 10;
inline constexpr UINT kShowMainWindowItem = 10000;
inline constexpr UINT kTakenWinKeyItem = 10001;

// What a screen has room for.
struct MenuSpace {
    std::size_t rows;  // one above the other
    int width;         // pixels, side by side
};

// Marks the first item of every further column. False, with nothing marked, where the columns are wider
// than the space. `widthOf` gives pixels.
bool BreakIntoColumns(MenuNode& menu, const MenuSpace& space,
                      const std::function<int(const std::wstring&)>& widthOf);

// The popup menu of the tree for the screen at `place`, with the items that follow the rows. Items that
// Windows refuses are left out.
UniqueMenu MakeMenuHandle(MenuNode tree, POINT place, bool winKeyIsTaken);

}  // namespace verbatix
