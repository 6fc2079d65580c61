// The list of everything that can be inserted into an entry's text, each row with what it gives today and a
// sentence. Asked for, it has a field to search in; opened by "%" in the text it is narrowed by what is
// typed on, never takes the keyboard from the text, and goes when it is ignored. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// With the field: below that button of the main dialog, or at the text's caret.
void ShowCodesBelow(HWND button);
void ShowCodesAtCaret();

// Looks at every message before anybody else does. True when it was for the list.
bool HandleCodeListMessage(const MSG& message);

// The text has changed: opens the list when "%" was typed, and narrows it by what follows. True while the
// list is open.
bool OfferCodes();

// Closes the list that "%" has opened.
void CloseCodes();

}  // namespace verbatix
