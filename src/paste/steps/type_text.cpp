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

using KeyScanFunction = SHORT(WINAPI*)(WCHAR, HKL);

KeyScanFunction FindKeyScan() {
    return reinterpret_cast<KeyScanFunction>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"USER32.DLL"), "VkKeyScanExW")));
}

// Each program has a layout of its own. A console does not tell which.
HKL LayoutInFront() {
    const HKL layout = GetKeyboardLayout(GetWindowThreadProcessId(GetForegroundWindow(), nullptr));
    return layout ? layout : GetKeyboardLayout(0);
}

// With Caps Lock on every letter would come out in the other case. It is off for as long as this lives.
class WithoutCapsLock {
  public:
    WithoutCapsLock() : wasOn_((GetKeyState(VK_CAPITAL) & 1) != 0) { Switch(); }
    ~WithoutCapsLock() { Switch(); }
    WithoutCapsLock(const WithoutCapsLock&) = delete;
    WithoutCapsLock& operator=(const WithoutCapsLock&) = delete;

  private:
    void Switch() const {
        const KeyStroke strokes[] = {{VK_CAPITAL, 0}, {VK_CAPITAL, KEYEVENTF_KEYUP}};
        if (wasOn_) PlayWhole(strokes);
    }

    bool wasOn_;
};

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
    LetRightControlGo();
    const WithoutCapsLock plain;
    const HKL layout = LayoutInFront();
    for (const wchar_t character : text) {
        PlayWhole(StrokesForKeyScan(keyScan(character, layout)));
        PauseExactly(1);
    }
}

}  // namespace verbatix
