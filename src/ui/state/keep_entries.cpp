#include "ui/state/keep_entries.h"

#include <windows.h>

#include <utility>

#include "hotkeys/keyboard_hook.h"
#include "store/list_file.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/state/undo_texts.h"

namespace verbatix {

UndoHistory undoHistory;

void NoteAction(Action action) {
    const std::wstring done = DoneText(action);
    if (!NoteStep(undoHistory, mainWindow.entries, std::move(action), GetTickCount64())) return;
    if (done.empty()) return WithdrawOffer();
    OfferInStatusBar(done, Offer::kUndo);
}

void BeginStep() {
    if (mainWindow.listClient.collectEdits) mainWindow.listClient.collectEdits();
    SealStep(undoHistory);
}

void EndStep() {
    KeepEntries();
    SealStep(undoHistory);
}

void ForgetActions() {
    ForgetSteps(undoHistory, mainWindow.entries);
    WithdrawOffer();
}

void KeepEntries(Action action) {
    // What is still being typed is a step of its own.
    if (mainWindow.listClient.collectEdits) mainWindow.listClient.collectEdits();
    NoteAction(std::move(action));
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
