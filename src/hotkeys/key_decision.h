// What the keyboard hook does with one key event, decided over values; keyboard_hook.h fetches the values
// and carries the decision out. Called for every key of the system, so a key that is on no hotkey costs one
// table look-up.
#pragma once

#include <windows.h>

#include <array>
#include <bitset>
#include <optional>
#include <vector>

#include "hotkeys/hotkey_tables.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/press_log.h"

namespace verbatix {

// Bits of the modifier state word, in the order of these keys: bit 0 is left Windows.
inline constexpr std::array<BYTE, 11> kStateWordKeys = {VK_LWIN,     VK_RWIN,     VK_LMENU,  VK_RMENU,
                                                        VK_RCONTROL, VK_LCONTROL, VK_LSHIFT, VK_RSHIFT,
                                                        VK_LBUTTON,  VK_MBUTTON,  VK_RBUTTON};

// The modifier code of exactly that state, or -1: with any further key down there is none.
int ModifierCodeOf(unsigned stateWord);

// A held key repeats, and its release follows; within so many milliseconds these are no new press.
inline constexpr ULONGLONG kRepeatGuardMilliseconds = 301;

// The keys whose press the hook took for itself: their repeats and their release are its own as well, by
// whatever modifiers they are accompanied, until they come up. An event does not say whether it is a press
// or a repeat, and a swallowed key never shows as down, so that a press after a missed release (the screen
// was locked, the hook was gone) is told from a repeat by what a keyboard does: it repeats the last key
// that went down, and does not pause.
class ClaimedKeys {
  public:
    void Claim(DWORD key, ULONGLONG now);
    // Whether that event of the key is still part of the press that was claimed. The claim ends with the
    // key's release, and with a press.
    bool Takes(DWORD key, bool up, ULONGLONG now);
    // Whether the program in front has got the press all the same, because the hook took too long over it:
    // then its release is that program's, and the key would else stay down in the system.
    void SetLost(DWORD key, bool lost) { lost_.set(key, lost); }
    // A modifier went down: no key that was held before repeats any more.
    void OnModifierPressed() { repeating_.reset(); }
    // The time since the last event does not count: nobody could see one.
    void OnBlindTime(ULONGLONG now);
    void Clear() { claimed_.reset(); }
    bool Any() const { return claimed_.any(); }

  private:
    std::bitset<kKeyCount> claimed_;
    std::bitset<kKeyCount> repeating_;
    std::bitset<kKeyCount> lost_;
    std::array<ULONGLONG, kKeyCount> seenAt_ = {};
};

// The longest pause between two repeats of a held key, the one before the first included, that keyboards
// can be set to.
inline constexpr ULONGLONG kLongestRepeatMilliseconds = 2500;

// What the hook remembers from one key event to the next.
struct TriggerState {
    ClaimedKeys claims;
    std::optional<ULONGLONG> lastTrigger;  // tick count; none before the first, so that none is swallowed
    bool busy = false;                     // an entry's hotkey was pressed, and it is not done yet
    int pendingRelease = -1;               // modifier code whose keys go up at the next event, or -1
};

enum class KeyAction {
    PassOn,               // to the next hook
    PassAfterRelease,     // let the keys of the pending-release code go, then let the event through
    SwallowAfterRelease,  // the same, but nobody gets the event
    Swallow,              // nothing else happens
    TriggerNothing,       // a trigger (time, key release) whose entry is not run, because one is running
    TriggerEntry,         // a trigger that executes the entry's text
    TriggerMenu,          // a trigger that asks for the menu of the hotkey's entries
};

struct KeyDecision {
    KeyAction action = KeyAction::PassOn;
    unsigned modifier = 0;               // of the hotkey that was pressed
    const std::wstring* text = nullptr;  // of TriggerEntry: the slot in the tables
    // Why the press of a hotkey does nothing; kNotYet where it is none, or does something.
    PressEnd refusal = PressEnd::kNotYet;
};

// How to ask for the state of the keys before the event. Asked only for a key that is on some hotkey.
struct KeyStateReader {
    unsigned (*stateWord)() = nullptr;
    bool (*isDown)(DWORD key) = nullptr;
    // Whether hotkeys are paused in the program in front. Asked only for a press that is a hotkey, which
    // then goes on to that program like any other; null: never.
    bool (*isPausedInFront)() = nullptr;
};

// Decides on one event and remembers in the claims whose it is; `now` is a tick count in milliseconds. Only
// a press triggers: neither a release nor a repeat of a key that was down before its modifier.
KeyDecision DecideKey(const KBDLLHOOKSTRUCT& event, const HotkeyTables& tables,
                      const DisabledHotkeys& disabled, TriggerState& state, const KeyStateReader& keys,
                      ULONGLONG now);

// The key-up events that the event after a trigger sends for the trigger's modifier code.
std::vector<KeyStroke> PendingReleaseStrokes(int modifier);

}  // namespace verbatix
