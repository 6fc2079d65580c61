// The field that takes a hotkey as it is pressed: a control of its own, which shows the hotkey that there
// is and, while it has the keyboard, asks for another one. The keyboard hook hands it the keys, so that
// none of them does what it does elsewhere. UI thread only.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// What was pressed: a key and the state word of what was held with it.
struct PressedKeys {
    DWORD key = 0;
    unsigned held = 0;
};

// What the field asks of whoever it belongs to; null functions are left out.
struct HotkeyFieldClient {
    // Takes the hotkey over and shows it by ShowHotkeyInField. False when it is none; the old one stays.
    bool (*take)(const PressedKeys& pressed) = nullptr;
    void (*clear)() = nullptr;
    void (*askingChanged)(bool asks) = nullptr;  // the field got the keyboard, or lost it
};

// Makes the control's class known, before the dialog is created. False when Windows refuses.
bool RegisterHotkeyField();

void SetHotkeyFieldClient(HWND field, const HotkeyFieldClient& client);

// The hotkey, as it is shown; empty for none.
void ShowHotkeyInField(HWND field, const std::wstring& hotkey);

// Says everything anew in the language that is active now.
void RelabelHotkeyField(HWND field);

}  // namespace verbatix
