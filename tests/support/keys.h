// A user's key strokes: keybd_event with the scan code and extended flag of a real keyboard and without
// the program's own tag. Play them from a thread that owns neither the hook nor the target window:
// keybd_event returns only after the hook has answered.
#pragma once

#include <windows.h>

#include <initializer_list>

namespace verbatix::test {

void PressKeyDown(BYTE virtualKey);
void LetKeyUp(BYTE virtualKey);

// Holds `held` down in that order, strokes `key`, lets `held` up in reverse order.
void PlayStroke(std::initializer_list<BYTE> held, BYTE key);

// Modifiers and mouse buttons that the system believes to be down, by virtual-key code; for showing that
// none was left so.
bool AnyModifierDown();

}  // namespace verbatix::test
