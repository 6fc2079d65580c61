// What a user sends along with "it does not paste": the versions, the state of the hotkeys and what became
// of the last presses. In English, for those who read it; without a text, a label or a path.
#pragma once

#include <span>
#include <string>

#include "hotkeys/press_log.h"

namespace verbatix {

// Help > Diagnostics: writes the report beside the settings file, as "Verbatix_diagnostics.txt", and opens
// it. A file that cannot be written is told in a box.
void ShowPressReport();

// Versions, counts and states, one a line.
std::wstring ProgramReport();

// --- pure ---

// A heading and one line a press, newest first.
std::wstring PressLines(std::span<const LoggedPress> presses);

}  // namespace verbatix
