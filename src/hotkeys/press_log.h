// What became of the last presses of hotkeys, for when "it does not paste": times, hotkeys, entries by
// number, strokes and the reason for an end; never a text, a label or what was selected. In memory only.
// Main thread.
#pragma once

#include <windows.h>

#include <vector>

namespace verbatix {

enum class PressWay {
    kNone,        // nothing was executed
    kInsideHook,  // executed before the hook answered
    kAfterHook,   // executed from a posted message
    kMenu,        // asked for the menu
};

enum class PressEnd {
    kNotYet,
    kDone,
    kBusy,           // another entry was still running, or a menu was open
    kTooSoon,        // after the press before it
    kPausedInFront,  // the user wants no hotkeys in the program in front, which got the key
    kSwitchedOff,    // the user has switched that hotkey off
    kMenuClosed,     // without the choice of an entry
    kClosedMenu,     // it closed the menu that the same hotkey had opened
    kMenuTooLong,    // more rows than a menu may have
    kMenuRefused,    // Windows did not give the menu the keyboard
    kEntryGone,      // the chosen entry is no longer there
    kEdited,         // the chosen entry was opened to be edited
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
    PressWay way = PressWay::kNone;
    int entry = -1;             // number of the one chosen from a menu; -1: none
    const wchar_t* kind = L"";  // of the entry's text, a constant
    unsigned strokes = 0;       // sent to the program, copies and pastes too
    unsigned copies = 0;
    unsigned pastes = 0;
    DWORD milliseconds = 0;  // that the execution took
    PressEnd end = PressEnd::kNotYet;
};

inline constexpr std::size_t kLoggedPresses = 200;

// Which press since the start.
using PressNumber = std::size_t;
inline constexpr PressNumber kNoPress = static_cast<PressNumber>(-1);

// Begins the record of a press; `foreground` is the window in front. The press that goes on stays the one
// that it was: what is pressed meanwhile may be refused.
PressNumber BeginPress(unsigned modifier, unsigned key, HWND foreground, PressWay way);

// What follows belongs to that press. kNoPress: to none, as an entry is tried out or chosen from the icon's
// menu.
void ContinuePress(PressNumber number);
PressNumber CurrentPressNumber();

// For a step that comes by itself, maybe in the middle of another press, which goes on afterwards.
class PressInterlude {
  public:
    explicit PressInterlude(PressNumber number) : before_(CurrentPressNumber()) { ContinuePress(number); }
    ~PressInterlude() { ContinuePress(before_); }
    PressInterlude(const PressInterlude&) = delete;
    PressInterlude& operator=(const PressInterlude&) = delete;

  private:
    PressNumber before_;
};

// The record of that press, to be added to. Of none, or of one so long ago that it has gone, it is a record
// that nobody sees.
LoggedPress& PressOf(PressNumber number);
LoggedPress& CurrentPress();

// Ends a record. What ended it before stays, unless it was done: a step that comes later may fail.
void EndPress(PressNumber number, PressEnd end);
void EndPress(PressEnd end);  // of the press that goes on

// The records, oldest first, at most kLoggedPresses.
std::vector<LoggedPress> LoggedPresses();

}  // namespace verbatix
