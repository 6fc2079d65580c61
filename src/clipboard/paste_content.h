// Content that goes onto the clipboard for a stroke that follows, and room for a copy. Each function first
// lets the program in front come to the paste stroke of before, which would else paste what comes now, and
// tries for kClipboardPatience. When it fails it withholds the strokes that would follow: they would paste
// or copy what somebody else has there.
#pragma once

#include <string_view>

#include "clipboard/history_marks.h"

#include "clipboard/saved_clipboard.h"

namespace verbatix {

bool PutTextToPaste(std::wstring_view text);
bool PutHtmlToPaste(std::wstring_view text);

// A store that was never saved into leaves the clipboard as it is, which is no failure.
bool PutSavedToPaste(const SavedClipboard& store);

// How long such content stays: for the paste where the user's clipboard waits to be given back; where it
// does not, the text is what he has on the clipboard from then on, and can paste again.
Stay StayOfPastes();

// Empties the clipboard, so that text found there later was put there later.
bool ClearForCopy();

}  // namespace verbatix
