#include "ui/window/commands.h"

#include <shellapi.h>

#include <algorithm>
#include <span>

#include "base/debug.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "clipboard/saved_clipboard.h"
#include "clipboard/slots.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "store/backup.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"
#include "ui/editor/code_list.h"
#include "ui/editor/editor.h"
#include "ui/editor/preview_area.h"
#include "ui/editor/word_completion.h"
#include "ui/entries/entry_commands.h"
#include "ui/entries/group_menu.h"
#include "ui/entries/move_entry.h"
#include "ui/entries/rename.h"
#include "ui/entries/undo.h"
#include "ui/look/dark_theme.h"
#include "ui/look/splitter.h"
#include "ui/look/view_look.h"
#include "ui/shell/about.h"
#include "ui/shell/autostart.h"
#include "ui/shell/control_tips.h"
#include "ui/shell/export.h"
#include "ui/shell/guide.h"
#include "ui/shell/import.h"
#include "ui/shell/language_menu.h"
#include "ui/shell/press_report.h"
#include "ui/shell/tracking_tooltip.h"
#include "ui/shell/web_pages.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_pictures.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_rows.h"
#include "ui/views/tree_view.h"
#include "ui/window/closing.h"
#include "ui/window/hook_watch.h"
#include "ui/window/menu_bar.h"
#include "ui/window/paste_commands.h"
#include "ui/window/restart.h"
#include "ui/window/showing.h"
#include "ui/window/store_watch.h"

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

// Says so where the folder is missing all the same: a file of its name may be in the way.
bool HasBackupFolder() {
    const DWORD attributes = GetFileAttributesW(backupFolder.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) return true;
    MessageBoxW(mainWindow.window, FillIn(LanguageText(text::kNoBackupFolder), {backupFolder}).c_str(),
                kProductName, MB_OK | MB_ICONWARNING);
    return false;
}

void OpenFolder(const std::wstring& folder) {
    if (!HasBackupFolder()) return;
    ShellExecuteW(mainWindow.window, L"open", folder.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void TellOfBackup(const std::wstring& copy) {
    if (!HasBackupFolder()) return;
    if (copy.empty()) {
        MessageBoxW(mainWindow.window, (LanguageText(text::kCannotWrite) + L"\n" + backupFolder).c_str(),
                    kProductName, MB_OK | MB_ICONWARNING);
        return;
    }
    const std::wstring count = std::to_wstring(CountEntries(mainWindow.entries));
    TellWhatWasDone(mainWindow.window, FileNameOf(copy),
                    FillIn(LanguageText(text::kBackedUp), {count, backupFolder}));
}

void RunBackup(int id) {
    SaveAll(Warn::kNever);  // into the copy too
    BackupCommand(id - CMD_BACKUP_HOURLY + 1, {mainWindow.window, OpenFolder, TellOfBackup});
}

void SwitchTopmost(int id) {
    RunSettingCommand(id);
    ApplyTopmost();
    RefreshMenuChecks(mainWindow.menuBar);
}

void SwitchLook(int id) {
    RunSettingCommand(id);
    ApplyViewLook(mainWindow.window);
    ShowEntryPictures();
    SendMessageW(mainWindow.window, WM_SIZE, 0, 0);
}

void SwitchDarkTheme(int id) {
    RunSettingCommand(id);
    ApplyTheme();
}

void SwitchPreview(int id) {
    RunSettingCommand(id);
    ShowPreviewArea();
    RefreshMenuChecks(mainWindow.menuBar);
}

void SwitchCodes(int id) {
    RunSettingCommand(id);
    RefreshPreview();
}

// What an option changes in list and tree.
void SwitchViewOption(int id) {
    RunSettingCommand(id);
    RefreshViews(true);
}

void SwitchTree(int id) {
    // The option and what is typed are written together.
    const SettingsBatch together;
    const bool isEdited = editor.edited;
    if (!TakeEditsOver(Warn::kAlways)) return;
    RunSettingCommand(id);
    if (isEdited) KeepEntries();
    ShowChosenView();
    RefreshViews(true);
    RefreshMenuChecks(mainWindow.menuBar);
}

void SortBy(int id) {
    SortEntries(id - CMD_SORT_FIRST - 1, id == CMD_SORT_FIRST ? 0 : settings.sortDescending);
}

void ReverseSorting() {
    if (settings.sortColumn >= 0) SortEntries(settings.sortColumn, settings.sortDescending ? 0 : 1);
}

// The mode of that command, or all entries again.
void SwitchListMode(int id) {
    const ListMode mode = id == CMD_CLASHES ? ListMode::kClashes : ListMode::kUnused;
    SaveEdits(Warn::kNever);
    ShowListMode(mainWindow.listMode == mode ? ListMode::kAll : mode);
}

void SwitchStartWithWindows() {
    if (SetStartWithWindows(!StartsWithWindows())) return;
    MessageBoxW(mainWindow.window, LanguageText(text::kAutostartRefused).c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
}

void NextVersion() {
    MessageBoxW(mainWindow.window, L"Next-Ver", kProductName, MB_OK);
}

void Uninstall() {
    MessageBoxW(mainWindow.window, LanguageText(text::kNoUninstall).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

// For the hand that is used to it; a failure is told by the list.
void Save() {
    const bool isSaved = !editor.edited && !HasUnsaved(mainWindow.entries);
    if (!SaveAll(Warn::kAlways) || HasUnsaved(mainWindow.entries)) return;
    TellInStatusBar(LanguageText(isSaved ? text::kSavedAlready : text::kSaved));
}

void Find() {
    SendMessageW(mainWindow.window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(DialogControl(IDC_FILTER)),
                 TRUE);
}

void FindAgain(int id) {
    if (!IsFiltered()) return Find();
    SelectNextHit(id == CMD_FIND_PREVIOUS);
}

void SaveRest(int, LPARAM) {
    SaveAll(Warn::kNever);
}

void ToSlot(int, LPARAM character) {
    const DeferredStep running;
    SaveSlot(static_cast<wchar_t>(character));
}

void CopyToSlot(int, LPARAM character) {
    const DeferredStep running;
    CopySlot(static_cast<wchar_t>(character), settings.restoreOldClipboard != 0);
    TellMissedStrokes();
    if (IsPreviousClipboardKept()) RestoreLater();
}

void FromSlot(int, LPARAM character) {
    const DeferredStep running;
    PasteSlot(static_cast<wchar_t>(character));
    TellMissedStrokes();
}

void Insert(int id) {
    ShowCodesBelow(DialogControl(id));
}

void Rename() {
    if (!mainWindow.listCommandsBlocked) RenameSelected();
}

// Of another entry on the same hotkey.
void Show(int, LPARAM position) {
    if (mainWindow.entries.count(static_cast<int>(position))) SelectEntry(static_cast<int>(position));
}

void Move(int id) {
    MoveSelected(id == CMD_MOVE_DOWN);
}

constexpr auto kSwitchOption = [](int id, LPARAM) { RunSettingCommand(id); };

constexpr Command kMenuBarCommands[] = {
    {CMD_TRAY_IF_CLOSE, kSwitchOption},
    {CMD_START_IN_TRAY, kSwitchOption},
    {CMD_START_HIDDEN, kSwitchOption},
    {CMD_TRAY_IF_MINIMIZE, kSwitchOption},
    {CMD_HIDE_IF_CLOSE, kSwitchOption},
    {CMD_HIDE_NOW, Call<HideMainWindow>},
    {CMD_TOPMOST, CallWithId<SwitchTopmost>},
    {CMD_PROGRAM_PAGE, CallWithId<OpenWebPageOf>},
    {CMD_DATE_CODES, CallWithId<SwitchCodes>},
    {CMD_TIME_CODES, CallWithId<SwitchCodes>},
    {CMD_DATE_HELP, CallWithId<OpenWebPageOf>},
    {CMD_RESTORE_CLIPBOARD, kSwitchOption},
    {CMD_OPEN_SETTINGS_FILE, Call<OpenSettingsFile>},
    {CMD_IMPORT_FILE, Call<ImportFromFile>},
    {CMD_IMPORT_EXCHANGE_FILE, Call<ImportExchangeFile>},
    {CMD_EXPORT_SELECTION, Call<ExportSelectionToFile>},
    {CMD_EXPORT_ALL, Call<ExportAllToFile>},
    {CMD_COPY_ALL_AS_TEXT, Call<ExportAllAsText>},
    {CMD_WRITE_EXCHANGE_FILE, Call<WriteExchangeFile>},
    {CMD_SUGGEST_WORDS, Call<SwitchWordCompletion>},
    {CMD_MENU_SORT_FIRST, kSwitchOption},      // menu order: as in the list
    {CMD_MENU_SORT_FIRST + 1, kSwitchOption},  // menu order: by label
    {CMD_MENU_SORT_FIRST + 2, kSwitchOption},  // menu order: by label, second way
    {CMD_SUPPORT, CallWithId<OpenWebPageOf>},
    {CMD_IGNORE_CASE, CallWithId<SwitchViewOption>},
    {CMD_MENU_TIPS, kSwitchOption},
    {CMD_ORDER_NUMBERS, kSwitchOption},
    {CMD_START_WITH_WINDOWS, Call<SwitchStartWithWindows>},
    {CMD_NEVER_DARK, CallWithId<SwitchDarkTheme>},
    {CMD_SOFT_PAINT, CallWithId<SwitchLook>},
    {CMD_SET_FOCUS, kSwitchOption},
    {CMD_SIZE_FIRST, CallWithId<SwitchLook>},
    {CMD_SIZE_FIRST + 1, CallWithId<SwitchLook>},
    {CMD_SIZE_FIRST + 2, CallWithId<SwitchLook>},
    {CMD_BACKUP_HOURLY, CallWithId<RunBackup>},
    {CMD_BACKUP_DAILY, CallWithId<RunBackup>},
    {CMD_BACKUP_NOW, CallWithId<RunBackup>},
    {CMD_BACKUP_FOLDER, CallWithId<RunBackup>},
    {CMD_BACKUP_HELP, CallWithId<OpenWebPageOf>},
    {CMD_RESTART_ELEVATED, Call<RestartElevated>},
    {CMD_ELEVATED_PROMPT, Call<OpenElevatedPrompt>},
    {CMD_EXIT_MENU, CallWithId<ExitProgram>},
    {CMD_RESTART, Call<RestartProgram>},
    {CMD_QUESTIONS, CallWithId<OpenWebPageOf>},
    {CMD_SHOW_TREE, CallWithId<SwitchTree>},
    {CMD_FOCUS_SPLITTER, Call<FocusSplitter>},
    {CMD_FIXED_WIDTH, CallWithId<SwitchLook>},
    {CMD_SYSTEM_ICONS, CallWithId<SwitchLook>},
    {CMD_EXPAND_ALL, Call<ExpandAll>},
    {CMD_COLLAPSE_ALL, Call<CollapseAll>},
    {CMD_SORT_FIRST, CallWithId<SortBy>},
    {CMD_SORT_FIRST + 1, CallWithId<SortBy>},
    {CMD_SORT_FIRST + 2, CallWithId<SortBy>},
    {CMD_SORT_FIRST + 3, CallWithId<SortBy>},
    {CMD_SORT_FIRST + 4, CallWithId<SortBy>},
    {CMD_SORT_FIRST + 5, CallWithId<SortBy>},
    {CMD_SORT_REVERSED, Call<ReverseSorting>},
    {CMD_SHOW_USES, Call<SwitchUseColumns>},
    {CMD_ONLY_UNUSED, CallWithId<SwitchListMode>},
    {CMD_CLASHES, CallWithId<SwitchListMode>},
    {CMD_SAVE, Call<Save>},
    {CMD_NEW_ENTRY, Call<NewEntry>},
    {CMD_RENAME_ENTRY, Call<Rename>},
    {CMD_TEST_ENTRY, Call<TestEntry>},
    {CMD_FIND, Call<Find>},
    {CMD_FIND_NEXT, CallWithId<FindAgain>},
    {CMD_FIND_PREVIOUS, CallWithId<FindAgain>},
    {CMD_SHOW_PREVIEW, CallWithId<SwitchPreview>},
    {CMD_LIST_ON_PERCENT, kSwitchOption},
    {CMD_UNDO, Call<Undo>},
    {CMD_REDO, Call<Redo>},
    {CMD_DELETE_ENTRY, Call<DeleteSelected>},
    {CMD_COPY_ENTRY, Call<CopySelected>},
    {CMD_SELECT_ALL, Call<SelectAll>},
    {CMD_LOOK_FOR_UPDATES, Call<LookForUpdates>},
    {CMD_UNINSTALL, Call<Uninstall>},
    {CMD_GUIDE, Call<OpenGuideHere>},
    {CMD_DIAGNOSTICS, Call<ShowPressReport>},
    {CMD_ABOUT, Call<ShowAbout>},
};

constexpr Command kMainCommands[] = {
    {IDOK, Nothing},  // Enter in the dialog
    {CMD_SEND_TO_TRAY, Call<SendToTray>},
    {CMD_TOPMOST, CallWithId<SwitchTopmost>},
    {CMD_PROGRAM_PAGE, CallWithId<OpenWebPageOf>},
    {CMD_NEW_ENTRY, Call<NewEntry>},
    {CMD_COPY_ENTRY, Call<CopySelected>},
    {CMD_DELETE_ENTRY, Call<DeleteSelected>},
    {CMD_SAVE, Call<Save>},
    {CMD_FIND, Call<Find>},
    {CMD_FIND_NEXT, CallWithId<FindAgain>},
    {CMD_FIND_PREVIOUS, CallWithId<FindAgain>},
    {CMD_NEXT_VERSION, Call<NextVersion>},
    {CMD_TEST_ENTRY, Call<TestEntry>},
    {CMD_COPY_AS_TEXT, Call<ExportAsText>},
    {IDC_INSERT, CallWithId<Insert>},
    {CMD_GROUP_MENU, Call<ShowGroupMenu>},
    {CMD_LANGUAGE_MENU, Call<ShowLanguageMenu>},
    {CMD_SUPPORT, CallWithId<OpenWebPageOf>},
    {CMD_NOTHING, Nothing},
    {CMD_NOTHING_TOO, Nothing},
    {CMD_HIDE, Call<HideMainWindow>},
    {CMD_RENAME_ENTRY, Call<Rename>},
    {CMD_QUESTIONS, CallWithId<OpenWebPageOf>},
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
    {CMD_NEXT_VERSION_TOO, Call<NextVersion>},
    {CMD_SHOW_ENTRY, Show},
    {CMD_UNDO, Call<Undo>},
    {CMD_REDO, Call<Redo>},
    {CMD_SELECT_ALL, Call<SelectAll>},
    {IDC_OFFER_LINK, Call<FollowOffer>},
    {CMD_SHOW_GROUPS, CallWithId<SwitchViewOption>},
    {CMD_EXPAND_ALL, Call<ExpandAll>},
    {CMD_COLLAPSE_ALL, Call<CollapseAll>},
    {CMD_UNSAVED_TEXT, Call<TellOfUnsavedText>},
    {CMD_LIST_DAMAGE, Call<AskAboutFoundDamage>},
    {CMD_SAVE_REST, SaveRest},
    {CMD_GUIDE, Call<OpenGuideHere>},
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
    if (id == CMD_TEST_ENTRY && HIWORD(wParam) == BN_SETFOCUS) return NameTestTarget(), true;
    if (id == CMD_TEST_ENTRY && HIWORD(wParam) == BN_KILLFOCUS) return UpdateStatusBar(), true;
    if (OnEditorNotification(id, HIWORD(wParam))) return true;
    if (id == IDC_FILTER) return OnFilterNotification(HIWORD(wParam)), true;
    return RunFrom(kMainCommands, id, lParam);
}

}  // namespace verbatix
