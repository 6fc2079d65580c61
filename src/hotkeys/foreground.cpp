#include "hotkeys/foreground.h"

#include "hotkeys/key_simulation.h"

namespace verbatix {

void BringToFront(HWND window) {
    if (!IsWindow(window)) return;
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    const bool altIsDown = (keys[VK_MENU] & 0x80) != 0;
    const BYTE scanCode = static_cast<BYTE>(MapVirtualKeyW(VK_MENU, MAPVK_VK_TO_VSC));
    if (!altIsDown) keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY, kSyntheticInputTag);
    SetForegroundWindow(window);
    if (!altIsDown)
        keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP, kSyntheticInputTag);
}

}  // namespace verbatix
