// The paths of what was copied in the shell.
#pragma once

#include <string>

namespace verbatix {

// Stands before and after each path that ClipboardGetShellPaths appends. Emptied by the dispatcher of the
// built-in commands before each of them.
extern std::wstring pathQuote;

// What ClipboardGetShellPaths returns on success.
extern const wchar_t kShellPathsRead[];

// Appends to `paths`, for each item of the clipboard's "Shell IDList Array", the item's parsing name
// between path quotes and "\r\n". Items without such a name are left out. Returns kShellPathsRead, or a
// copy of `paths`, which stays as it was, when the clipboard is busy or holds no usable list. The
// clipboard is closed on return.
std::wstring ClipboardGetShellPaths(std::wstring& paths);

}  // namespace verbatix
