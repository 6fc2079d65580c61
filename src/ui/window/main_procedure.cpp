#include "ui/window/main_procedure.h"

#include <commctrl.h>

#include <optional>

#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "paste/text/command_prefixes.h"
#include "store/list_file.h"
#include "store/list_hotkeys.h"
#include "store/paused_programs.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/editor/hotkey_field.h"
#include "ui/editor/insert_menu.h"
#include "ui/editor/preview_area.h"
#include "ui/editor/word_completion.h"
#include "ui/entries/cell_click.h"
#include "ui/entries/context_menu.h"
#include "ui/entries/drag_entry.h"
#include "ui/entries/rename.h"
#include "ui/look/dark_theme.h"
#include "ui/look/link_line.h"
#include "ui/look/main_layout.h"
#include "ui/look/offer_link.h"
#include "ui/look/resolution.h"
#include "ui/look/splitter.h"
#include "ui/look/view_look.h"
#include "ui/look/window_place.h"
#include "ui/shell/control_tips.h"
#include "ui/shell/guide.h"
#include "ui/state/entry_uses.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/empty_note.h"
#include "ui/views/entry_pictures.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_columns.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_marks.h"
#include "ui/window/closing.h"
#include "ui/window/commands.h"
#include "ui/window/hook_watch.h"
#include "ui/window/menu_bar.h"
#include "ui/window/paste_commands.h"
#include "ui/window/showing.h"
#include "ui/window/store_watch.h"
#include "ui/window/timers.h"

namespace verbatix {

static void CreateStatusBar(HWND dialog) {
    mainWindow.statusBar = CreateWindowExW(WS_EX_CONTROLPARENT, STATUSCLASSNAMEW, nullptr,
                                           WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | SBARS_SIZEGRIP, 0, 0,
                                           0, 0, dialog, nullptr, GetModuleHandleW(nullptr), nullptr);
    CreateOfferLink();
}

// F2 renames the selected entry while the user is in the list or tree and not in the middle of renaming
// one.
static bool WantsRename() {
    const HWND view = ShownView();
    const UINT whetherRenaming = view == mainWindow.tree ? TVM_GETEDITCONTROL : LVM_GETEDITCONTROL;
    return !mainWindow.listCommandsBlocked && view && GetFocus() == view &&
           !SendMessageW(view, whetherRenaming, 0, 0);
}

static void StartHotkeys(HWND dialog) {
    keyboardHook.disabled = LoadDisabledHotkeys();
    keyboardHook.pausedPrograms = LoadPausedPrograms();
    RebuildHotkeyTables();
    executorClient.mainWindow = dialog;
    keyboardHook.client = {dialog, ExecuteFromHotkey, WantsRename, FitsInsideHook};
    StartHookUpkeep();
    InstallKeyboardHook();
    StartHookWatch(dialog);
}

static void OnInitDialog(HWND dialog) {
    mainWindow.window = dialog;
    mainWindow.list = GetDlgItem(dialog, IDC_LIST);
    mainWindow.tree = GetDlgItem(dialog, IDC_TREE);
    SetUpListView(mainWindow.list);
    SetUpCellClicks(mainWindow.list);
    SetUpEmptyNote(mainWindow.list);
    SetUpEmptyNote(mainWindow.tree);
    SetUpTreeMarks(mainWindow.tree);
    CreateStatusBar(dialog);
    SetUpEditor(dialog);
    SetUpControlTips(dialog);
    SetUpResolution(dialog);

    LoadSettings();
    StartWordCompletion();
    ApplyTopmost();
    ApplyViewLook(dialog);
    ShowEntryPictures();
    ShowPreviewArea();
    ShowChosenView();
    mainWindow.listClient.window = dialog;
    mainWindow.listClient.refreshViews = RefreshViews;
    mainWindow.listClient.collectEdits = [] { TakeEditsOver(Warn::kNever); };
    mainWindow.listClient.classifyEntry = [](const wchar_t* text) {
        return static_cast<int>(ParseCommand(text).kind);
    };
    mainWindow.listClient.entriesEdited = OnEntriesEdited;
    WatchStore();
    StartCountingUses();
    LoadList(mainWindow.entries, mainWindow.listClient);
    ForgetActions();
    StartHotkeys(dialog);

    mainWindow.menuBar = CreateMenuBar();
    SetMenu(dialog, mainWindow.menuBar);
    GiveComfortableSize(dialog);
    mainWindow.maximizeWhenShown = RestoreWindowPlace(dialog);
    LayOutControls(dialog);
    ShareListWidth();
    ApplyTheme();
    RefreshViews(false);
    OnListRead();
    // Later: a box in the middle of the start would hold up the rest of it.
    PostMessageW(dialog, WM_COMMAND, CMD_UNSAVED_TEXT, 0);
    PostMessageW(dialog, WM_COMMAND, CMD_LIST_DAMAGE, 0);
    // Somebody who opens the window for the first time sees what an entry is made of.
    SelectFirstEntry();
}

static LRESULT OnNotify(NMHDR& header) {
    OnTipNotify(header);
    if (header.hwndFrom == mainWindow.statusBar && header.code == NM_CLICK) OnStatusBarClick();
    if (header.hwndFrom != mainWindow.list && header.hwndFrom != mainWindow.tree) return 0;
    if (header.code == NM_DBLCLK && SelectedEntry() >= 0) SetFocus(DialogControl(IDC_TEXT));
    if (header.code == NM_CLICK && header.hwndFrom == mainWindow.list) OnCellClick();
    if (header.code == LVN_ODFINDITEMW) return FindTyped(reinterpret_cast<const NMLVFINDITEMW&>(header));
    if (const std::optional<LRESULT> answer = OnRenameNotify(header)) return *answer;
    OnDragNotify(header);
    OnViewNotify(header);
    return 0;
}

// The parts whose texts stand in the window, each anew.
static void OnLanguageChanged() {
    RelabelEditor();
    RelabelColumns(mainWindow.list);
    RebuildMenuBar();
    // Captions differ in length, and a menu bar may need a second line.
    LayOutControls(mainWindow.window);
    RefreshViews(true);
    RedrawWindow(mainWindow.window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// The Alt press that brings the window to the front arrives in its queue, where it would open the menu bar.
static bool IsOurAltPress(LPARAM key) {
    constexpr ULONGLONG kArrivesWithinMilliseconds = 500;
    return key == 0 && GetTickCount64() - mainWindow.broughtToFrontAt < kArrivesWithinMilliseconds;
}

static bool OnSystemCommand(WPARAM command, LPARAM lParam) {
    constexpr WPARAM kCommandBits = 0xFFF0;  // the low four are Windows' own
    switch (command & kCommandBits) {
        case SC_MINIMIZE: return MinimizeMainWindow(), true;
        case SC_KEYMENU: return IsOurAltPress(lParam);
        default: return false;
    }
}

// A window that was maximised when it was last seen comes up so, once it is shown at all.
static void OnShowWindow(bool shown) {
    // Not seen yet, so nothing moves under anybody's eyes.
    if (shown && HaveUsesChanged()) ShowUsesAnew();
    // Posted: not every Windows tells a hidden window of its resolution, but then on the way to the screen.
    if (shown && PlaceUntilSeen()) PostMessageW(mainWindow.window, WM_SEEN, 0, 0);
    if (!shown || !mainWindow.maximizeWhenShown) return;
    mainWindow.maximizeWhenShown = false;
    PostMessageW(mainWindow.window, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
}

static void OnSize(HWND dialog) {
    LayOutControls(dialog);
    ShareListWidth();
    PlaceOffer();
}

static void OnDpiChanged(HWND dialog, UINT dpi, LPARAM suggested) {
    OnResolutionChanged(dialog, dpi, reinterpret_cast<const RECT*>(suggested));
    ShowEntryPictures();
    OnSize(dialog);
}

static void OnGetMinMaxInfo(MINMAXINFO& info) {
    // Asked while the dialog is being made, too.
    if (!mainWindow.window) return;
    const SIZE smallest = SmallestSize(mainWindow.window);
    info.ptMinTrackSize = {smallest.cx, smallest.cy};
}

static void OnSystemSetting(HWND dialog, WPARAM what, LPARAM area) {
    OnSettingChange(area);
    OnTaskBarChange();
    if (what == SPI_SETWORKAREA) KeepOnScreen(dialog);
    if (what != SPI_SETNONCLIENTMETRICS) return;
    ApplyViewLook(dialog);
    OnSize(dialog);
}

static INT_PTR CALLBACK MainProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (OnDragMessage(message, lParam)) return TRUE;
    switch (message) {
        case WM_SIZE: return OnSize(dialog), TRUE;
        case WM_DPICHANGED: return OnDpiChanged(dialog, LOWORD(wParam), lParam), TRUE;
        case WM_DISPLAYCHANGE: return KeepOnScreen(dialog), OnTaskBarChange(), FALSE;
        case WM_GETMINMAXINFO: return OnGetMinMaxInfo(*reinterpret_cast<MINMAXINFO*>(lParam)), TRUE;
        case WM_TIMER: return OnTimer(wParam), TRUE;
        case WM_INITDIALOG: return OnInitDialog(dialog), FALSE;
        case WM_SHOWWINDOW: return OnShowWindow(wParam != 0), FALSE;
        case WM_COMMAND: return RouteCommand(wParam, lParam);
        // Time has passed since.
        case WM_ACTIVATE: return LOWORD(wParam) != WA_INACTIVE ? RefreshPreview() : void(), FALSE;
        case WM_INITMENU:
            // The selection has changed since, and the registry may have.
            if (reinterpret_cast<HMENU>(wParam) == mainWindow.menuBar)
                RefreshMenuChecks(mainWindow.menuBar);
            return TRUE;
        case WM_MENUCOMMAND: return OnMenuCommand(dialog, wParam, lParam), TRUE;
        case WM_NOTIFY:
            SetWindowLongPtrW(dialog, DWLP_MSGRESULT, OnNotify(*reinterpret_cast<NMHDR*>(lParam)));
            return TRUE;
        // F1, also in the dialogs that this window owns.
        case WM_HELP: return OpenGuideHere(), TRUE;
        case WM_CONTEXTMENU:
            if (reinterpret_cast<HWND>(wParam) == DialogControl(IDC_INSERT)) {
                return ShowInsertMenu(DialogControl(IDC_INSERT)), TRUE;
            }
            return OnContextMenu(reinterpret_cast<HWND>(wParam), lParam);
        case WM_RENAMED: return OnRenamed(), TRUE;
        case WM_SEEN: return ForgetPlaceUntilSeen(), TRUE;
        case WM_SELECTION_CHANGED: return OnSelectionChanged(), TRUE;
        case WM_LANGUAGE_CHANGED: return OnLanguageChanged(), TRUE;
        // Asked and told: whichever comes first, nothing may be waiting for a timer then. No question: the
        // session does not wait for an answer.
        case WM_QUERYENDSESSION: return SaveWithoutAsking(), FALSE;
        case WM_ENDSESSION: return wParam ? SaveWithoutAsking() : ForgetUnsavedText(), FALSE;
        case WM_CLOSE: return CloseMainWindow(), TRUE;
        case WM_DESTROY: return RememberLook(), TRUE;
        case WM_SYSCOMMAND: return OnSystemCommand(wParam, lParam);
        // FALSE: the system still has to see to its end of the raw input.
        case WM_INPUT: return OnRawKey(), FALSE;
        case WM_WTSSESSION_CHANGE: return OnSessionChange(wParam), TRUE;
        case WM_POWERBROADCAST: return OnPowerChange(wParam), FALSE;
        case WM_SETTINGCHANGE: return OnSystemSetting(dialog, wParam, lParam), FALSE;
        case WM_SYSCOLORCHANGE: return OnSystemColorsChanged(dialog), TRUE;
        default: return FALSE;
    }
}

HWND CreateMainWindow(HINSTANCE instance) {
    RegisterHotkeyField();
    RegisterLinkLine();
    RegisterSplitter(instance);
    return CreateDialogParamW(instance, MAKEINTRESOURCEW(IDD_MAIN), nullptr, MainProcedure, 0);
}

}  // namespace verbatix
