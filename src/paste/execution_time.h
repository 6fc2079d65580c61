// How long an entry will take, told from its text. Windows gives a keyboard hook little time, and an entry
// that takes longer must not be executed inside of it. Pure.
#pragma once

#include <windows.h>

#include <optional>
#include <string_view>

namespace verbatix {

// What the text does not tell.
struct ExecutionFacts {
    bool savesClipboard = false;   // the user's clipboard is saved first: whatever is on it
    bool clipboardIsBusy = false;  // another program has it open, or hangs and owns it
    bool targetIsOurs = false;     // a window of the hook's thread, which takes no stroke meanwhile
};

// The milliseconds that the waits and strokes of the entry add up to. Nothing where that depends on
// somebody else: a program that is started or asked for its clipboard, a box that is answered, the size of
// a picture.
std::optional<DWORD> EstimateExecution(std::wstring_view text, const ExecutionFacts& facts);

// Whether that leaves time enough for a machine that is busy, where the hook has to answer after `limit`
// milliseconds.
bool FitsWell(std::optional<DWORD> estimate, DWORD limit);

}  // namespace verbatix
