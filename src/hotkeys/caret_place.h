// Where the paste menu opens and a notice stands: below the caret of the program in front, or at the mouse
// where that program shows no caret.
#pragma once

#include <windows.h>

#include <optional>

namespace verbatix {

struct CaretPlace {
    POINT point;   // screen coordinates of the upper left corner
    RECT exclude;  // what should not be covered; empty at the mouse
};

// The place below a caret, given in screen coordinates; nothing when the caret lies outside of `visible`,
// the part of its window that can be seen, as it does where the text was scrolled away from it.
std::optional<CaretPlace> PlaceBelowCaret(const RECT& caret, const RECT& visible);

// Asks the thread of `foreground` (null: none). Always on a screen.
CaretPlace FindCaretPlace(HWND foreground);

}  // namespace verbatix
