// Paths that fall apart. A stored text keeps a line break as backslash-n, so "C:\new" is two lines to an
// entry that runs something: "C:" and "ew". "%nc%", which is taken out before the line is used, keeps the
// two characters apart. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// Where a backslash-n of the stored text stands in a path. Nothing in a text that is pasted: there nobody
// can tell a path from a line break. What looks like a path's end, a name with an extension or a new
// command behind it, is taken for a line break as it was meant.
std::vector<std::size_t> PathBreaks(std::wstring_view storedText);

// The stored text with "\%nc%n" at these places.
std::wstring KeepPaths(std::wstring_view storedText);

}  // namespace verbatix
