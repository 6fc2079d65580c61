#include "hotkeys/key_simulation.h"

namespace verbatix {

std::vector<KeyStroke> ReleaseStrokes(const HeldKeys& held) {
    std::vector<KeyStroke> strokes;
    bool altHeld = false;
    for (std::size_t i = 0; i < held.size(); ++i) {
        if (!held[i]) continue;
        if (kReleasableKeys[i] == VK_MENU) {
            altHeld = true;
        } else {
            // The mouse buttons go up as if they were keys: the key state is what must change, no
            // program is to see the end of a click.
            strokes.push_back({kReleasableKeys[i], KEYEVENTF_KEYUP});
        }
    }
    // Left Alt went up above; the neutral Alt comes last and extended, which reaches the right one too.
    if (altHeld) strokes.push_back({VK_MENU, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP});
    return strokes;
}

void SendTagged(KeyStroke stroke) {
    keybd_event(stroke.key, static_cast<BYTE>(MapVirtualKeyW(stroke.key, MAPVK_VK_TO_VSC)), stroke.flags,
                kSyntheticInputTag);
}

void ReleaseHeldModifiers(HeldKeys& held) {
    for (std::size_t i = 0; i < held.size(); ++i) held[i] = GetKeyState(kReleasableKeys[i]) < 0;
    for (const KeyStroke stroke : ReleaseStrokes(held)) SendTagged(stroke);
}

void PressKey(BYTE key) {
    HeldKeys held;
    ReleaseHeldModifiers(held);
    SendTagged({key, 0});
    SendTagged({key, KEYEVENTF_KEYUP});
}

static void SendControlStroke(BYTE key) {
    SendTagged({VK_LCONTROL, 0});
    SendTagged({key, 0});
    SendTagged({key, KEYEVENTF_KEYUP});
    SendTagged({VK_LCONTROL, KEYEVENTF_KEYUP});
}

void SendCopy() {
    HeldKeys held;
    ReleaseHeldModifiers(held);
    SendControlStroke('C');
}

void SendPaste(DWORD milliseconds) {
    HeldKeys held;
    ReleaseHeldModifiers(held);
    Sleep(milliseconds);
    SendControlStroke('V');
}

}  // namespace verbatix
