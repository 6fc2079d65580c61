#include "hotkeys/key_capture.h"

#include "hotkeys/key_decision.h"

namespace verbatix {

namespace {

constexpr std::size_t kModifierKeys = 8;  // of kStateWordKeys; the mouse buttons follow
constexpr unsigned kShiftBits = 64 | 128;
constexpr unsigned kLeftControlBit = 32;

// Simulated input may name a modifier without its side.
DWORD WithSide(DWORD key) {
    switch (key) {
        case VK_SHIFT: return VK_LSHIFT;
        case VK_CONTROL: return VK_LCONTROL;
        case VK_MENU: return VK_LMENU;
        default: return key;
    }
}

// Keys that people need in the middle of whatever they do: locks, loudness, screenshots.
bool ActsByItself(DWORD key) {
    return key == VK_CAPITAL || key == VK_NUMLOCK || key == VK_SCROLL || key == VK_SNAPSHOT ||
           (key >= VK_BROWSER_BACK && key <= VK_LAUNCH_APP2);
}

CaptureStep TakeRelease(DWORD key, CaptureState& state) {
    const bool isTaken = state.taken[key];
    state.taken.reset(key);
    state.before.reset(key);
    state.held &= ~ModifierKeyBit(key);
    if (key == VK_RMENU && state.controlIsAltGrs) state.held &= ~kLeftControlBit;
    if (key == VK_RMENU || key == VK_LCONTROL) state.controlIsAltGrs = false;
    return {isTaken, isTaken || ModifierKeyBit(key) ? CaptureAction::kReleased : CaptureAction::kNothing};
}

CaptureStep TakeModifier(const KBDLLHOOKSTRUCT& event, DWORD key, CaptureState& state) {
    // The system has it down: taken now, it would never come up there.
    if (state.before[key]) return {};
    state.held |= ModifierKeyBit(key);
    if (ModifierKeyBit(key) & kShiftBits) return {false, CaptureAction::kHeld};
    if (state.taken[key]) return {true};
    state.taken.set(key);
    if (key == VK_LCONTROL) state.controlIsAltGrs = IsControlOfAltGr(event);
    return {true, CaptureAction::kHeld};
}

CaptureAction ActionOf(DWORD key, bool alone) {
    if (alone && key == VK_ESCAPE) return CaptureAction::kLeave;
    if (alone && (key == VK_BACK || key == VK_DELETE)) return CaptureAction::kClear;
    return CaptureAction::kCombination;
}

}  // namespace

unsigned ModifierKeyBit(DWORD key) {
    for (std::size_t bit = 0; bit < kModifierKeys; ++bit) {
        if (kStateWordKeys[bit] == key) return 1U << bit;
    }
    return 0;
}

void LeaveToOthers(const KBDLLHOOKSTRUCT& event, CaptureState& state) {
    const DWORD key = WithSide(event.vkCode);
    if (event.dwExtraInfo == kSyntheticInputTag || key == 0 || key >= kKeyCount) return;
    state.taken.reset(key);
    state.before.set(key);
    state.held |= ModifierKeyBit(key);
}

CaptureStep DecideCapture(const KBDLLHOOKSTRUCT& event, bool mouseButtonHeld, CaptureState& state) {
    const DWORD key = WithSide(event.vkCode);
    const bool isForeign = event.dwExtraInfo == kSyntheticInputTag || key == VK_PACKET;
    if (isForeign || key == 0 || key >= kKeyCount) return {};
    if (event.flags & LLKHF_UP) return TakeRelease(key, state);
    if (ModifierKeyBit(key)) return TakeModifier(event, key, state);
    const bool alone = state.held == 0 && !mouseButtonHeld;
    if (key == VK_TAB && (state.held & ~kShiftBits) == 0 && !mouseButtonHeld) return {};
    if (alone && ActsByItself(key)) return {};
    if (state.before[key] || state.taken[key]) return {true};
    state.taken.set(key);
    return {true, ActionOf(key, alone)};
}

}  // namespace verbatix
