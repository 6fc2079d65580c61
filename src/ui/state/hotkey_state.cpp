#include "ui/state/hotkey_state.h"

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "ui/state/timed_pause.h"

namespace verbatix {

HotkeyState hotkeyState;

HotkeyCondition ConditionOfHotkeys() {
    if (keyboardHook.off) return HotkeyCondition::kPaused;
    if (!keyboardHook.handle) return HotkeyCondition::kRefused;
    if (hotkeyState.frontIsOutOfReach) return HotkeyCondition::kOutOfReach;
    return hotkeyState.frontIsPaused ? HotkeyCondition::kPausedInFront : HotkeyCondition::kActive;
}

static std::wstring PausedText() {
    const std::wstring until = PauseEndText();
    return until.empty() ? LanguageText(text::kHotkeysPaused)
                         : FillIn(LanguageText(text::kPausedUntil), {until});
}

std::wstring HotkeyStateText() {
    switch (ConditionOfHotkeys()) {
        case HotkeyCondition::kPaused: return PausedText();
        case HotkeyCondition::kRefused: return LanguageText(text::kHotkeysRefused);
        case HotkeyCondition::kOutOfReach: return LanguageText(text::kHotkeysOutOfReach);
        case HotkeyCondition::kPausedInFront:
            return FillIn(LanguageText(text::kPausedIn), {hotkeyState.lastProgram});
        default: break;
    }
    if (hotkeyState.restored == 0) return LanguageText(text::kHotkeysActive);
    return FillIn(LanguageText(text::kHotkeysRestored), {std::to_wstring(hotkeyState.restored)});
}

}  // namespace verbatix
