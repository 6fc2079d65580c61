#include "hotkeys/key_decision.h"

namespace verbatix {

int ModifierCodeOf(unsigned stateWord) {
    switch (stateWord) {
        case 1: return 0;
        case 2: return 1;
        case 4 | 32: return 2;
        // Right Alt arrives with a left Ctrl of the system's making where the layout has an Alt-Gr, and
        // alone where it has none.
        case 8 | 32:
        case 8: return 3;
        case 32: return 4;
        case 4: return 5;
        case 16: return 6;
        case 256: return 7;
        case 512: return 8;
        case 1024: return 9;
        default: return -1;
    }
}

void ClaimedKeys::Claim(DWORD key, ULONGLONG now) {
    claimed_.set(key);
    repeating_.set(key);
    lost_.reset(key);
    seenAt_[key] = now;
}

bool ClaimedKeys::Takes(DWORD key, bool up, ULONGLONG now) {
    if (key >= kKeyCount || !claimed_[key]) return false;
    const bool takes =
        up ? !lost_[key] : repeating_[key] && now - seenAt_[key] <= kLongestRepeatMilliseconds;
    claimed_.set(key, takes && !up);
    seenAt_[key] = now;
    return takes;
}

void ClaimedKeys::OnBlindTime(ULONGLONG now) {
    if (claimed_.any()) seenAt_.fill(now);
}

static bool IsModifier(DWORD key) {
    return (key >= VK_SHIFT && key <= VK_MENU) || (key >= VK_LSHIFT && key <= VK_RMENU) || key == VK_LWIN ||
           key == VK_RWIN;
}

KeyDecision DecideKey(const KBDLLHOOKSTRUCT& event, const HotkeyTables& tables,
                      const DisabledHotkeys& disabled, TriggerState& state, const KeyStateReader& keys,
                      ULONGLONG now) {
    // What the system makes of an Alt-Gr is no key of the user's, and may come in the middle of ours.
    if (event.dwExtraInfo == kSyntheticInputTag || IsControlOfAltGr(event)) return {};
    const DWORD key = event.vkCode;
    const bool up = (event.flags & LLKHF_UP) != 0;
    if (!up && IsModifier(key)) state.claims.OnModifierPressed();
    const bool release = state.pendingRelease >= 0;
    if (state.claims.Takes(key, up, now)) {
        return {release ? KeyAction::SwallowAfterRelease : KeyAction::Swallow};
    }
    KeyDecision decision;
    if (release) decision.action = KeyAction::PassAfterRelease;

    if (up || key >= kKeyCount || tables.anyModifier[key] == 0) return decision;
    const int code = ModifierCodeOf(keys.stateWord());
    if (code < 0) return decision;
    const unsigned modifier = static_cast<unsigned>(code);
    const std::wstring& text = tables.texts[modifier][key];
    if (text.empty() || keys.isDown(key)) return decision;
    if (keys.isPausedInFront && keys.isPausedInFront())
        return {decision.action, modifier, nullptr, PressEnd::kPausedInFront};

    state.claims.Claim(key, now);
    if (IsHotkeyDisabled(disabled, modifier, key))
        return {KeyAction::Swallow, modifier, nullptr, PressEnd::kSwitchedOff};
    if (state.lastTrigger && now - *state.lastTrigger < kRepeatGuardMilliseconds)
        return {KeyAction::Swallow, modifier, nullptr, PressEnd::kTooSoon};
    if (tables.counts[modifier][key] >= 2 || text.starts_with(L"charmap:")) {
        return {KeyAction::TriggerMenu, modifier};
    }
    if (state.busy) return {KeyAction::TriggerNothing, modifier, nullptr, PressEnd::kBusy};
    return {KeyAction::TriggerEntry, modifier, &text};
}

std::vector<KeyStroke> PendingReleaseStrokes(int modifier) {
    struct Row {
        int modifier;
        BYTE key;
    };
    static constexpr Row rows[] = {{6, VK_RCONTROL}, {3, VK_RMENU}, {2, VK_LCONTROL},
                                   {4, VK_LCONTROL}, {2, VK_LMENU}, {5, VK_LMENU}};
    std::vector<KeyStroke> strokes;
    for (const Row& row : rows) {
        if (row.modifier == modifier) strokes.push_back({row.key, KEYEVENTF_KEYUP});
    }
    return strokes;
}

}  // namespace verbatix
