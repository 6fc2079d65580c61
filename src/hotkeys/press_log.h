// What became of the last presses of hotkeys, for when "it does not paste": times, hotkeys, entries by
// number, strokes and the reason for an end; never a text, a label or what was selected. In memory only.
// Main thread.
#pragma once

#include <windows.h>

#include <vector>

namespace verbatix {

enum class PressWay {
    kInsideHook,  // executed before the hook answered
    kAfterHook,   // executed from a posted message
    kMenu,        // asked for the menu
};

enum class PressEnd {
    kNotYet,
    kDone,
    kBusy,           // another entry was still running
    kMenuClosed,     // without a choice
    kMenuRefused,    // Windows did not give the menu the keyboard
    kClipboardBusy,  // the text could not be put on the clipboard
    kOtherWindow,    // another window was in front
    kPlaceClosed,    // the window of the press has gone
    kStartFailed,    // a program could not be started
};

struct LoggedPress {
    SYSTEMTIME at = {};  // local
    unsigned modifier = 0;
    unsigned key = 0;
    wchar_t program[32] = {};  // file name of the one in front, cut off
    PressWay way = PressWay::kInsideHook;
    int entry = -1;             // number of the one chosen from a menu; -1: none
    const wchar_t* kind = L"";  // of the entry's text, a constant
    unsigned strokes = 0;       // sent to the program, copies and pastes too
    unsigned copies = 0;
    unsigned pastes = 0;
    DWORD milliseconds = 0;  // that the execution took
    PressEnd end = PressEnd::kNotYet;
};

inline constexpr std::size_t kLoggedPresses = 200;

// Begins the record of a press; `foreground` is the window in front. One with an `end` of its own is
// complete, and the press before it goes on.
void BeginPress(unsigned modifier, unsigned key, HWND foreground, PressWay way,
                PressEnd end = PressEnd::kNotYet);

// What follows belongs to no press: an entry is tried out or chosen from the icon's menu.
void DetachPress();

// The record of the press that goes on, to be added to. Without one it is a record that nobody sees.
LoggedPress& CurrentPress();

// Ends that record, if nothing has ended it before.
void EndPress(PressEnd end);

// The records, oldest first, at most kLoggedPresses.
std::vector<LoggedPress> LoggedPresses();

}  // namespace verbatix
