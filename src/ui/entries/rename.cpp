#include "ui/entries/rename.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/product.h"
#include "ids.h"
#include "ui/editor/editor.h"
#include "ui/editor/editor_fields.h"
#include "ui/entries/ask_hotkey.h"
#include "ui/entries/entry_placing.h"
#include "ui/entries/move_entry.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

// What is being renamed. A row of the list is an entry without path: its whole label is the name.
struct Renaming {
    TreeNode node;
    bool wholeLabel = false;
    std::wstring name;
};

Renaming renaming;
bool renamesRow = false;  // a row is to be edited in place now

// Starts with what the label says, which is not always what is shown: an entry without label shows its
// text.
void FillEdit(HWND edit, const std::wstring& name) {
    SendMessageW(edit, EM_SETLIMITTEXT, kLabelLimit - 1, 0);
    SetWindowTextW(edit, name.c_str());
}

// What was typed is kept first, and that may fill the view anew, which must not happen inside its own
// notification.
bool MustKeepEditsFirst() {
    if (editor.edited) PostMessageW(mainWindow.window, WM_COMMAND, CMD_RENAME_ENTRY, 0);
    return editor.edited;
}

// The control edits the first column. The label is in the second, so the field is kept there, whatever the
// control does with it.
LRESULT CALLBACK KeepOverLabel(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                               DWORD_PTR) noexcept {
    if (message == WM_WINDOWPOSCHANGING) {
        constexpr int kLabelColumn = 1;
        RECT cell = {};
        const int row = SelectedRow();
        auto* place = reinterpret_cast<WINDOWPOS*>(lParam);
        if (ListView_GetSubItemRect(mainWindow.list, row, kLabelColumn, LVIR_LABEL, &cell)) {
            place->x = static_cast<int>(cell.left);
            place->y = static_cast<int>(cell.top);
            place->cx = static_cast<int>(cell.right - cell.left);
            place->cy = static_cast<int>(cell.bottom - cell.top);
        }
    }
    if (message == WM_NCDESTROY) RemoveSubclass(edit, KeepOverLabel, id);
    return PassToSubclassed(edit, message, wParam, lParam);
}

bool Rename(const Renaming& what) {
    EntryList& list = mainWindow.entries;
    if (what.node.kind == NodeKind::kGroup) {
        if (!RenameGroup(list, what.node, what.name)) return false;
        const std::size_t parent = what.node.path.rfind(L'/');
        TreeNode renamed = what.node;
        renamed.path.resize(parent == std::wstring::npos ? 0 : parent + 1);
        renamed.path += what.name;
        KeepOpenUnder(what.node, renamed);
        Action action = {Act::kRename, QuotedName(what.node.name)};
        const std::vector<int> below = EntriesBelow(ShownTree(), FindNode(ShownTree(), what.node));
        if (!below.empty()) action.before = {below.front()};
        SaveAndShow(std::move(action));
        SelectNode(renamed);
        // So that what is offered now stands until the user selects something else.
        CountSelected();
        return true;
    }
    const auto found = list.find(what.node.position);
    if (found == list.end()) return true;
    const std::vector<int> position = {what.node.position};
    const Action action = {Act::kRename, NameOfEntries(list, position), position, position};
    LabelParts parts = SplitLabel(found->second.current.label);
    parts.name = what.name;
    if (!SetLabel(list, what.node.position, what.wholeLabel ? what.name : JoinLabel(parts))) return false;
    SaveAndShow(action);
    return true;
}

// A hotkey's name is the hotkey: another one is that of all its entries, also of those that a filter hides.
void ChangeHotkeyOf(const TreeNode& node) {
    EntryList& list = mainWindow.entries;
    const std::vector<int> entries = EntriesOn(list, node.key, node.modifier);
    if (entries.empty()) return;
    const ListEntry& first = list.at(entries.front()).current;
    const std::wstring subject = NameOfEntries(list, entries);
    const auto hotkey = AskHotkey(subject, {RecordKey(first.keyCode), node.modifier}, entries.front());
    if (!hotkey) return;
    for (const int position : entries) {
        const auto found = list.find(position);
        if (found == list.end()) continue;
        found->second.current.keyCode = hotkey->key;
        found->second.current.modifier = hotkey->modifier;
    }
    TreeNode changed = node;
    changed.key = hotkey->key & 0xff;
    changed.modifier = changed.key ? hotkey->modifier : 0;
    KeepOpenUnder(node, changed);
    NoteAction({Act::kHotkey, subject, entries, entries});
    ShowKept({});
    // Nothing that was changed stays out of sight, nor does what the filter found by its hotkey go there.
    if (!std::all_of(entries.begin(), entries.end(), HasListRow)) SelectEntries(entries);
    SelectNode(changed);
    CountSelected();
}

}  // namespace

void RenameSelected() {
    if (!SaveEdits(Warn::kAlways)) return;
    if (IsTreeShown()) {
        const int node = SelectedNode();
        if (node <= 0) return TellInStatusBar(LanguageText(text::kNoneSelected));
        SetFocus(mainWindow.tree);
        const TreeNode& selected = ShownTree().nodes[static_cast<std::size_t>(node)];
        // A copy: the tree is another one afterwards.
        if (selected.kind == NodeKind::kHotkey) return ChangeHotkeyOf(TreeNode(selected));
        TreeView_EditLabel(mainWindow.tree, ItemOf(node));
        return;
    }
    const int row = SelectedRow();
    if (row < 0) return TellInStatusBar(LanguageText(text::kNoneSelected));
    SetFocus(mainWindow.list);
    ListView_EnsureVisible(mainWindow.list, row, FALSE);
    renamesRow = true;
    SendMessageW(mainWindow.list, LVM_EDITLABELW, static_cast<WPARAM>(row), 0);
    renamesRow = false;
}

static LRESULT BeginRenameNode(int index) {
    if (index <= 0 || MustKeepEditsFirst()) return TRUE;
    const TreeNode& node = ShownTree().nodes[static_cast<std::size_t>(index)];
    if (node.kind == NodeKind::kHotkey) return TRUE;
    renaming = {node, !ShownTree().grouped, {}};
    std::wstring name = node.name;
    if (node.kind == NodeKind::kEntry) {
        const std::wstring label = mainWindow.entries.at(node.position).current.label;
        name = renaming.wholeLabel ? label : SplitLabel(label).name;
    }
    FillEdit(TreeView_GetEditControl(mainWindow.tree), name);
    return FALSE;
}

// Not by the control's own slow second click: that is on the hotkey, in the first column.
static LRESULT BeginRenameRow(int position) {
    const bool isWanted = std::exchange(renamesRow, false);
    if (!isWanted || position < 0 || MustKeepEditsFirst()) return TRUE;
    renaming = {};
    renaming.node.kind = NodeKind::kEntry;
    renaming.node.position = position;
    renaming.wholeLabel = true;
    const HWND edit = ListView_GetEditControl(mainWindow.list);
    FillEdit(edit, mainWindow.entries.at(position).current.label);
    AddSubclass(edit, KeepOverLabel, 1);
    return FALSE;
}

// Null: not renamed. Carried out later, when the control is done.
static LRESULT EndRename(const wchar_t* name) {
    if (!name) return FALSE;
    renaming.name = name;
    PostMessageW(mainWindow.window, WM_RENAMED, 0, 0);
    return FALSE;
}

std::optional<LRESULT> OnRenameNotify(const NMHDR& header) {
    switch (header.code) {
        case LVN_BEGINLABELEDITW: return BeginRenameRow(SelectedEntry());
        case LVN_ENDLABELEDITW:
            return EndRename(reinterpret_cast<const NMLVDISPINFOW&>(header).item.pszText);
        case TVN_BEGINLABELEDITW:
            return BeginRenameNode(NodeOf(reinterpret_cast<const NMTVDISPINFOW&>(header).item.hItem));
        case TVN_ENDLABELEDITW:
            return EndRename(reinterpret_cast<const NMTVDISPINFOW&>(header).item.pszText);
        default: return std::nullopt;
    }
}

void OnRenamed() {
    const Renaming what = std::exchange(renaming, {});
    if (Rename(what)) return;
    MessageBoxW(mainWindow.window, LanguageText(text::kLabelTooLong).c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
}

}  // namespace verbatix
