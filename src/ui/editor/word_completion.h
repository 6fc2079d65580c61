// Words suggested while the user types in the editor's text, in a small list that never takes the focus.
// Tab takes the first or the chosen one; Enter takes one only after the user has moved into the list with
// an arrow key; Escape and whatever else is done close it. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Switches the option off for this run when there are no words to suggest.
void StartWordCompletion();

// The menu's switch. Without words the user is told where to put them.
void SwitchWordCompletion();

// Looks at every message before anybody else does. True when it was a key or a click for the list.
bool HandleCompletionMessage(const MSG& message);

// The text has changed: suggests when it was typed.
void OnTextTyped();

void CloseSuggestions();

}  // namespace verbatix
