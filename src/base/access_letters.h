// The letters by which the rows of a menu are chosen, each marked by an "&" before it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace verbatix {

// Marks a letter in each row, none of them twice. A row that marks one keeps it unless an earlier row has
// it; the others get the first letter of one of their words, else any letter that is free, else none. What
// follows a tab, the keys of a command, is left alone. "&&" is a plain "&".
void GiveAccessLetters(std::vector<std::wstring>& rows);

// The same with every row of a menu and of the menus that open from it.
void GiveAccessLetters(HMENU menu);

// The marked letter in capitals; 0 where none is.
wchar_t AccessLetter(const std::wstring& row);

}  // namespace verbatix
