#include "ui/window/commands.h"

#include <shellapi.h>

#include <algorithm>
#include <span>

#include "base/debug.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "clipboard/slots.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "store/backup.h"
#include "store/settings.h"
#include "store/settings_path.h"
#include "ui/editor/editor.h"
#include "ui/editor/insert_menu.h"
#include "ui/editor/word_completion.h"
#include "ui/entries/entry_commands.h"
#include "ui/entries/group_menu.h"
#include "ui/entries/move_entry.h"
#include "ui/entries/rename.h"
#include "ui/look/dark_theme.h"
#include "ui/look/view_look.h"
#include "ui/shell/autostart.h"
#include "ui/shell/export.h"
#include "ui/shell/import.h"
#include "ui/shell/language_menu.h"
#include "ui/shell/web_pages.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"
#include "ui/window/closing.h"
#include "ui/window/hook_watch.h"
#include "ui/window/menu_bar.h"
#include "ui/window/paste_commands.h"
#include "ui/window/restart.h"

namespace verbatix {

namespace {

struct Command {
    int id;
    void (*run)(int id, LPARAM lParam);
};

// A row's function for a command that is one call.
template <auto function>
void Call(int, LPARAM) {
    function();
}

template <auto function>
void CallWithId(int id, LPARAM) {
    function(id);
}

void Nothing(int, LPARAM) {}

// Opened for writing once before it is shown: that tells a file that is there from one that is not, and an
// editor is not started on nothing.
void OpenSettingsFile() {
    SaveAll(Warn::kOnce);
    UniqueFile check(CreateFileW(settingsPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!check) return;
    check.Reset();
    ShellExecuteW(mainWindow.window, L"open", settingsPath.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

// Says so where the folder is missing all the same: a file of its name may be in the way.
bool HasBackupFolder() {
    constexpr int kNoFolder = 1323;
    const DWORD attributes = GetFileAttributesW(backupFolder.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) return true;
    MessageBoxW(mainWindow.window, FillIn(LanguageText(kNoFolder), {backupFolder}).c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
    return false;
}

void OpenFolder(const std::wstring& folder) {
    if (!HasBackupFolder()) return;
    ShellExecuteW(mainWindow.window, L"open", folder.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void RunBackup(int id) {
    constexpr int kBeforeFirst = 4000;
    constexpr int kNow = 4003;
    SaveAll(Warn::kOnce);  // into the copy too
    BackupCommand(id - kBeforeFirst, {mainWindow.window, OpenFolder});
    if (id == kNow && !backupFolder.empty()) HasBackupFolder();
}

void SwitchTopmost(int id) {
    RunSettingCommand(id);
    ApplyTopmost();
    RefreshMenuChecks(mainWindow.menuBar);
}

void SwitchLook(int id) {
    RunSettingCommand(id);
    ApplyViewLook(mainWindow.window);
}

void SwitchDarkTheme(int id) {
    RunSettingCommand(id);
    ApplyTheme(mainWindow.window);
}

// What an option changes in list and tree.
void SwitchViewOption(int id) {
    RunSettingCommand(id);
    RefreshListView(true);
}

void SwitchTree(int id) {
    if (!SaveEdits(Warn::kAlways)) return;
    RunSettingCommand(id);
    ShowChosenView();
    RefreshListView(true);
    RefreshMenuChecks(mainWindow.menuBar);
}

void SwitchStartWithWindows() {
    constexpr int kRefused = 1312;
    if (SetStartWithWindows(!StartsWithWindows())) return;
    MessageBoxW(mainWindow.window, LanguageText(kRefused).c_str(), kProductName, MB_OK | MB_ICONWARNING);
}

void NextVersion() {
    MessageBoxW(mainWindow.window, L"Next-Ver", kProductName, MB_OK);
}

void Uninstall() {
    constexpr int kNothingToDo = 1074;
    MessageBoxW(mainWindow.window, LanguageText(kNothingToDo).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

void ToSlot(int, LPARAM character) {
    const DeferredStep running;
    SaveSlot(static_cast<wchar_t>(character));
}

void CopyToSlot(int, LPARAM character) {
    const DeferredStep running;
    CopySlot(static_cast<wchar_t>(character), settings.restoreOldClipboard != 0);
    TellMissedStrokes();
}

void FromSlot(int, LPARAM character) {
    const DeferredStep running;
    PasteSlot(static_cast<wchar_t>(character));
}

void Insert(int id) {
    ShowInsertMenu(GetDlgItem(mainWindow.window, id));
}

void Rename() {
    if (!mainWindow.listCommandsBlocked) RenameSelected();
}

void Move(int id) {
    MoveSelected(id == CMD_MOVE_DOWN);
}

constexpr auto kSwitchOption = [](int id, LPARAM) { RunSettingCommand(id); };

constexpr Command kMenuBarCommands[] = {
    {2, kSwitchOption},  // to the tray on close
    {3, kSwitchOption},  // start in the tray
    {4, kSwitchOption},  // start hidden
    {5, kSwitchOption},  // to the tray on minimise
    {6, kSwitchOption},  // hide on close
    {7, Call<HideMainWindow>},
    {CMD_TOPMOST, CallWithId<SwitchTopmost>},
    {1018, CallWithId<OpenWebPageOf>},  // the program's page
    {1112, kSwitchOption},              // date codes
    {1113, kSwitchOption},              // time codes
    {1114, CallWithId<OpenWebPageOf>},  // help on date and time
    {1115, kSwitchOption},              // give the clipboard back
    {1116, Call<OpenSettingsFile>},
    {1117, Call<ImportFromFile>},
    {1118, Call<ImportExchangeFile>},
    {CMD_EXPORT_SELECTION, Call<ExportSelectionToFile>},
    {CMD_EXPORT_ALL, Call<ExportAllToFile>},
    {CMD_COPY_ALL_AS_TEXT, Call<ExportAllAsText>},
    {CMD_WRITE_EXCHANGE_FILE, Call<WriteExchangeFile>},
    {CMD_SUGGEST_WORDS, Call<SwitchWordCompletion>},
    {2000, kSwitchOption},                 // menu order: as in the list
    {2001, kSwitchOption},                 // menu order: by label
    {2002, kSwitchOption},                 // menu order: by label, second way
    {2031, CallWithId<OpenWebPageOf>},     // support
    {3000, CallWithId<SwitchViewOption>},  // ignore case
    {3001, kSwitchOption},                 // tips in the paste menu
    {3002, kSwitchOption},                 // order numbers in the paste menu
    {CMD_START_WITH_WINDOWS, Call<SwitchStartWithWindows>},
    {3004, CallWithId<SwitchDarkTheme>},  // never dark
    {CMD_SOFT_PAINT, CallWithId<SwitchLook>},
    {CMD_SET_FOCUS, kSwitchOption},
    {CMD_SIZE_FIRST, CallWithId<SwitchLook>},
    {CMD_SIZE_FIRST + 1, CallWithId<SwitchLook>},
    {CMD_SIZE_FIRST + 2, CallWithId<SwitchLook>},
    {4001, CallWithId<RunBackup>},      // every hour
    {4002, CallWithId<RunBackup>},      // every day
    {4003, CallWithId<RunBackup>},      // now
    {4004, CallWithId<RunBackup>},      // open the folder
    {4005, CallWithId<OpenWebPageOf>},  // help on backups
    {12800, Call<RestartElevated>},
    {12801, Call<OpenElevatedPrompt>},
    {12802, CallWithId<ExitProgram>},
    {12804, Call<RestartProgram>},
    {32794, CallWithId<OpenWebPageOf>},  // questions and answers
    {CMD_SHOW_TREE, CallWithId<SwitchTree>},
    {CMD_EXPAND_ALL, Call<ExpandAll>},
    {CMD_COLLAPSE_ALL, Call<CollapseAll>},
    {44000, Call<LookForUpdates>},
    {44003, Call<Uninstall>},
};

constexpr Command kMainCommands[] = {
    {1, Nothing},  // Enter in the dialog
    {5, Call<SendToTray>},
    {CMD_TOPMOST, CallWithId<SwitchTopmost>},
    {1018, CallWithId<OpenWebPageOf>},  // the program's page
    {CMD_NEW_ENTRY, Call<NewEntry>},
    {CMD_COPY_ENTRY, Call<CopyEntry>},
    {CMD_DELETE_ENTRY, Call<DeleteEntry>},
    {1051, Call<NextVersion>},
    {CMD_TEST_ENTRY, Call<TestEntry>},
    {CMD_COPY_AS_TEXT, Call<ExportAsText>},
    {IDC_INSERT, CallWithId<Insert>},
    {CMD_GROUP_MENU, Call<ShowGroupMenu>},
    {CMD_LANGUAGE_MENU, Call<ShowLanguageMenu>},
    {2031, CallWithId<OpenWebPageOf>},  // support
    {7778, Nothing},
    {11112, Nothing},
    {32782, Call<HideMainWindow>},
    {CMD_RENAME_ENTRY, Call<Rename>},
    {32794, CallWithId<OpenWebPageOf>},  // questions and answers
    {CMD_COPY_SLOT, CopyToSlot},
    {CMD_PASTE_SLOT, FromSlot},
    {CMD_SAVE_SLOT, ToSlot},
    {CMD_SHOW_PASTE_MENU, Call<ShowPasteMenu>},
    {CMD_RUN_ENTRY, Call<RunPressedEntry>},
    {CMD_REINSTALL_HOOK, Call<RenewHook>},
    {CMD_EXIT, CallWithId<ExitProgram>},
    {CMD_SHOW_TREE, CallWithId<SwitchTree>},
    {CMD_MOVE_UP, CallWithId<Move>},
    {CMD_MOVE_DOWN, CallWithId<Move>},
    {32894, Call<NextVersion>},
    {CMD_SHOW_GROUPS, CallWithId<SwitchViewOption>},
    {CMD_EXPAND_ALL, Call<ExpandAll>},
    {CMD_COLLAPSE_ALL, Call<CollapseAll>},
    {CMD_UNSAVED_TEXT, Call<TellOfUnsavedText>},
};

bool RunFrom(std::span<const Command> commands, int id, LPARAM lParam) {
    const auto found = std::find_if(commands.begin(), commands.end(),
                                    [id](const Command& command) { return command.id == id; });
    if (found == commands.end()) return false;
    found->run(id, lParam);
    return true;
}

}  // namespace

bool RouteCommand(WPARAM wParam, LPARAM lParam) {
    const int id = LOWORD(wParam);
    // Only 32 bits are compared: a sender may have sign-extended the marker.
    if (static_cast<DWORD>(lParam) == static_cast<DWORD>(kMenuBarMarker)) {
        DebugLine(L"wmId:%d", id);
        const bool known = RunLanguageCommand(id) || RunFrom(kMenuBarCommands, id, lParam);
        RefreshMenuChecks(mainWindow.menuBar);
        return known;
    }
    if (OnEditorNotification(id, HIWORD(wParam))) return true;
    return RunFrom(kMainCommands, id, lParam);
}

}  // namespace verbatix
