// What follows when the list of entries has changed. UI thread only.
#pragma once

namespace verbatix {

// The list has changed: it is written, list and tree show it, and the hotkeys are those of the entries now.
// What could not be written is told by the list and stays marked as changed.
void KeepEntries();

// Fills the hotkey tables of the hook from the list.
void RebuildHotkeyTables();

}  // namespace verbatix
