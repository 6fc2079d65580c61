// HTML on the clipboard. A busy clipboard is told by the results alone.
#pragma once

#include <string>
#include <string_view>

#include "clipboard/history_marks.h"

namespace verbatix {

// Replaces the clipboard's content by `text` as the fragment of an "HTML Format", and by its UTF-8 bytes
// as CF_TEXT. True when the HTML is on the clipboard. When it cannot be allocated the clipboard is left
// empty.
bool HtmlClipboardPut(std::wstring_view text, Stay stay = Stay::UntilReplaced);

// Reads "HTML Format": `raw` gets the whole data as text, `fragment` the part between the two fragment
// offsets. True when there was such data; `fragment` stays as it was when the data names no usable offsets.
// Shows the data in a message box and waits for the user, on every call, found or not.
bool HtmlClipboardGet(std::wstring& fragment, std::wstring& raw);

}  // namespace verbatix
