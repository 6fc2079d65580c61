// Putting something into the editor's text. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// Puts `text` in the place of what is selected in the text field, as a step of its own, saved at once.
void ReplaceSelectedText(const std::wstring& text);

// The same, and goes on there; or, at the start, before all else.
void InsertIntoText(const std::wstring& text, bool atStart);

}  // namespace verbatix
