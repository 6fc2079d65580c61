#include "ui/state/hotkey_state.h"

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"

namespace verbatix {

HotkeyState hotkeyState;

std::wstring HotkeyStateText() {
    if (keyboardHook.off) return LanguageText(text::kHotkeysPaused);
    if (!keyboardHook.handle) return LanguageText(text::kHotkeysRefused);
    if (hotkeyState.frontIsOutOfReach) return LanguageText(text::kHotkeysOutOfReach);
    if (hotkeyState.restored == 0) return LanguageText(text::kHotkeysActive);
    return FillIn(LanguageText(text::kHotkeysRestored), {std::to_wstring(hotkeyState.restored)});
}

}  // namespace verbatix
