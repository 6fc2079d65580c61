#include "hotkeys/foreground.h"

#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"

namespace verbatix {

void BringToFront(HWND window) {
    if (!IsWindow(window)) return;
    // The key itself: what this thread has read of the keyboard may be long ago.
    const bool altIsDown = GetAsyncKeyState(VK_MENU) < 0;
    const BYTE scanCode = static_cast<BYTE>(MapVirtualKeyW(VK_MENU, MAPVK_VK_TO_VSC));
    if (!altIsDown) keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY, kSyntheticInputTag);
    SetForegroundWindow(window);
    if (!altIsDown)
        keybd_event(VK_MENU, scanCode, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP, kSyntheticInputTag);
}

bool GiveForeground(HWND window) {
    BringToFront(window);
    for (int i = 0; i < 50 && GetForegroundWindow() != window; ++i) Pause(10);
    return GetForegroundWindow() == window;
}

void TakeAltStrokesOut() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_SYSKEYDOWN, WM_SYSKEYUP, PM_NOREMOVE) &&
           message.wParam == VK_MENU) {
        PeekMessageW(&message, nullptr, WM_SYSKEYDOWN, WM_SYSKEYUP, PM_REMOVE);
    }
}

void ForgetReleasedModifiers() {
    constexpr BYTE kIsDown = 0x80;
    BYTE state[256] = {};
    if (!GetKeyboardState(state)) return;
    for (const int key : {VK_SHIFT, VK_LSHIFT, VK_RSHIFT, VK_CONTROL, VK_LCONTROL, VK_RCONTROL, VK_MENU,
                          VK_LMENU, VK_RMENU, VK_LWIN, VK_RWIN}) {
        if (GetAsyncKeyState(key) >= 0) state[key] &= static_cast<BYTE>(~kIsDown);
    }
    SetKeyboardState(state);
}

KeptForeground::~KeptForeground() {
    if (IsWindow(window_) && GetForegroundWindow() != window_) SetForegroundWindow(window_);
}

void ShowBoxInFront(HWND owner, const std::wstring& text, const wchar_t* caption, UINT type) {
    const KeptForeground kept;
    // Topmost as well: where the system refuses the foreground, the box would lie behind everything and the
    // program would wait for an answer to it.
    MessageBoxW(owner, text.c_str(), caption, type | MB_SETFOREGROUND | MB_TOPMOST);
}

}  // namespace verbatix
