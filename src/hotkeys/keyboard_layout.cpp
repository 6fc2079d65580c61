#include "hotkeys/keyboard_layout.h"

#include <windows.h>

#include <algorithm>
#include <array>

#include "hotkeys/key_capture.h"

namespace verbatix {

std::wstring KeyLabel(unsigned key) {
    key &= 0xff;
    constexpr UINT kDeadKeyBit = 0x80000000;
    const auto letter = static_cast<wchar_t>(MapVirtualKeyW(key, MAPVK_VK_TO_CHAR) & ~kDeadKeyBit);
    if (letter > L' ') return std::wstring(1, letter);
    // The keys between main block and number pad share their codes with the latter's.
    const bool isExtended = (key >= VK_PRIOR && key <= VK_HELP) || key == VK_APPS || key == VK_NUMLOCK;
    const UINT scanCode = MapVirtualKeyW(key, MAPVK_VK_TO_VSC);
    const UINT place = (scanCode & 0xff) << 16 | (isExtended ? 1U << 24 : 0U);
    std::array<wchar_t, 64> name = {};
    if (scanCode == 0) return {};
    const int length =
        GetKeyNameTextW(static_cast<LONG>(place), name.data(), static_cast<int>(name.size()));
    return std::wstring(name.data(), static_cast<std::size_t>(std::max(length, 0)));
}

bool IsOnKeyboard(unsigned key) {
    return !ModifierKeyBit(key & 0xff) && MapVirtualKeyW(key & 0xff, MAPVK_VK_TO_VSC) != 0;
}

static std::wstring TypedInLayout(unsigned key, HKL layout) {
    // Without this bit the call would take a dead key for pressed, and the next letter would get its
    // accent; systems before Windows 10 do so all the same, so that it is pressed a second time there.
    constexpr UINT kLeaveStateAlone = 4;
    std::array<BYTE, 256> state = {};
    for (const int held : {VK_CONTROL, VK_LCONTROL, VK_MENU, VK_RMENU}) {
        state[static_cast<std::size_t>(held)] = 0x80;
    }
    std::array<wchar_t, 8> typed = {};
    const UINT scanCode = MapVirtualKeyExW(key, MAPVK_VK_TO_VSC, layout);
    const auto ask = [&](std::array<wchar_t, 8>& buffer) {
        return ToUnicodeEx(key, scanCode, state.data(), buffer.data(), static_cast<int>(buffer.size()) - 1,
                           kLeaveStateAlone, layout);
    };
    const int count = ask(typed);
    std::array<wchar_t, 8> unused = {};
    if (count < 0) ask(unused);
    const bool isVisible = typed[0] > L' ' && !(typed[0] >= 0x7f && typed[0] <= 0xa0);
    if (count == 0 || !isVisible) return {};
    return std::wstring(typed.data(), static_cast<std::size_t>(std::clamp(count, 1, 7)));
}

std::wstring TypedWithCtrlAlt(unsigned key) {
    std::array<HKL, 32> layouts = {};
    const int count = GetKeyboardLayoutList(static_cast<int>(layouts.size()), layouts.data());
    for (int i = 0; i < count; ++i) {
        std::wstring typed = TypedInLayout(key & 0xff, layouts[static_cast<std::size_t>(i)]);
        if (!typed.empty()) return typed;
    }
    return {};
}

}  // namespace verbatix
