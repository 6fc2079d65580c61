// Where the settings file of this run is. app/ chooses it at start, before the first setting is read.
#pragma once

#include <string>

namespace verbatix {

// Full path; changed later only while the entries of another list file are merged, and put back then.
extern std::wstring settingsPath;

}  // namespace verbatix
