// A user's key strokes: keybd_event with the scan code and extended flag of a real keyboard and without
// the program's own tag. Play them from a thread that owns neither the hook nor the target window:
// keybd_event returns only after the hook has answered.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <iterator>
#include <vector>

#include "support/process.h"
#include "support/wait.h"

namespace verbatix::test {

inline void PlayKey(BYTE key, DWORD flags) {
    for (const int extended :
         {VK_RCONTROL, VK_RMENU, VK_LWIN, VK_RWIN, VK_INSERT, VK_DELETE, VK_HOME, VK_END, VK_PRIOR, VK_NEXT,
          VK_LEFT, VK_UP, VK_RIGHT, VK_DOWN, VK_DIVIDE, VK_NUMLOCK}) {
        if (key == extended) flags |= KEYEVENTF_EXTENDEDKEY;
    }
    keybd_event(key, static_cast<BYTE>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)), flags, 0);
}

inline void PressKeyDown(BYTE key) {
    PlayKey(key, 0);
}

inline void LetKeyUp(BYTE key) {
    PlayKey(key, KEYEVENTF_KEYUP);
}

// Presses a modifier, again where it is not down then, as a held key repeats: a pointer that comes into a
// window makes the bench take all modifiers for released.
inline void HoldDown(BYTE modifier) {
    for (int times = 0; times < 5; ++times) {
        PressKeyDown(modifier);
        if (GetAsyncKeyState(modifier) < 0) return;
    }
}

// Holds modifiers down, as long as a hand does before the key comes, and until all have stayed down so
// long. It is the program in front that reads the keyboard anew; it has done so once it answers. False when
// they never stay down.
[[nodiscard]] inline bool Hold(const std::vector<BYTE>& modifiers, int attempts = 50) {
    constexpr DWORD kMilliseconds = 60;
    constexpr int kAnswers = 3;
    const auto isDown = [](BYTE modifier) { return GetAsyncKeyState(modifier) < 0; };
    for (; attempts > 0; --attempts) {
        for (const BYTE modifier : modifiers) {
            if (!isDown(modifier)) HoldDown(modifier);
        }
        for (int answers = 0; answers < kAnswers; ++answers) {
            SendMessageTimeoutW(GetForegroundWindow(), WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 2000, nullptr);
            Linger(kMilliseconds / kAnswers);
        }
        if (std::all_of(modifiers.begin(), modifiers.end(), isDown)) return true;
    }
    return false;
}

// Whether a modifier that is held stays down for a while: see SettlesInFront.
inline bool KeepsModifiers() {
    constexpr BYTE kHarmless = VK_LSHIFT;
    const bool isDown = Hold({kHarmless}, 1);
    LetKeyUp(kHarmless);
    return isDown;
}

// Waits until strokes arrive in a window of another program: it is in front, has the keyboard, and
// modifiers stay down. A window that comes to the front, or under the mouse, makes the bench read the real
// keyboard, which has no key down, some time later. False when that takes too long.
inline bool SettlesInFront(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const bool settles = WaitFor(
        [&] {
            return GetForegroundWindow() == window &&
                   GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) && info.hwndFocus &&
                   KeepsModifiers();
        },
        20000);
    if (!settles) {
        std::printf("%ls does not settle: %ls is in front, %ls has the keyboard there\n",
                    NameOf(window).c_str(), NameOf(GetForegroundWindow()).c_str(),
                    NameOf(info.hwndFocus).c_str());
    }
    return settles;
}

// Holds `held` down in that order, strokes `key`, lets `held` up in reverse order.
inline void PlayStroke(std::initializer_list<BYTE> held, BYTE key) {
    if (held.size() == 0 || Hold(held)) {
        PressKeyDown(key);
        LetKeyUp(key);
    } else {
        std::printf("modifiers do not stay down over %ls\n", NameOf(GetForegroundWindow()).c_str());
    }
    for (auto modifier = std::rbegin(held); modifier != std::rend(held); ++modifier) LetKeyUp(*modifier);
}

// Whether the system believes a modifier or mouse button to be down; for showing that none was left so.
inline bool AnyModifierDown() {
    const auto keys = {VK_LWIN,     VK_RWIN,  VK_LMENU,  VK_RMENU,  VK_MENU,    VK_CONTROL, VK_RCONTROL,
                       VK_LCONTROL, VK_SHIFT, VK_LSHIFT, VK_RSHIFT, VK_LBUTTON, VK_MBUTTON, VK_RBUTTON};
    return std::any_of(keys.begin(), keys.end(), [](int key) { return GetAsyncKeyState(key) < 0; });
}

}  // namespace verbatix::test
