#include "ui/state/keep_entries.h"

#include "hotkeys/keyboard_hook.h"
#include "store/list_file.h"
#include "ui/state/main_window.h"

namespace verbatix {

void KeepEntries() {
    SaveList(mainWindow.entries, mainWindow.listClient, true, true);
    RebuildHotkeyTables();
}

void RebuildHotkeyTables() {
    HotkeyTables& tables = keyboardHook.tables;
    ClearHotkeys(tables);
    for (const auto& [position, slot] : mainWindow.entries) {
        const ListEntry& entry = slot.current;
        AddHotkey(tables, entry.keyCode, entry.modifier, entry.text);
    }
}

}  // namespace verbatix
