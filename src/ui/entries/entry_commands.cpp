#include "ui/entries/entry_commands.h"

#include <windows.h>

#include <cwchar>
#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/foreground.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/editor/editor_fields.h"
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
int Add(const ListEntry& record) {
    EntryList& list = mainWindow.entries;
    if (const std::optional<int> blank = FirstBlankPosition(list)) {
        UpdateEntry(list, *blank, record);
        return *blank;
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

void AddAndShow(const ListEntry& record, Action action) {
    const bool isCopy = action.act == Act::kDuplicate;
    if (const int selected = SelectedEntry(); selected >= 0) action.before = {selected};
    const int position = Add(record);
    action.after = {position};
    KeepEntries(std::move(action));
    SelectEntry(position);
    ShowInEditor(position);
    if (settings.setFocus) return FocusAfterAction();
    const HWND label = DialogControl(IDC_LABEL);
    SetFocus(label);
    // What a copy has from the other goes with the first letter; the group of a new one stays.
    SendMessageW(label, EM_SETSEL, isCopy ? 0 : wcslen(record.label), -1);
}

void Tell(int text) {
    MessageBoxW(mainWindow.window, LanguageText(text).c_str(), kProductName, MB_OK | MB_ICONINFORMATION);
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
    AddAndShow(record, {Act::kNew});
}

void CopyEntry() {
    if (!SaveEdits(Warn::kAlways) || editor.position < 0) return;
    ListEntry record = mainWindow.entries.at(editor.position).current;
    record.keyCode = 0;
    AddAndShow(record, {Act::kDuplicate, NameOfEntries(mainWindow.entries, {editor.position})});
}

void DeleteEntry() {
    const int position = editor.position;
    if (position < 0) return;
    // What was typed comes back with the entry, unless it is too long for one.
    TakeEditsOver(Warn::kNever);
    editor.edited = false;
    Action action = {Act::kDelete, NameOfEntries(mainWindow.entries, {position}), {position}};
    ListEntry record = mainWindow.entries.at(position).current;
    CopyText(record.text, L"");
    CopyText(record.label, L"");
    UpdateEntry(mainWindow.entries, position, record);
    const int next = NeighbourOf(position);
    if (next >= 0) action.after = {next};
    KeepEntries(std::move(action));
    SelectEntry(next);
    ShowInEditor(next);
    SetFocus(ShownView());
}

void TestEntry() {
    // An entry that shows a box or a dialog is still running; the hook would take it for ended after this.
    if (keyboardHook.trigger.busy) return;
    if (editor.position < 0 || !SaveEdits(Warn::kAlways)) return;
    const std::wstring text = mainWindow.entries.at(editor.position).current.text;
    if (settings.setFocus) FocusAfterAction();
    const HWND target = TestTarget();
    const std::wstring name = TestTargetName();
    if (!target || !GiveForeground(target)) return Tell(text::kNoWindowToTest);
    TellInStatusBar(FillIn(LanguageText(text::kTestedIn), {name}));
    executorClient.targetWindow = target;
    executorClient.pressWindow = target;
    const HookIsBusy busy;
    ExecuteEntry(text);
}

}  // namespace verbatix
