// A few words at the caret that say why nothing arrived there. They take neither focus nor clicks, and go
// by themselves. One notice at a time, on the thread that showed the first; where its window cannot be
// made, nothing is shown.
#pragma once

#include <windows.h>

#include <string>

#include "hotkeys/caret_place.h"

namespace verbatix {

// Shows `text` below the caret of the program in front, else at the mouse, for 6 seconds or until
// HideNotice. A notice that is up already is replaced.
void NoticeAtCaret(const std::wstring& text);

// Takes the notice away. Called by the keyboard hook when a key goes down: the user has seen it or types
// on.
void HideNotice();

// The upper left corner of a notice of that size: below what must not be covered, above it where the work
// area ends, and always inside of it.
POINT NoticeCorner(const CaretPlace& place, SIZE size, const RECT& workArea);

}  // namespace verbatix
