#include "paste/steps/type_text.h"

#include <string>

#include "hotkeys/foreground.h"
#include "hotkeys/pause.h"

namespace verbatix {

namespace {

constexpr int kControlAndAlt = 6;

struct ShiftBit {
    int bit;
    BYTE key;
};

// In the order in which they go down.
constexpr ShiftBit kShiftBits[] = {{1, VK_SHIFT}, {2, VK_CONTROL}, {4, VK_LMENU}};

std::vector<BYTE> ModifiersOf(int shiftState) {
    // Ctrl and Alt together is how a layout writes AltGr. Right Alt is the key that means it, and unlike
    // the pair it triggers no Ctrl+Alt shortcut of the target.
    if (shiftState == kControlAndAlt) return {VK_RMENU};
    std::vector<BYTE> modifiers;
    for (const ShiftBit& row : kShiftBits) {
        if (shiftState & row.bit) modifiers.push_back(row.key);
    }
    return modifiers;
}

// Without the extended flag the system takes right Alt for the left one.
DWORD ExtendedFlag(BYTE key) {
    return key == VK_RMENU ? KEYEVENTF_EXTENDEDKEY : 0;
}

using KeyScanFunction = SHORT(WINAPI*)(WCHAR);

KeyScanFunction FindKeyScan() {
    return reinterpret_cast<KeyScanFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"USER32.DLL"), "VkKeyScanW")));
}

void ShowError(const std::wstring& text) {
    ShowBoxInFront(GetActiveWindow(), text, L"Error");
}

}  // namespace

std::vector<KeyStroke> StrokesForKeyScan(SHORT keyScan) {
    const BYTE key = LOBYTE(keyScan);
    const std::vector<BYTE> modifiers = ModifiersOf(HIBYTE(keyScan));
    std::vector<KeyStroke> strokes = {{key, 0}, {key, KEYEVENTF_KEYUP}};
    // The last modifier to go down stands nearest to the key on both sides.
    for (std::size_t i = modifiers.size(); i-- > 0;) {
        const BYTE modifier = modifiers[i];
        strokes.insert(strokes.begin(), {modifier, ExtendedFlag(modifier)});
        strokes.push_back({modifier, ExtendedFlag(modifier) | KEYEVENTF_KEYUP});
    }
    return strokes;
}

void TypeText(std::wstring_view text) {
    if (text.empty()) {
        ShowError(L"Txt2Key\n\n''");
        return;
    }
    if (text.size() > kMaxTypedText) {
        ShowError(L"Txt2Key Error\nmax len = 1024\n");
        return;
    }
    const KeyScanFunction keyScan = FindKeyScan();
    if (!keyScan || !MaySendStroke()) return;
    for (const wchar_t character : text) {
        PlayWhole(StrokesForKeyScan(keyScan(character)));
        PauseExactly(1);
    }
}

}  // namespace verbatix
