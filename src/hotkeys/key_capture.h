// A hotkey that is taken as it is pressed: what becomes of one key event while a field asks for one. Pure;
// keyboard_hook.h hands the events over and posts what comes of them to the field.
//
// What the field takes reaches nobody else, so that no hotkey runs, no Start menu opens and no window
// closes. A key that somebody else saw go down comes up for him too: none is left down in the system.
#pragma once

#include <windows.h>

#include <bitset>

#include "hotkeys/hotkey_tables.h"

namespace verbatix {

struct CaptureState {
    unsigned held = 0;              // modifier keys, Shift among them, as bits of the state word
    std::bitset<kKeyCount> taken;   // pressed since: their repeats and their release are the field's
    std::bitset<kKeyCount> before;  // down when it began
    bool controlIsAltGrs = false;   // the left Ctrl that is held was sent by the layout's Alt-Gr
};

enum class CaptureAction : BYTE {
    kNothing,
    kHeld,         // a modifier went down
    kReleased,     // something came up
    kCombination,  // the key, with what is held
    kClear,        // Backspace or Delete alone
    kLeave,        // Escape alone
};

struct CaptureStep {
    bool taken = false;  // nobody else gets the event
    CaptureAction action = CaptureAction::kNothing;
};

// The bit of a modifier key in the state word; 0 for any other key and for the mouse buttons.
unsigned ModifierKeyBit(DWORD key);

// A press that the field does not get, because a menu or another window has the keyboard: whoever sees the
// key go down sees it come up, and its repeats are no wish for a hotkey.
void LeaveToOthers(const KBDLLHOOKSTRUCT& event, CaptureState& state);

// Decides on one event. Tab and Shift+Tab alone, and Shift itself, are left to the dialog.
CaptureStep DecideCapture(const KBDLLHOOKSTRUCT& event, bool mouseButtonHeld, CaptureState& state);

}  // namespace verbatix
