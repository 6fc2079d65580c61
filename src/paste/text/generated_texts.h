// Whole new texts made of a selection: source code that builds a string, the lines in random order, the
// name of a page. Pure.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace verbatix {

// Source code that builds the selected string unit by unit. A selection of the form CString name="value";
// keeps its name, else the name is made of the value. Empty when there is no value.
std::wstring StringBuilderSource(std::wstring_view selection);

// The lines of `text` shuffled by that seed, each ended by CR LF. Lines are what stands between line feeds;
// empty ones count. Empty when there are fewer than two.
std::wstring ShuffledRows(std::wstring_view text, std::uint32_t seed);

// File name of the temporary page, from a text of the user's language, which may come from a file of
// anybody's: blanks and what no file name may hold become "_".
std::wstring HtmlPageName(std::wstring_view title);

}  // namespace verbatix
