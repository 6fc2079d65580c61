// What the keyboard hook looks a key up in: tables by modifier code and key, rebuilt from the entry list
// whenever the list changes, and the map of disabled hotkeys. Texts are copies, so a changed list cannot
// leave the hook with a text that is gone. Nothing here fails.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "hotkeys/disabled_hotkeys.h"

namespace verbatix {

inline constexpr unsigned kModifierCodeCount = 10;
inline constexpr unsigned kKeyCount = 256;

struct HotkeyTables {
    template <typename Slot>
    using ByKey = std::array<Slot, kKeyCount>;

    ByKey<std::uint32_t> anyModifier = {};                             // entries on that key
    std::array<ByKey<std::uint32_t>, kModifierCodeCount> counts = {};  // entries on that hotkey
    std::array<ByKey<std::wstring>, kModifierCodeCount> texts;  // the last one's text; empty: no entry
};

void ClearHotkeys(HotkeyTables& tables);

// Enters one list entry; of several on one hotkey the last stays in the slot. An entry without text is left
// out (returns false, otherwise true). The low byte of the key counts, 0 is "no hotkey"; a modifier code
// that does not exist counts as 0, which is also what the user sees for it.
bool AddHotkey(HotkeyTables& tables, unsigned key, unsigned modifier, std::wstring_view text);

bool IsHotkeyDisabled(const DisabledHotkeys& disabled, unsigned modifier, unsigned key);

}  // namespace verbatix
