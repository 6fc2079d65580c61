#include "ui/entries/context_menu.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "base/access_letters.h"
#include "base/handle.h"
#include "base/language.h"
#include "hotkeys/hotkey_names.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/entries/entry_commands.h"
#include "ui/entries/group_menu.h"
#include "ui/entries/move_entry.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

// What a row is for; where that is not there it is grey, and the tree's rows are left out.
enum class Needs { kNothing, kEntry, kName, kSelection, kTree };

struct Row {
    int command;  // 0: a line
    int text;
    int keys;  // language text, 0: none
    Needs needs;
};

constexpr Row kRows[] = {
    {CMD_NEW_ENTRY, text::kNew, text::kNewKeys, Needs::kNothing},
    {CMD_COPY_ENTRY, text::kDuplicate, text::kDuplicateKeys, Needs::kSelection},
    {CMD_COPY_AS_TEXT, text::kCopyAsText, 0, Needs::kSelection},
    {CMD_DELETE_ENTRY, text::kDelete, text::kDeleteKeys, Needs::kSelection},
    {0, 0, 0, Needs::kNothing},
    {CMD_TEST_ENTRY, text::kTest, text::kTestKeys, Needs::kEntry},
    {CMD_RENAME_ENTRY, text::kRename, text::kRenameKeys, Needs::kName},
    {CMD_MOVE_UP, text::kMoveUp, text::kMoveUpKeys, Needs::kSelection},
    {CMD_MOVE_DOWN, text::kMoveDown, text::kMoveDownKeys, Needs::kSelection},
    {CMD_GROUP_MENU, text::kGroupEntries, 0, Needs::kNothing},
    {CMD_FIRST_MODIFIER, text::kModifierMenu, 0, Needs::kSelection},
    {0, 0, 0, Needs::kNothing},
    {CMD_SHOW_TREE, text::kShowTree, 0, Needs::kNothing},
    {CMD_EXPAND_ALL, text::kExpandAll, 0, Needs::kTree},
    {CMD_COLLAPSE_ALL, text::kCollapseAll, 0, Needs::kTree},
};

bool HasName() {
    return SelectedNode() > 0 || SelectedEntry() >= 0;
}

bool IsThere(Needs needs) {
    switch (needs) {
        case Needs::kEntry: return SelectedEntry() >= 0;
        case Needs::kSelection: return !SelectedEntries().empty();
        case Needs::kName: return HasName();
        case Needs::kTree: return IsTreeShown();
        default: return true;
    }
}

bool Changes(int command) {
    return (command == CMD_MOVE_UP || command == CMD_MOVE_DOWN) && !CanMoveInView();
}

// They go with the menu that they become part of.
struct Submenus {
    HMENU groups = CreatePopupMenu();
    HMENU modifiers = CreatePopupMenu();
};

void AppendModifiers(HMENU menu, const std::vector<int>& positions) {
    for (unsigned code = 0; code < kModifierCount; ++code) {
        std::wstring name;
        AppendModifierDisplayName(code, name);
        const auto has = [code](int position) {
            return mainWindow.entries.at(position).current.modifier == code;
        };
        const bool all = std::all_of(positions.begin(), positions.end(), has);
        AppendMenuW(menu, all ? MF_CHECKED : MF_UNCHECKED, CMD_FIRST_MODIFIER + code, name.c_str());
    }
}

bool RunModifierRow(int command) {
    const int code = command - CMD_FIRST_MODIFIER;
    if (code < 0 || code >= static_cast<int>(kModifierCount)) return false;
    SetModifier(static_cast<unsigned>(code));
    return true;
}

void AppendRow(HMENU menu, const Row& row, const Submenus& submenus) {
    if (row.needs == Needs::kTree && !IsThere(row.needs)) return;
    if (row.command == 0) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        return;
    }
    std::wstring text = LanguageText(row.text);
    if (row.keys) text += L'\t' + LanguageText(row.keys);
    UINT flags = IsThere(row.needs) && !Changes(row.command) ? MF_ENABLED : MF_GRAYED;
    if (row.command == CMD_SHOW_TREE && settings.showTree) flags |= MF_CHECKED;
    if (row.command == CMD_GROUP_MENU) {
        AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(submenus.groups), text.c_str());
    } else if (row.command == CMD_FIRST_MODIFIER) {
        AppendMenuW(menu, MF_POPUP | flags, reinterpret_cast<UINT_PTR>(submenus.modifiers), text.c_str());
    } else {
        AppendMenuW(menu, flags, static_cast<UINT_PTR>(row.command), text.c_str());
    }
}

void SelectUnder(POINT screen) {
    if (!IsTreeShown()) return;  // the list selects with either button
    POINT mouse = screen;
    RECT item = {};
    ScreenToClient(mainWindow.tree, &mouse);
    const int node = NodeAt(mouse, item);
    const std::vector<int> marked = MarkedNodes();
    // At one of several that are selected the menu is for all of them.
    if (node > 0 && std::find(marked.begin(), marked.end(), node) == marked.end()) {
        TreeView_SelectItem(mainWindow.tree, ItemOf(node));
    }
}

// Below the selected item, or at the view's corner.
POINT PlaceForKeyboard() {
    RECT item = {};
    if (IsTreeShown()) {
        NodeRectangle(TreeView_GetSelection(mainWindow.tree), true, item);
    } else {
        const int row = SelectedRow();
        if (row >= 0) ListView_GetItemRect(mainWindow.list, row, &item, LVIR_LABEL);
    }
    RECT client = {};
    GetClientRect(ShownView(), &client);
    POINT place = {item.left, item.bottom};
    if (!PtInRect(&client, place)) place = {0, 0};
    ClientToScreen(ShownView(), &place);
    return place;
}

}  // namespace

bool OnContextMenu(HWND control, LPARAM place) {
    if (control != ShownView()) return false;
    POINT corner = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    if (place == -1) {
        corner = PlaceForKeyboard();
    } else {
        SelectUnder(corner);
    }
    // The editor follows the selection now, not when the menu is over: its rows act on what the editor
    // shows.
    OnSelectionChanged();
    const std::vector<int> selected = SelectedEntries();
    const UniqueMenu menu(CreatePopupMenu());
    const Submenus submenus;
    const std::vector<std::wstring> groups = AppendGroupRows(submenus.groups, selected);
    AppendModifiers(submenus.modifiers, selected);
    for (const Row& row : kRows) AppendRow(menu.Get(), row, submenus);
    GiveAccessLetters(menu.Get());
    mainWindow.listCommandsBlocked = true;
    const int command =
        TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, static_cast<int>(corner.x),
                       static_cast<int>(corner.y), 0, mainWindow.window, nullptr);
    mainWindow.listCommandsBlocked = false;
    if (command != 0 && !RunModifierRow(command) && !RunGroupRow(command, selected, groups)) {
        SendMessageW(mainWindow.window, WM_COMMAND, static_cast<WPARAM>(command), 0);
    }
    return true;
}

}  // namespace verbatix
