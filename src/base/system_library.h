// Libraries of Windows that are loaded at run time.
#pragma once

#include "base/handle.h"

namespace verbatix {

// Loads the library from the system's own folder, wherever the program stands: a library of that name
// beside the program, in a folder of downloads say, could be anybody's. Null when it is not there.
UniqueModule LoadSystemLibrary(const wchar_t* name);

}  // namespace verbatix
