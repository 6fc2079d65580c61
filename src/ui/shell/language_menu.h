// The language of the program, chosen from a menu and used at once.
#pragma once

#include <windows.h>

namespace verbatix {

// Appends a row for each language, the one in use marked; their commands begin at CMD_LANGUAGE_FIRST.
void AppendLanguages(HMENU menu);

// Shows the languages at the mouse and uses the one that is chosen.
void ShowLanguageMenu();

// Carries out the command of a row: stores the language and shows everything in it. False when `command` is
// none of them.
bool RunLanguageCommand(int command);

}  // namespace verbatix
