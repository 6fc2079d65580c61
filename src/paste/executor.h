// Carrying out an entry: what happens between a hotkey and the text in the foreground program. Main thread
// only; the waits block it on purpose, to give the foreground program time. The executor never activates a
// window: the result goes to whatever window has the keyboard focus.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// What the executor works with from above, set once at start and, for the target, at each hotkey.
struct ExecutorClient {
    HWND mainWindow = nullptr;    // gets the posted slot commands and owns the timers
    HWND targetWindow = nullptr;  // had the keyboard when the hotkey was pressed; for built-in commands
};

extern ExecutorClient executorClient;

// Carries out the entry text as it is stored.
void ExecuteEntry(const std::wstring& text);

// The last step before the paste stroke: line-break escapes become line breaks, and the text goes onto the
// clipboard. An empty text leaves the clipboard alone.
void FinishForDelivery(const std::wstring& text);

// Delivers an expanded text: onto the clipboard, and the paste stroke 20 ms later.
void DeliverText(const std::wstring& text);

}  // namespace verbatix
