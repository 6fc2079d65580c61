// Libraries of Windows, and no others. A library of the right name beside the program, in a folder of
// downloads say, could be anybody's, and would run with the rights of the program. So the program imports
// only what Windows itself always takes from its own folder, whatever stands beside a program; everything
// else is loaded here, at run time.
#pragma once

#include "base/handle.h"

namespace verbatix {

// Takes the program's folder and the current one out of every later search for a library, those included
// that Windows makes on its own. To be called before anything else. Plain Windows 7 leaves the program's
// folder in.
void SearchSystemFolderOnly();

// Loads the library from the system's own folder, or where Windows keeps it side by side with other
// versions, on every Windows. Null when it is not there.
UniqueModule LoadSystemLibrary(const wchar_t* name);

// The function of that name or ordinal (MAKEINTRESOURCEA); null when the library is null or has none.
template <typename Function>
Function FindFunction(HMODULE library, const char* name) {
    if (!library) return nullptr;  // where Windows would take the program itself
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace verbatix
