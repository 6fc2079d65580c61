#include "hotkeys/disabled_hotkeys.h"

#include "base/text.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix {

DisabledHotkeys ParseDisabledHotkeys(std::wstring_view value) {
    if (value.size() >= kDisabledHotkeysSize - 1) {
        // As long as can be read, so the last item may be cut ("Ctrl+F12" to "Ctrl+F1"): leave it out.
        value = value.substr(0, kDisabledHotkeysSize - 1);
        value = value.substr(0, value.rfind(L'|') + 1);
    }
    DisabledHotkeys disabled;
    for (const std::wstring_view item : Split(value, L'|')) {
        unsigned modifier = kModifierLeftWin;
        const std::wstring_view rest = ParseModifierPrefix(item, modifier);
        // One character is passed over, the "+" where all is well.
        const unsigned key = ParseKeyName(rest.substr(rest.empty() ? 0 : 1));
        if (key != 0) disabled[modifier][key] = true;
    }
    return disabled;
}

std::wstring FormatDisabledHotkeys(const DisabledHotkeys& disabled) {
    std::wstring value;
    for (const auto& [modifier, keys] : disabled) {
        for (const auto& [key, isDisabled] : keys) {
            if (!isDisabled) continue;
            AppendModifierName(modifier, value);
            value += L'+' + FormatKeyName(key) + L'|';
        }
    }
    return value;
}

}  // namespace verbatix
