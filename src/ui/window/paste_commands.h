// Where hotkeys and the paste menu meet the executor.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Executes an entry for the keyboard hook, aimed at the window that had the keyboard at the press.
void ExecuteFromHotkey(const std::wstring& text);

// Whether that execution is over well before the hook has to answer.
bool FitsInsideHook(const std::wstring& text, DWORD limit);

// Shows the menu of the hotkey that the hook has noted, and carries the choice out.
void ShowPasteMenu();

}  // namespace verbatix
