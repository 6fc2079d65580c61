// Three commands that make a whole new text of the selection and ignore the rest of the entry: source code
// that builds a string, the lines in random order, a temporary HTML page. Main thread only; the waits for
// the foreground program block it. Nothing is reported.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace verbatix {

using DocumentOpener = void (*)(const std::wstring& path);

// Opens the document with the program for its type.
void OpenDocument(const std::wstring& path);

// The token of each, for showing them to the user.
std::span<const wchar_t* const> GeneratorTokens();

// The token of the generator that a text with it runs; null when it has none.
const wchar_t* FindGenerator(std::wstring_view entryText);

// Runs the first generator whose token occurs anywhere in `entryText`. 1 when it has handled the entry,
// even if there was nothing to paste; 0 when none occurs or it found no usable selection.
int TryGenerators(const std::wstring& entryText, DocumentOpener open = OpenDocument);

}  // namespace verbatix
