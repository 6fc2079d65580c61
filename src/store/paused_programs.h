// The programs in which hotkeys are paused, in a section of the settings file of their own.
#pragma once

#include <string>
#include <string_view>

#include "hotkeys/program_of_window.h"

namespace verbatix {

// The value that holds them: their names with "|" between, which no file name has. What is no name is left
// out.
std::wstring FormatProgramNames(const ProgramNames& programs);
ProgramNames ParseProgramNames(std::wstring_view value);

ProgramNames LoadPausedPrograms();
void SavePausedPrograms(const ProgramNames& programs);

}  // namespace verbatix
