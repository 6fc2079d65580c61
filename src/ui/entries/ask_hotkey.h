// The question for the hotkey of several entries, which have one together. UI thread only.
#pragma once

#include <optional>
#include <string>

namespace verbatix {

// As a record holds it; key 0: none.
struct AskedHotkey {
    unsigned key = 0;
    unsigned modifier = 0;
    bool operator==(const AskedHotkey&) const = default;
};

// Asks over the main window, `now` being chosen at first. `subject` says whose hotkey it is, and `position`
// is one of those entries. Nothing when the user leaves it as it is.
std::optional<AskedHotkey> AskHotkey(const std::wstring& subject, const AskedHotkey& now, int position);

}  // namespace verbatix
