#include "ui/window/menu_bar.h"

#include <optional>
#include <span>

#include "base/access_letters.h"
#include "base/language.h"
#include "base/text.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/shell/autostart.h"
#include "ui/shell/language_menu.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/undo_texts.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_rows.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

// A row of a menu: `depth` 1 stands in it, 2 and 3 in the submenu above it. A row without id opens a
// submenu; one without text draws a line.
struct Row {
    int depth;
    int id;
    int text;
    int keys = 0;  // language text, 0: none
};

// In place of an id: the rows of the languages stand here.
constexpr int kLanguageRows = -1;

constexpr Row kFileRows[] = {
    {1, CMD_SAVE, text::kSave, text::kSaveKeys},
    {1, CMD_OPEN_SETTINGS_FILE, text::kOpenSettingsFile},
    {1, 0, text::kImportMenu},
    {2, CMD_IMPORT_FILE, text::kImportFile},
    {2, CMD_IMPORT_EXCHANGE_FILE, text::kImportExchangeFile},
    {1, 0, text::kExportMenu},
    {2, CMD_EXPORT_SELECTION, text::kExportSelection},
    {2, CMD_EXPORT_ALL, text::kExportAll},
    {2, CMD_COPY_ALL_AS_TEXT, text::kCopyAllAsText},
    {2, CMD_WRITE_EXCHANGE_FILE, text::kWriteExchangeFile},
    {1, 0, 0},
    {1, CMD_HIDE_NOW, text::kHideNow},
    {1, 0, text::kRestartMenu},
    {2, CMD_RESTART, text::kRestart},
    {2, CMD_RESTART_ELEVATED, text::kRestartElevated},
    {2, CMD_ELEVATED_PROMPT, text::kElevatedPrompt},
    {1, CMD_EXIT_MENU, text::kExit},
};

constexpr Row kEditRows[] = {
    {1, CMD_UNDO, text::kUndo, text::kUndoKeys},
    {1, CMD_REDO, text::kRedo, text::kRedoKeys},
    {1, 0, 0},
    {1, CMD_NEW_ENTRY, text::kNew, text::kNewKeys},
    {1, CMD_COPY_ENTRY, text::kDuplicate, text::kDuplicateKeys},
    {1, CMD_RENAME_ENTRY, text::kRename, text::kRenameKeys},
    {1, CMD_DELETE_ENTRY, text::kDelete, text::kDeleteKeys},
    {1, CMD_SELECT_ALL, text::kSelectAll, text::kSelectAllKeys},
    {1, 0, 0},
    {1, CMD_FIND, text::kFind, text::kFindKeys},
    {1, CMD_FIND_NEXT, text::kFindNext, text::kFindNextKeys},
    {1, CMD_FIND_PREVIOUS, text::kFindPrevious, text::kFindPreviousKeys},
    {1, 0, 0},
    {1, CMD_TEST_ENTRY, text::kTest, text::kTestKeys},
};

constexpr Row kOptionRows[] = {
    {1, 0, text::kClosingMenu},
    {2, CMD_TRAY_IF_CLOSE, text::kTrayIfClose},
    {2, CMD_HIDE_IF_CLOSE, text::kHideIfClose},
    {2, CMD_TRAY_IF_MINIMIZE, text::kTrayIfMinimize},
    {2, 0, 0},
    {2, CMD_START_WITH_WINDOWS, text::kStartWithWindows},
    {2, CMD_START_IN_TRAY, text::kStartInTray},
    {2, CMD_START_HIDDEN, text::kStartHidden},
    {1, 0, text::kDateMenu},
    {2, CMD_DATE_CODES, text::kDateCodes},
    {2, CMD_TIME_CODES, text::kTimeCodes},
    {1, 0, text::kOrderMenu},
    {2, CMD_MENU_SORT_FIRST, text::kOrderOfList},
    {2, CMD_MENU_SORT_FIRST + 1, text::kOrderByLabel},
    {2, CMD_MENU_SORT_FIRST + 2, text::kOrderByLabelAgain},
    {2, 0, 0},
    {2, CMD_ORDER_NUMBERS, text::kOrderNumbers},
    {2, CMD_IGNORE_CASE, text::kIgnoreCase},
    {2, CMD_MENU_TIPS, text::kMenuTips},
    {1, 0, text::kBackupMenu},
    {2, CMD_BACKUP_HOURLY, text::kBackupHourly},
    {2, CMD_BACKUP_DAILY, text::kBackupDaily},
    {2, 0, 0},
    {2, CMD_BACKUP_NOW, text::kBackupNow},
    {2, CMD_BACKUP_FOLDER, text::kOpenBackupFolder},
    {1, 0, text::kWindowMenu},
    {2, CMD_TOPMOST, text::kTopmost},
    {2, CMD_SET_FOCUS, text::kFocusInList},
    {2, CMD_SOFT_PAINT, text::kSoftPaint},
    {2, 0, text::kSizeMenu},
    {3, CMD_SIZE_FIRST, text::kNormalSize},
    {3, CMD_SIZE_FIRST + 1, text::kLargeSize},
    {3, CMD_SIZE_FIRST + 2, text::kVeryLargeSize},
    {1, 0, text::kLanguageMenu},
    {2, kLanguageRows, text::kLanguages},
    {1, 0, 0},
    {1, CMD_RESTORE_CLIPBOARD, text::kRestoreClipboard},
    {1, CMD_SUGGEST_WORDS, text::kSuggestWords},
    {1, CMD_LIST_ON_PERCENT, text::kListOnPercent},
    {1, CMD_NEVER_DARK, text::kNeverDark},
};

constexpr Row kViewRows[] = {{1, CMD_SHOW_TREE, text::kShowTree},
                             {1, CMD_EXPAND_ALL, text::kExpandAll},
                             {1, CMD_COLLAPSE_ALL, text::kCollapseAll},
                             {1, 0, 0},
                             {1, 0, text::kSortMenu},
                             {2, CMD_SORT_FIRST, text::kOwnOrder},
                             {2, CMD_SORT_FIRST + 1, text::kHotkeyColumn},
                             {2, CMD_SORT_FIRST + 2, text::kLabelColumn},
                             {2, CMD_SORT_FIRST + 3, text::kTextColumn},
                             {2, CMD_SORT_FIRST + 4, text::kLastUsedColumn},
                             {2, CMD_SORT_FIRST + 5, text::kUsesColumn},
                             {2, 0, 0},
                             {2, CMD_SORT_REVERSED, text::kSortReversed},
                             {1, CMD_SHOW_PREVIEW, text::kShowPreview},
                             {1, CMD_FIXED_WIDTH, text::kFixedWidth},
                             {1, CMD_SYSTEM_ICONS, text::kSystemIcons},
                             {1, CMD_FOCUS_SPLITTER, text::kFocusSplitter},
                             {1, 0, 0},
                             {1, CMD_SHOW_USES, text::kShowUses},
                             {1, CMD_ONLY_UNUSED, text::kOnlyUnused},
                             {1, CMD_CLASHES, text::kClashes}};

constexpr Row kHelpRows[] = {
    {1, CMD_GUIDE, text::kGuide, text::kHelpKeys},
    {1, CMD_QUESTIONS, text::kQuestions},
    {1, CMD_DATE_HELP, text::kDateHelp},
    {1, CMD_BACKUP_HELP, text::kBackupHelp},
    {1, 0, 0},
    {1, CMD_PROGRAM_PAGE, text::kWebPage},
    {1, CMD_SUPPORT, text::kSupport},
    {1, 0, 0},
    {1, CMD_LOOK_FOR_UPDATES, text::kLookForUpdates},
    {1, CMD_UNINSTALL, text::kUninstall},
    {1, 0, 0},
    {1, CMD_DIAGNOSTICS, text::kDiagnostics},
    {1, CMD_ABOUT, text::kAbout},
};

struct Menu {
    int title;
    std::span<const Row> rows;
};

constexpr Menu kMenus[] = {{text::kFileMenu, kFileRows},
                           {text::kEditMenu, kEditRows},
                           {text::kViewMenu, kViewRows},
                           {text::kOptionsMenu, kOptionRows},
                           {text::kHelpMenu, kHelpRows}};

void AppendRow(HMENU menu, const Row& row) {
    if (row.id == kLanguageRows) {
        AppendLanguages(menu);
    } else if (row.text == 0) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else {
        std::wstring text = LanguageText(row.text);
        if (row.keys) text += L'\t' + LanguageText(row.keys);
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(row.id), text.c_str());
    }
}

void AppendRows(HMENU menu, std::span<const Row> rows) {
    HMENU open[] = {nullptr, menu, nullptr, nullptr};
    for (const Row& row : rows) {
        if (row.id == 0 && row.text != 0) {
            open[row.depth + 1] = CreatePopupMenu();
            AppendMenuW(open[row.depth], MF_POPUP, reinterpret_cast<UINT_PTR>(open[row.depth + 1]),
                        LanguageText(row.text).c_str());
        } else {
            AppendRow(open[row.depth], row);
        }
    }
}

// Of a row of the columns to sort by: below 0 for the order of the list itself. Nothing for other rows.
std::optional<int> SortColumnOf(int id) {
    if (id < CMD_SORT_FIRST || id >= CMD_SORT_REVERSED) return std::nullopt;
    return id - CMD_SORT_FIRST - 1;
}

std::optional<bool> IsChecked(int id) {
    if (const std::optional<int> column = SortColumnOf(id)) return settings.sortColumn == *column;
    switch (id) {
        case CMD_SORT_REVERSED: return settings.sortColumn >= 0 && settings.sortDescending != 0;
        case CMD_START_WITH_WINDOWS: return StartsWithWindows();
        case CMD_ONLY_UNUSED: return mainWindow.listMode == ListMode::kUnused;
        case CMD_CLASHES: return mainWindow.listMode == ListMode::kClashes;
        default: return IsSettingChecked(id);
    }
}

// What would do nothing is grey.
bool IsEnabled(int id) {
    if (const std::optional<int> column = SortColumnOf(id))
        return CanSort() && (*column <= kTextColumn || settings.showUses);
    switch (id) {
        case CMD_SORT_REVERSED: return CanSort() && settings.sortColumn >= 0;
        case CMD_EXPAND_ALL:
        case CMD_COLLAPSE_ALL: return IsTreeShown();
        case CMD_UNDO: return editor.edited || NextUndo(undoHistory);
        case CMD_REDO: return NextRedo(undoHistory);
        case CMD_DELETE_ENTRY:
        case CMD_COPY_ENTRY:
        case CMD_EXPORT_SELECTION: return !SelectedEntries().empty();
        case CMD_TEST_ENTRY: return SelectedEntry() >= 0;
        case CMD_RENAME_ENTRY: return SelectedEntry() >= 0 || SelectedNode() > 0;
        case CMD_FIND_NEXT:
        case CMD_FIND_PREVIOUS: return IsFiltered();
        default: return true;
    }
}

// The two rows that say what they would take back, or do again.
void NameStep(HMENU menu, int id) {
    const bool isUndo = id == CMD_UNDO;
    const Action* next = isUndo ? NextUndo(undoHistory) : NextRedo(undoHistory);
    std::wstring name = next ? ActionName(*next) : std::wstring();
    ReplaceAll(name, L"&", L"&&");
    ReplaceAll(name, L"\t", L" ");
    std::wstring text = next ? FillIn(LanguageText(isUndo ? text::kUndoThat : text::kRedoThat), {name})
                             : LanguageText(isUndo ? text::kUndo : text::kRedo);
    text += L'\t' + LanguageText(isUndo ? text::kUndoKeys : text::kRedoKeys);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING;
    info.dwTypeData = text.data();
    SetMenuItemInfoW(menu, static_cast<UINT>(id), FALSE, &info);
}

void RefreshMenu(HMENU menu) {
    for (int position = GetMenuItemCount(menu) - 1; position >= 0; --position) {
        if (const HMENU submenu = GetSubMenu(menu, position)) {
            RefreshMenu(submenu);
            continue;
        }
        const int id = static_cast<int>(GetMenuItemID(menu, position));
        if (id == CMD_UNDO || id == CMD_REDO) NameStep(menu, id);
        EnableMenuItem(menu, static_cast<UINT>(position),
                       MF_BYPOSITION | (IsEnabled(id) ? MF_ENABLED : MF_GRAYED));
        if (const std::optional<bool> on = IsChecked(id)) {
            CheckMenuItem(menu, static_cast<UINT>(position),
                          MF_BYPOSITION | (*on ? MF_CHECKED : MF_UNCHECKED));
        }
    }
}

}  // namespace

HMENU CreateMenuBar() {
    const HMENU bar = CreateMenu();
    for (const Menu& menu : kMenus) {
        const HMENU popup = CreatePopupMenu();
        AppendRows(popup, menu.rows);
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), LanguageText(menu.title).c_str());
    }
    MENUINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIM_STYLE | MIM_APPLYTOSUBMENUS;
    info.dwStyle = MNS_NOTIFYBYPOS;
    SetMenuInfo(bar, &info);
    GiveAccessLetters(bar);
    RefreshMenu(bar);
    return bar;
}

HMENU CreateOptionsMenu() {
    const HMENU menu = CreatePopupMenu();
    AppendRows(menu, kOptionRows);
    GiveAccessLetters(menu);
    RefreshMenu(menu);
    return menu;
}

void RebuildMenuBar() {
    const HMENU old = mainWindow.menuBar;
    mainWindow.menuBar = CreateMenuBar();
    SetMenu(mainWindow.window, mainWindow.menuBar);
    DestroyMenu(old);
}

void RefreshMenuChecks(HMENU menuBar) {
    if (menuBar) RefreshMenu(menuBar);
}

void OnMenuCommand(HWND window, WPARAM position, LPARAM menu) {
    const UINT id = GetMenuItemID(reinterpret_cast<HMENU>(menu), static_cast<int>(position));
    if (id != static_cast<UINT>(-1)) SendMessageW(window, WM_COMMAND, id, kMenuBarMarker);
}

}  // namespace verbatix
