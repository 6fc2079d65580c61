// Where the one settings file lies. Kept here, chosen at start by app/.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Full path of the settings file. Profile access refuses a path without backslash, because the system would
// look for such a file in the Windows folder, and one that is longer than the profile functions take.
extern std::wstring settingsPath;

// The folder beside the settings file that keeps copies of it; empty when `path` holds no backslash.
std::wstring BackupFolderOf(const std::wstring& path);

// The name at the end of a path.
std::wstring FileNameOf(const std::wstring& path);

// Name of a copy made at that local time; the names of later ones are greater.
std::wstring BackupFileName(const SYSTEMTIME& time);

}  // namespace verbatix
