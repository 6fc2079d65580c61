// Putting something into the editor's text. UI thread only.
#pragma once

#include <string>

namespace verbatix {

// Puts `text` in the place of what is selected in the text field, undoable; or, at the start, before all
// else.
void InsertIntoText(const std::wstring& text, bool atStart);

}  // namespace verbatix
