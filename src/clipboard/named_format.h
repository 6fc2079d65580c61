// Clipboard data that is text of a format found by its name, such as "FileNameW", the path of a file
// copied in the shell.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

// The data of the format with that display name (exact case) as UTF-16 text up to its terminator; of
// several the last one that has data. Empty when the clipboard is busy or has no such format.
std::wstring ClipboardReadNamedFormat(std::wstring_view name);

}  // namespace verbatix
