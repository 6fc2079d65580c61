// The editor's controls of a hotkey: the field that takes one as it is pressed, the two drop-downs that
// spell it out, and what there is to say of the hotkey they show. What the user chooses is told to whoever
// shows an entry in them. UI thread only.
#pragma once

#include <windows.h>

#include <optional>

#include "ui/editor/hotkey_verdict.h"

namespace verbatix {

// Fill a drop-down with all modifiers, by their codes, or with the keys that are offered.
void FillWithModifiers(HWND box);
void FillWithKeys(HWND box);

// Shows the key that was chosen from the drop-down: it tells of the choice before it shows it.
void ShowChosenKey(HWND box);

// What the controls tell. No function may be null.
struct HotkeyControlsClient {
    // Another hotkey is chosen, to be kept soon.
    void (*changed)() = nullptr;
    // A key's name is being typed: "F1" may be on the way to "F12".
    void (*edited)() = nullptr;
    // The drop-down of keys has lost the keyboard, and a whole key stands in it.
    void (*settled)() = nullptr;
    // VerdictOnHotkey may say something else.
    void (*verdictChanged)() = nullptr;
};

// Fills the drop-down of keys. Once, before anything else of this module.
void SetUpHotkeyControls(HWND dialog, const HotkeyControlsClient& client);

// Shows all of it in the language that is active now.
void RelabelHotkeyControls();

// Shows the hotkey of an entry, whatever was being typed or refused. A modifier beyond the table shows as
// the first one.
void ShowHotkey(unsigned key, unsigned modifier);

// Shows that there is no entry.
void ShowNoHotkey();

// The key that is chosen, as the record holds it; nothing while a name stands there that no key has, or
// none of this keyboard.
std::optional<unsigned> ChosenKey();
unsigned ChosenModifier();

// Whether one of the controls has the keyboard.
bool ChoosesHotkey();

// On what the controls show, for the entry at that position.
HotkeyVerdict VerdictOnHotkey(const EntryList& list, int position);

// What the system knows of a hotkey that is being chosen.
const KeyFacts& FactsOfHotkey(unsigned key, unsigned modifier);

// A notification of one of the drop-downs. False when `control` is none of them.
bool OnHotkeyNotification(int control, int code);

}  // namespace verbatix
