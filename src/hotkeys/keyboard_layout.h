// What the user's keyboard says of a key: its label, and what it types. Nothing here fails or changes the
// state of the keyboard.
#pragma once

#include <string>

namespace verbatix {

// How the key is labelled in the active layout, as far as it says: the letter, else the name that the
// layout has for it ("Insert"). Empty where there is none. The low byte of the key counts.
std::wstring KeyLabel(unsigned key);

// Whether the keyboard has such a key at all. Mouse buttons are none.
bool IsOnKeyboard(unsigned key);

// The character that the key types with both Ctrl and Alt in one of the user's layouts, as Alt Gr does;
// empty where it types none. A dead key counts as its accent.
std::wstring TypedWithCtrlAlt(unsigned key);

}  // namespace verbatix
