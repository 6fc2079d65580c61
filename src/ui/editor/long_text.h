// What becomes of a text that is longer than an entry can hold. UI thread only.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

enum class LongText { kGoBack, kCutOff, kKeepInFile, kDiscard };

// Asks the user, over the main window. `tooMany` characters are beyond the limit.
LongText AskAboutLongText(std::size_t tooMany);

// As much of the beginning as fits into an entry, without a half line break or character at its end.
std::wstring CutToLimit(std::wstring_view editorText);

// Where a kept text goes; where that fails, to the other place.
enum class KeepPlace { kBesideBackups, kBesideSettings };

// Writes the text to a new file named after the time. Its path; empty when it could not be written.
std::wstring KeepTextInFile(const std::wstring& text, KeepPlace place);

}  // namespace verbatix
