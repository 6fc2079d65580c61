// The road from the command line to the message loop.
#pragma once

#include <windows.h>

namespace verbatix {

// Runs the program to its end and returns its exit code: that of the quitting message, 0 when the start
// was broken off, 1 as update service. `commandLine` comes without the program's name.
int RunProgram(HINSTANCE instance, const wchar_t* commandLine);

}  // namespace verbatix
