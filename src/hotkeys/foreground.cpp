#include "hotkeys/foreground.h"

namespace verbatix {

void BringToFront(HWND window) {
    if (!IsWindow(window)) return;
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    const bool altIsDown = (keys[VK_MENU] & 0x80) != 0;
    const BYTE scanCode = static_cast<BYTE>(MapVirtualKeyW(VK_MENU, MAPVK_VK_TO_VSC));
    if (!altIsDown) keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY, 0);
    SetForegroundWindow(window);
    if (!altIsDown) keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP, 0);
}

}  // namespace verbatix
