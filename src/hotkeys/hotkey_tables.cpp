#include "hotkeys/hotkey_tables.h"

namespace verbatix {

void ClearHotkeys(HotkeyTables& tables) {
    tables.anyModifier.fill(0);
    for (auto& counts : tables.counts) counts.fill(0);
    for (auto& texts : tables.texts) texts.fill({});
}

bool AddHotkey(HotkeyTables& tables, unsigned key, unsigned modifier, std::wstring_view text) {
    if (text.empty()) return false;
    const unsigned slot = key % kKeyCount;
    if (slot == 0) return true;
    if (modifier >= kModifierCodeCount) modifier = 0;
    ++tables.anyModifier[slot];
    ++tables.counts[modifier][slot];
    tables.texts[modifier][slot] = text;
    return true;
}

bool IsHotkeyDisabled(const DisabledHotkeys& disabled, unsigned modifier, unsigned key) {
    const auto keys = disabled.find(modifier);
    if (keys == disabled.end()) return false;
    const auto flag = keys->second.find(key);
    return flag != keys->second.end() && flag->second;
}

}  // namespace verbatix
