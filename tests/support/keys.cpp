#include "support/keys.h"

#include <iterator>

namespace verbatix::test {

static DWORD ExtendedFlag(BYTE virtualKey) {
    switch (virtualKey) {
        case VK_RCONTROL:
        case VK_RMENU:
        case VK_LWIN:
        case VK_RWIN:
        case VK_INSERT:
        case VK_DELETE:
        case VK_HOME:
        case VK_END:
        case VK_PRIOR:
        case VK_NEXT:
        case VK_LEFT:
        case VK_UP:
        case VK_RIGHT:
        case VK_DOWN:
        case VK_DIVIDE:
        case VK_NUMLOCK: return KEYEVENTF_EXTENDEDKEY;
        default: return 0;
    }
}

static void Play(BYTE virtualKey, DWORD flags) {
    keybd_event(virtualKey, static_cast<BYTE>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC)),
                flags | ExtendedFlag(virtualKey), 0);
}

void PressKeyDown(BYTE virtualKey) {
    Play(virtualKey, 0);
}

void LetKeyUp(BYTE virtualKey) {
    Play(virtualKey, KEYEVENTF_KEYUP);
}

void PlayStroke(std::initializer_list<BYTE> held, BYTE key) {
    for (const BYTE modifier : held) PressKeyDown(modifier);
    PressKeyDown(key);
    LetKeyUp(key);
    for (auto modifier = std::rbegin(held); modifier != std::rend(held); ++modifier) LetKeyUp(*modifier);
}

bool AnyModifierDown() {
    for (const int key :
         {VK_LWIN, VK_RWIN, VK_LMENU, VK_RMENU, VK_MENU, VK_CONTROL, VK_RCONTROL, VK_LCONTROL, VK_SHIFT,
          VK_LSHIFT, VK_RSHIFT, VK_LBUTTON, VK_MBUTTON, VK_RBUTTON}) {
        if (GetAsyncKeyState(key) & 0x8000) return true;
    }
    return false;
}

}  // namespace verbatix::test
