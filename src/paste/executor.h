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
    // Was in front when the hotkey was pressed, and has to be still when the first stroke of the next
    // execution goes out; null: no matter. For one execution.
    HWND pressWindow = nullptr;
};

extern ExecutorClient executorClient;

// Carries out the entry text as it is stored: first as a command; a text that is none is expanded, its key
// tokens are played, and what remains is pasted. With "restore_old_clipboard" on, the user's clipboard is
// saved before and given back 200 ms later by OnRestoreTimer.
void ExecuteEntry(const std::wstring& text);

// Starts the 200 ms after which the user's clipboard is given back.
void RestoreLater();

// Tells the user, at the caret, when the strokes since the last AimStrokes have missed their window, and
// aims at nothing any more. Returns whether they have.
bool TellMissedStrokes();

// Carries out a text that begins with a command. False when it does not.
bool ExecuteCommandPrefixes(const std::wstring& text);

// Delivers an expanded text: onto the clipboard, and the paste stroke 20 ms later. DeliverInto does so into
// the window that has to be in front, and tells the user when it is not.
void DeliverText(const std::wstring& text);
void DeliverInto(const std::wstring& text, HWND window);

// The steps that follow later, by timer: TIMER_RESTORE_CLIPBOARD, TIMER_CPY_COPY, TIMER_CPY_LAUNCH. The
// timer has been killed by the caller. The clipboard is given back when the clipboard is to be had, no
// "cpy:" command is still to copy, and the program that was pasted into has come to the stroke; that one is
// waited for up to 10 s. Until then the timer is started anew.
void OnRestoreTimer();
void OnCpyCopyTimer();
void OnCpyLaunchTimer();

}  // namespace verbatix
