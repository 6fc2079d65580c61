// The value of the setting that lists hotkeys which are swallowed without action: stored hotkey texts, each
// followed by "|" ("Ctrl+A|Alt-Gr+F5|"). Pure; items that cannot be read are left out.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace verbatix {

// Modifier code to key code to "is disabled".
using DisabledHotkeys = std::map<unsigned, std::map<unsigned, bool>>;

// Longest value that is read, terminator included.
inline constexpr std::size_t kDisabledHotkeysSize = 1024;

// Reads the value. Two hotkeys cannot be written so that they come back: F13, whose name is the separator,
// and any with the right Windows key (see ParseModifierPrefix).
DisabledHotkeys ParseDisabledHotkeys(std::wstring_view value);

// One item for each hotkey whose flag is set, by modifier code and then key.
std::wstring FormatDisabledHotkeys(const DisabledHotkeys& disabled);

}  // namespace verbatix
