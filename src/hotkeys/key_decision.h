// What the keyboard hook does with one key event, decided over values; keyboard_hook.h fetches the values
// and carries the decision out. Called for every key of the system, so a key that is on no hotkey costs one
// table look-up.
#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <vector>

#include "hotkeys/hotkey_tables.h"
#include "hotkeys/key_simulation.h"

namespace verbatix {

// Bits of the modifier state word, in the order of these keys: bit 0 is left Windows.
inline constexpr std::array<BYTE, 11> kStateWordKeys = {VK_LWIN,     VK_RWIN,     VK_LMENU,  VK_RMENU,
                                                        VK_RCONTROL, VK_LCONTROL, VK_LSHIFT, VK_RSHIFT,
                                                        VK_LBUTTON,  VK_MBUTTON,  VK_RBUTTON};

// The modifier code of exactly that state, or -1: with any further key down there is none.
int ModifierCodeOf(unsigned stateWord);

// A held key repeats, and its release follows; within so many milliseconds these are no new press.
inline constexpr ULONGLONG kRepeatGuardMilliseconds = 301;

// What the hook remembers from one key event to the next.
struct TriggerState {
    std::optional<ULONGLONG> lastTrigger;  // tick count; none before the first, so that none is swallowed
    bool busy = false;                     // an entry executed from the hook is running
    int pendingRelease = -1;               // modifier code whose keys go up at the next event, or -1
};

enum class KeyAction {
    PassOn,            // to the next hook
    PassAfterRelease,  // let the keys of the pending-release code go, then let the event through
    Swallow,           // nothing else happens
    TriggerNothing,    // a trigger (time, key release) whose entry is not run, because one is running
    TriggerEntry,      // a trigger that executes the entry's text
    TriggerMenu,       // a trigger that asks for the menu of the hotkey's entries
};

struct KeyDecision {
    KeyAction action = KeyAction::PassOn;
    unsigned modifier = 0;               // of a trigger
    const std::wstring* text = nullptr;  // of TriggerEntry: the slot in the tables
};

// `readStateWord` is called only for a key that is on some hotkey; `now` is a tick count in milliseconds.
KeyDecision DecideKey(const KBDLLHOOKSTRUCT& event, const HotkeyTables& tables,
                      const DisabledHotkeys& disabled, const TriggerState& state,
                      unsigned (*readStateWord)(), ULONGLONG now);

// The key-up events that the event after a trigger sends for the trigger's modifier code.
std::vector<KeyStroke> PendingReleaseStrokes(int modifier);

}  // namespace verbatix
