#include "hotkeys/hotkey_simulation.h"

#include "base/language.h"

namespace verbatix {

static constexpr int kTrialHotkeyId = 444;

static BYTE ModifierKey(unsigned modifier) {
    switch (modifier) {
        case 1: return VK_RWIN;
        case 3: return VK_RMENU;
        case 4: return VK_LCONTROL;
        case 5: return VK_LMENU;
        case 6: return VK_RCONTROL;
        default: return VK_LWIN;  // also for the mouse codes: a pressed button would click something
    }
}

std::vector<KeyStroke> SimulatedStrokes(unsigned modifier, unsigned key) {
    const BYTE code = static_cast<BYTE>(key);
    if (modifier == 2) {
        // Left Ctrl goes up twice and left Alt not at all. That is meant so: the hook, which sees the
        // hotkey first, lets left Alt go itself, when it triggers and once more at the next event.
        return {{VK_LMENU, 0},
                {VK_LCONTROL, 0},
                {code, 0},
                {code, KEYEVENTF_KEYUP},
                {VK_LCONTROL, KEYEVENTF_KEYUP},
                {VK_LCONTROL, KEYEVENTF_KEYUP}};
    }
    const BYTE held = ModifierKey(modifier);
    return {{held, 0}, {code, 0}, {code, KEYEVENTF_KEYUP}, {held, KEYEVENTF_KEYUP}};
}

bool SimulateHotkey(unsigned modifier, unsigned key, bool test, HWND window) {
    // Untagged, so that the hook takes them for the user's; the virtual-key code stands in as scan code.
    for (const KeyStroke stroke : SimulatedStrokes(modifier, key)) {
        keybd_event(stroke.key, stroke.key, stroke.flags, 0);
    }
    if (test && (modifier < 1 || modifier > 6)) IsWinHotkeyTaken(window, key, true);
    return true;
}

bool IsWinHotkeyTaken(HWND window, unsigned key, bool report) {
    if (RegisterHotKey(window, kTrialHotkeyId, MOD_WIN, key & 0xff)) {
        UnregisterHotKey(window, kTrialHotkeyId);
        return false;
    }
    if (report) MessageBoxW(window, LanguageText(text::kHotkeyTaken).c_str(), L"", MB_OK);
    return true;
}

}  // namespace verbatix
