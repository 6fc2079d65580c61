// Whether the program in front has got to a stroke that was sent to it. A stroke only waits in its queue
// at first, and a program that is busy reads the clipboard when it comes to the stroke: what lies there by
// then is what it pastes.
#pragma once

#include <windows.h>

namespace verbatix {

// Remembers the window that has the keyboard now as the one that a stroke was sent to.
void NoteStroke();

// Waits until that window has had the time for the stroke, at most so many milliseconds. True when it has,
// when there is no such window, or when it cannot be asked; after that there is nothing to wait for until
// the next NoteStroke. Messages that are sent to this thread are served meanwhile.
bool AwaitStroke(DWORD milliseconds);

// The same with the time that a stroke gets beyond the fixed waits: 500 ms, or inside the hook,
// which has to answer the system, what is left of patienceInsideHook. A program that needs longer gets what
// comes then.
void AwaitLastStroke();

// Waits after a copy stroke: at least that long, and until the program has got to it. One that comes to it
// later would copy over what has been put on the clipboard since, the user's own content for one.
void AwaitCopy(DWORD milliseconds);

// Whether the window takes its messages, asked with that time limit.
bool Answers(HWND window, DWORD milliseconds);

}  // namespace verbatix
