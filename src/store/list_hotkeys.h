// Where the hotkeys of the list and the settings file meet.
#pragma once

#include "hotkeys/disabled_hotkeys.h"

namespace verbatix {

// The hotkeys that the settings file excludes from use; none when there is no such setting.
DisabledHotkeys LoadDisabledHotkeys();

// Writes them; false when the file could not be written.
bool SaveDisabledHotkeys(const DisabledHotkeys& disabled);

}  // namespace verbatix
