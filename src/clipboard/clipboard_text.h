// Plain text on the clipboard. Each function reports a clipboard that stays busy, or whose owner hangs, by
// its result alone.
#pragma once

#include <string>
#include <string_view>

#include "clipboard/history_marks.h"

namespace verbatix {

// Replaces the clipboard's content by `text` as CF_UNICODETEXT; Windows makes the other text formats of it.
// Returns whether the clipboard was opened and closed: when the text cannot be allocated the clipboard
// stays empty and the result is still true.
bool ClipboardPutText(std::wstring_view text, Stay stay = Stay::UntilReplaced);

// Reads CF_UNICODETEXT, else CF_TEXT by the ANSI code page, up to the terminator. False, and `text` as it
// was, when the clipboard is busy or holds no text.
bool ClipboardGetText(std::wstring& text);

// Empties the clipboard, so that text found there later was put there later. Returns whether the clipboard
// was opened and closed.
bool ClearClipboard();

// What a block of UTF-16 or ANSI bytes holds up to its terminator, or whole when it has none. An odd last
// byte counts as a character below 256.
std::wstring WideTextOf(std::string_view bytes);
std::wstring AnsiTextOf(std::string_view bytes);

}  // namespace verbatix
