// Turning an entry's text into what is delivered: the half of expansion that asks the clipboard and the
// foreground program, with the fixed waits that give that program time to serve a copy stroke. Main thread
// only; the waits block it. Nothing is reported: a busy clipboard, or one without text or HTML, and a name
// that the system does not tell give an empty text.
#pragma once

#include <string>
#include <string_view>

#include "paste/text/placeholders.h"

namespace verbatix {

// The selection that was copied when a run or "cpy:" entry was triggered; run lines fall back to it.
extern std::wstring CapturedText;

// The next delivery goes out as HTML. Set by expansion, read and cleared by delivery.
extern bool PasteAsHtml;

// The names, as far as the text asks for them, the time of now, and the dialogs that ask for another one.
KnownFacts FetchKnownFacts(std::wstring_view text, bool useDate, bool useTime);

// Replaces every placeholder of `text` in place and returns a copy of the result. At most one copy stroke
// is sent for the "%copy_text%" family and one for "%copy_html%". A program without a selection copies
// nothing, and "%copy_text%" is then the clipboard's old text. `useDateFormat` and `useTimeFormat` switch
// the two groups of date and time codes.
std::wstring ExpandPlaceholders(std::wstring& text, bool useDateFormat, bool useTimeFormat);

using Launcher = void (*)(bool elevate, const std::wstring& line);

// Fetches the selection, expands each line of `text` and hands those of more than one character to
// `launch`. Lines end at line feeds; a carriage return before one stays. Always 0.
int ExpandRunEntry(bool elevate, const std::wstring& text, Launcher launch, bool useDateFormat,
                   bool useTimeFormat);

// Puts an expanded text on the clipboard, ready for the paste stroke; an empty one leaves the clipboard as
// it is. Clears PasteAsHtml. False, and no stroke goes out any more, when the clipboard was busy.
bool FinishForDelivery(const std::wstring& text);

}  // namespace verbatix
