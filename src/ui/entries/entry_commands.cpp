#include "ui/entries/entry_commands.h"

#include <windows.h>

#include <cwchar>
#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/foreground.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/press_log.h"
#include "ids.h"
#include "paste/executor.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/editor/editor_fields.h"
#include "ui/entries/move_entry.h"
#include "ui/entries/test_target.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

// Where a record stands now that was added for good.
int Add(const ListEntry& record, bool& hasBlank) {
    EntryList& list = mainWindow.entries;
    constexpr int kNone = -1;
    const int blank = hasBlank ? FirstBlankPosition(list).value_or(kNone) : kNone;
    hasBlank = blank != kNone;
    if (hasBlank) {
        UpdateEntry(list, blank, record);
        return blank;
    }
    const int position = static_cast<int>(list.size());
    AddEntry(list, record.text, record.label, record.keyCode, record.modifier, -1, position);
    // The list takes a new entry for one that the file has already; the next save must know better.
    list[position].saved = {};
    return position;
}

// Into the entry's text, or, by the option, the shown view.
void FocusAfterAction() {
    SetFocus(settings.setFocus ? ShownView() : DialogControl(IDC_TEXT));
}

void AddAndShow(const std::vector<ListEntry>& records, Action action) {
    const bool isCopy = action.act == Act::kDuplicate;
    if (const int selected = SelectedEntry(); selected >= 0) action.before = {selected};
    bool hasBlank = true;
    for (const ListEntry& record : records) action.after.push_back(Add(record, hasBlank));
    SaveAndShow(std::move(action));
    if (settings.setFocus) return FocusAfterAction();
    const HWND label = DialogControl(IDC_LABEL);
    SetFocus(label);
    // What a copy has from the other goes with the first letter; the group of a new one stays.
    SendMessageW(label, EM_SETSEL, isCopy ? 0 : wcslen(records.front().label), -1);
}

void Tell(const std::wstring& text) {
    MessageBoxW(mainWindow.window, text.c_str(), kProductName, MB_OK | MB_ICONINFORMATION);
}

}  // namespace

void NewEntry() {
    if (!SaveEdits(Warn::kAlways)) return;
    ListEntry record = {};
    CopyText(record.text, *StoredFromEditorText(L""), kTextLimit);
    record.modifier = 2;  // Ctrl + Alt: the combinations that programs use least
    // In the tree it comes into the hotkey or group that is selected.
    if (const int node = SelectedNode(); node > 0) {
        const TreeNode& place = ShownTree().nodes[static_cast<std::size_t>(node)];
        if (place.kind != NodeKind::kEntry) {
            record.keyCode = (place.key ^ 0x80) - 0x80;  // one signed byte, as in every record
            if (place.key) record.modifier = place.modifier;
            if (!place.path.empty()) CopyText(record.label, place.path + L'/', kLabelLimit);
        }
    }
    AddAndShow({record}, {Act::kNew});
}

void CopySelected() {
    const std::vector<int> selected = SelectedEntries();
    if (selected.empty() || !SaveEdits(Warn::kAlways)) return;
    std::vector<ListEntry> records;
    for (const int position : selected) {
        records.push_back(mainWindow.entries.at(position).current);
        records.back().keyCode = 0;
    }
    AddAndShow(records, {Act::kDuplicate, NameOfEntries(mainWindow.entries, selected)});
}

void DeleteSelected() {
    const std::vector<int> selected = SelectedEntries();
    if (selected.empty()) return;
    // What was typed comes back with the entry; what becomes of a text that is too long for one is asked
    // first.
    if (!TakeEditsOver(Warn::kAlways)) return;
    Action action = {Act::kDelete, NameOfEntries(mainWindow.entries, selected), selected};
    for (const int position : selected) {
        ListEntry& entry = mainWindow.entries.at(position).current;
        CopyText(entry.text, L"");
        CopyText(entry.label, L"");
        entry.kind = -1;
    }
    // One that is gone in the tree too, and nothing at all when it was the last.
    action.after = {NeighbourOf(selected)};
    SaveAndShow(std::move(action));
    SetFocus(ShownView());
}

void SetModifier(unsigned modifier) {
    const std::vector<int> selected = SelectedEntries();
    if (selected.empty() || !SaveEdits(Warn::kAlways)) return;
    Action action = {Act::kHotkey, NameOfEntries(mainWindow.entries, selected), selected, selected};
    for (const int position : selected) mainWindow.entries.at(position).current.modifier = modifier;
    SaveAndShow(std::move(action));
}

void SelectAll() {
    const HWND focus = GetFocus();
    for (const int field : {IDC_TEXT, IDC_LABEL, IDC_FILTER}) {
        if (focus == DialogControl(field)) return static_cast<void>(SendMessageW(focus, EM_SETSEL, 0, -1));
    }
    SelectAllEntries();
}

void TestEntry() {
    // An entry that shows a box or a dialog is still running; the hook would take it for ended after this.
    if (keyboardHook.trigger.busy) return;
    if (editor.position < 0 || !SaveEdits(Warn::kAlways)) return;
    const std::wstring text = mainWindow.entries.at(editor.position).current.text;
    if (settings.setFocus) FocusAfterAction();
    const HWND target = TestTarget();
    const std::wstring name = TestTargetName();
    // Its strokes would come to nothing, and nobody would say so.
    if (KeepsKeysFromUs(target)) return Tell(FillIn(LanguageText(text::kTestOutOfReach), {name}));
    if (!target || !GiveForeground(target)) return Tell(LanguageText(text::kNoWindowToTest));
    TellInStatusBar(FillIn(LanguageText(text::kTestedIn), {name}));
    executorClient.targetWindow = target;
    executorClient.pressWindow = target;
    const HookIsBusy busy;
    ContinuePress(kNoPress);
    ExecuteEntry(text);
}

}  // namespace verbatix
