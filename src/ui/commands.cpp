#include "ui/commands.h"

#include <shellapi.h>

#include <algorithm>
#include <iterator>

#include "base/debug.h"
#include "base/handle.h"
#include "base/product.h"
#include "clipboard/slots.h"
#include "ids.h"
#include "store/backup.h"
#include "store/settings.h"
#include "store/settings_path.h"
#include "ui/closing.h"
#include "ui/dark_theme.h"
#include "ui/editor.h"
#include "ui/editor_commands.h"
#include "ui/entry_actions.h"
#include "ui/group_menu.h"
#include "ui/insert_menu.h"
#include "ui/list_view.h"
#include "ui/main_window.h"
#include "ui/menu_bar.h"
#include "ui/paste_commands.h"
#include "ui/rename.h"
#include "ui/tree_view.h"

namespace verbatix {

namespace {

struct Command {
    int id;
    void (*run)(int id, LPARAM lParam);
};

void Nothing(int, LPARAM) {}

void SwitchOption(int id, LPARAM) {
    RunSettingCommand(id);
}

void Hide(int, LPARAM) {
    HideMainWindow();
}

void ToTray(int, LPARAM) {
    SendToTray();
}

void Exit(int id, LPARAM) {
    ExitProgram(id);
}

// Opened for writing once before it is shown: that tells a file that is there from one that is not, and an
// editor is not started on nothing.
void OpenSettingsFile(int, LPARAM) {
    UniqueFile check(CreateFileW(settingsPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!check) return;
    check.Reset();
    ShellExecuteW(mainWindow.window, L"open", settingsPath.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void OpenFolder(const std::wstring& folder) {
    ShellExecuteW(mainWindow.window, L"open", folder.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void RunBackup(int id, LPARAM) {
    constexpr int kBeforeFirst = 4000;
    BackupCommand(id - kBeforeFirst, {mainWindow.window, OpenFolder});
}

void SwitchTopmost(int, LPARAM) {
    ChangeSetting(&Settings::topmost, settings.topmost ? 0 : 1);
    ApplyTopmost();
}

void SwitchDarkTheme(int id, LPARAM) {
    RunSettingCommand(id);
    ApplyTheme(mainWindow.window);
}

void NextVersion(int, LPARAM) {
    MessageBoxW(mainWindow.window, L"Next-Ver", kProductName, MB_OK);
}

void ToSlot(int, LPARAM character) {
    SaveSlot(static_cast<wchar_t>(character));
}

void CopyToSlot(int, LPARAM character) {
    CopySlot(static_cast<wchar_t>(character), settings.restoreOldClipboard != 0);
}

void FromSlot(int, LPARAM character) {
    PasteSlot(static_cast<wchar_t>(character));
}

void New(int, LPARAM) {
    NewEntry();
}

void Copy(int, LPARAM) {
    CopyEntry();
}

void Delete(int, LPARAM) {
    DeleteEntry();
}

void Test(int, LPARAM) {
    TestEntry();
}

void Insert(int id, LPARAM) {
    ShowInsertMenu(GetDlgItem(mainWindow.window, id));
}

void PasteMenu(int, LPARAM) {
    ShowPasteMenu();
}

void SwitchTree(int id, LPARAM) {
    if (!SaveEdits(Warn::kAlways)) return;
    RunSettingCommand(id);
    ShowChosenView();
    RefreshListView(true);
    RefreshMenuChecks(mainWindow.menuBar);
}

void SwitchGroups(int id, LPARAM) {
    RunSettingCommand(id);
    RefreshListView(true);
}

void OpenAll(int, LPARAM) {
    ExpandAll();
}

void CloseAll(int, LPARAM) {
    CollapseAll();
}

void Rename(int, LPARAM) {
    if (!mainWindow.listCommandsBlocked) RenameSelected();
}

void Move(int id, LPARAM) {
    MoveSelected(id == CMD_MOVE_DOWN);
}

void Group(int, LPARAM) {
    ShowGroupMenu();
}

constexpr Command kMenuBarCommands[] = {
    {2, SwitchOption},         // to the tray on close
    {3, SwitchOption},         // start in the tray
    {4, SwitchOption},         // start hidden
    {5, SwitchOption},         // to the tray on minimise
    {6, SwitchOption},         // hide on close
    {7, Hide},                 //
    {1112, SwitchOption},      // date codes
    {1113, SwitchOption},      // time codes
    {1115, SwitchOption},      // give the clipboard back
    {1116, OpenSettingsFile},  //
    {2000, SwitchOption},      // menu order: as in the list
    {2001, SwitchOption},      // menu order: by label
    {2002, SwitchOption},      // menu order: by label, second way
    {3000, SwitchOption},      // ignore case
    {3001, SwitchOption},      // tips in the paste menu
    {3002, SwitchOption},      // order numbers in the paste menu
    {3004, SwitchDarkTheme},   // never dark
    {4001, RunBackup},         // every hour
    {4002, RunBackup},         // every day
    {4003, RunBackup},         // now
    {4004, RunBackup},         // open the folder
    {12802, Exit},             //
    {CMD_SHOW_TREE, SwitchTree},
    {CMD_EXPAND_ALL, OpenAll},
    {CMD_COLLAPSE_ALL, CloseAll},
};

constexpr Command kMainCommands[] = {
    {1, Nothing},           // Enter in the dialog
    {5, ToTray},            //
    {1014, SwitchTopmost},  //
    {CMD_NEW_ENTRY, New},
    {CMD_COPY_ENTRY, Copy},
    {CMD_DELETE_ENTRY, Delete},
    {1051, NextVersion},  //
    {CMD_TEST_ENTRY, Test},
    {IDC_INSERT, Insert},
    {32894, NextVersion},  //
    {32782, Hide},         //
    {CMD_COPY_SLOT, CopyToSlot},
    {CMD_PASTE_SLOT, FromSlot},
    {CMD_SAVE_SLOT, ToSlot},
    {CMD_SHOW_PASTE_MENU, PasteMenu},
    {CMD_SHOW_TREE, SwitchTree},
    {CMD_SHOW_GROUPS, SwitchGroups},
    {CMD_EXPAND_ALL, OpenAll},
    {CMD_COLLAPSE_ALL, CloseAll},
    {CMD_RENAME_ENTRY, Rename},
    {CMD_MOVE_UP, Move},
    {CMD_MOVE_DOWN, Move},
    {CMD_GROUP_MENU, Group},
    {CMD_EXIT, Exit},  //
    {7778, Nothing},   //
    {11112, Nothing},  //
};

bool RunFrom(const Command* begin, const Command* end, int id, LPARAM lParam) {
    const Command* found =
        std::find_if(begin, end, [id](const Command& command) { return command.id == id; });
    if (found == end) return false;
    found->run(id, lParam);
    return true;
}

}  // namespace

bool RouteCommand(WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    // Only 32 bits are compared: a sender may have sign-extended the marker.
    if (static_cast<DWORD>(lParam) == static_cast<DWORD>(kMenuBarMarker)) {
        DebugLine(L"wmId:%d", id);
        const bool known = RunFrom(std::begin(kMenuBarCommands), std::end(kMenuBarCommands), id, lParam);
        RefreshMenuChecks(mainWindow.menuBar);
        return known;
    }
    if (OnEditorNotification(id, HIWORD(wParam))) return true;
    return RunFrom(std::begin(kMainCommands), std::end(kMainCommands), id, lParam);
}

}  // namespace verbatix
