// Another text for a field of the main dialog in which the user may be at work.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace verbatix {

// Where in `now` ends what has changed from `before`: the place from which somebody who looks at the change
// goes on. Pure.
std::size_t EndOfChange(std::wstring_view before, std::wstring_view now);

// Puts that text into the field, the caret behind what changed and in sight. A field that shows it already
// keeps caret and selection.
void ChangeFieldText(HWND field, const std::wstring& text);

}  // namespace verbatix
