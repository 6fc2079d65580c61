// Which program a window belongs to, by the name of its file, and the programs in which the user wants no
// hotkeys. Nothing fails: a program that Windows does not tell of has no name, and is none of them.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// The name of the program's file without its folder, as Windows spells it; empty when that is not to be
// had. For a store app, whose windows stand in a frame of the system's, the app's own.
std::wstring ProgramOfWindow(HWND window);

// File names of programs, each once in any spelling.
using ProgramNames = std::vector<std::wstring>;

// Most programs that are remembered: a bound against hostile files.
inline constexpr std::size_t kMostProgramNames = 50;

bool HasProgram(const ProgramNames& programs, std::wstring_view name);

// Puts the name in, or takes it out where it is in. One that is empty, or that no file can have, and one
// more than kMostProgramNames changes nothing.
void ToggleProgram(ProgramNames& programs, std::wstring_view name);

}  // namespace verbatix
