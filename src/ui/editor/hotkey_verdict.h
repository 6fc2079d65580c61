// What there is to say of a hotkey before it is used: whether it can be one, what it would take away, and
// with which entry it shares a menu. Pure, apart from the texts, which follow the user's language.
#pragma once

#include <cstddef>
#include <string>

#include "store/entry.h"

namespace verbatix {

// What only the system knows of a key.
struct KeyFacts {
    std::wstring label = {};  // what stands on it
    std::wstring typed = {};  // by it with the modifier, in a layout of the user; empty: nothing
    bool isTaken = false;     // with the Windows key, by Windows or another program
    bool isOff = false;       // by the settings file
};

// A key as the user reads it: its name and, where that is not what stands on the key, what does.
std::wstring FormatKeyForReading(unsigned key, const std::wstring& label);

// The same for a hotkey; empty without a key.
std::wstring FormatHotkeyForReading(unsigned key, unsigned modifier, const std::wstring& label);

// What is held, by a state word, as the user calls it: the modifier's name where it is one that hotkeys
// have. And the same with a key.
std::wstring FormatHeldKeys(unsigned held);
std::wstring FormatPressedKeys(unsigned key, unsigned held, const std::wstring& label);

// Why what was pressed cannot be a hotkey; empty: it can. `held` is a state word.
std::wstring WhyNoHotkey(unsigned key, unsigned held, const std::wstring& label);

struct HotkeyVerdict {
    std::wstring text = {};     // for one line
    std::wstring more = {};     // that does not fit into it; empty: nothing
    std::size_t linkStart = 0;  // the name of the other entry in the text
    std::size_t linkLength = 0;
    int other = -1;  // its position
};

// The verdict on the hotkey of the entry at `position`. A hotkey of which there is nothing to say is told
// to be free with `sayFree`; one without a key gets no verdict.
HotkeyVerdict JudgeHotkey(const EntryList& list, int position, unsigned key, unsigned modifier,
                          const KeyFacts& facts, bool sayFree);

}  // namespace verbatix
