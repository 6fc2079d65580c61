// Typing a text as key strokes of the keyboard layout of the program in front, for programs that take no
// paste.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>
#include <vector>

#include "hotkeys/key_simulation.h"

namespace verbatix {

// The longest text that is typed, in UTF-16 units: a longer one would keep the keyboard for seconds.
inline constexpr std::size_t kMaxTypedText = 1024;

// The key events of one character, from what VkKeyScanExW answered for it: virtual key in the low byte,
// shift state in the high one. A character without a key (-1) becomes what those bits say.
std::vector<KeyStroke> StrokesForKeyScan(SHORT keyScan);

// Types the text into the window with the keyboard, 1 ms after each character. An empty text and one
// beyond the limit are refused with a message box; nothing is typed then.
void TypeText(std::wstring_view text);

}  // namespace verbatix
