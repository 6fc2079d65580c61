// Three commands that make a whole new text of the selection and ignore the rest of the entry: source code
// that builds a string, the lines in random order, a temporary HTML page. Main thread only; the waits for
// the foreground program block it. Nothing is reported.
#pragma once

#include <cstdint>
#include <span>
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

using DocumentOpener = void (*)(const std::wstring& path);

// Opens the document with the program for its type.
void OpenDocument(const std::wstring& path);

// The token of each, for showing them to the user.
std::span<const wchar_t* const> GeneratorTokens();

// Runs the first generator whose token occurs anywhere in `entryText`. 1 when it has handled the entry,
// even if there was nothing to paste; 0 when none occurs or it found no usable selection.
int TryGenerators(const std::wstring& entryText, DocumentOpener open = OpenDocument);

}  // namespace verbatix
