// Start with Windows: a value in the "Run" key of the user's registry. The registry alone says whether it
// is on; nothing about it stands in the settings file. What the user has switched off in the Task Manager
// is off, and switching it on here undoes that.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

// Whether Windows starts this program file.
bool StartsWithWindows();

// Switches it on, in the background and with the settings file that was named for this run, or off. False
// when the registry refuses.
bool SetStartWithWindows(bool on);

// --- pure ---

// The value for a program file and its further arguments.
std::wstring AutostartCommand(std::wstring_view program, std::wstring_view arguments);

// Whether such a value starts that program file, whatever the arguments.
bool IsAutostartOf(std::wstring_view value, std::wstring_view program);

}  // namespace verbatix
