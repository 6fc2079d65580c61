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

KeyDecision DecideKey(const KBDLLHOOKSTRUCT& event, const HotkeyTables& tables,
                      const DisabledHotkeys& disabled, const TriggerState& state,
                      unsigned (*readStateWord)(), ULONGLONG now) {
    if (event.dwExtraInfo == kSyntheticInputTag) return {};
    KeyDecision decision;
    if (state.pendingRelease >= 0) decision.action = KeyAction::PassAfterRelease;

    const DWORD key = event.vkCode;
    if (key >= kKeyCount || tables.anyModifier[key] == 0) return decision;
    const int code = ModifierCodeOf(readStateWord());
    if (code < 0) return decision;
    const unsigned modifier = static_cast<unsigned>(code);
    const std::wstring& text = tables.texts[modifier][key];
    if (text.empty()) return decision;

    if (IsHotkeyDisabled(disabled, modifier, key)) return {KeyAction::Swallow};
    if (state.lastTrigger && now - *state.lastTrigger < kRepeatGuardMilliseconds) {
        return {KeyAction::Swallow};
    }
    if (tables.counts[modifier][key] >= 2 || text.starts_with(L"charmap:")) {
        return {KeyAction::TriggerMenu, modifier};
    }
    if (state.busy) return {KeyAction::TriggerNothing, modifier};
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
