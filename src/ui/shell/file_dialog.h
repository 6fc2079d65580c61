// The system's dialogs for a file to read and a file to write.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Full path of the file that the user has chosen; empty when the user has chosen none.
std::wstring AskFileToRead(HWND owner);

// The same for a file that may not exist yet; for one that does the user has agreed to replace it.
std::wstring AskFileToWrite(HWND owner, const wchar_t* proposedName);

}  // namespace verbatix
