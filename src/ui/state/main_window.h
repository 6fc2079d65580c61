// The main dialog: it owns the entry list, shows it, and is the hub to which the keyboard hook, the
// executor and the timers bring their work. All of it happens on the thread that created it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "store/list_file.h"
#include "ui/shell/tracking_tooltip.h"
#include "ui/shell/tray_icon.h"

namespace verbatix {

struct MainWindow {
    HWND window = nullptr;
    HWND list = nullptr;
    HWND tree = nullptr;  // in the place of the list when the option says so
    HWND statusBar = nullptr;
    HMENU menuBar = nullptr;
    EntryList entries;
    ListClient listClient;
    std::vector<int> rows;       // position keys of the entries that the list view shows, in its order
    std::size_t entryCount = 0;  // entries that are not deleted, shown or not
    bool listCommandsBlocked = false;  // an entry is being dragged or a menu of the view is open
    RECT minimumRectangle = {};
    bool maximizeWhenShown = false;  // not shown yet, and maximised when it was last seen
    ULONGLONG broughtToFrontAt = 0;  // milliseconds since the system started
    TrackingTooltip tooltip;
    TrayIcon tray;
};

// The one main window of the process.
extern MainWindow mainWindow;

// Creates the dialog, hidden: reads the settings and the list, fills the hotkey tables, installs the
// keyboard hook and starts the timers. Returns the window or null.
HWND CreateMainWindow(HINSTANCE instance);

// Shows the window and brings it to the front, wherever it was hidden. The hook is installed anew unless
// hotkeys are paused: Windows drops a slow hook without a word, and the user who comes here may have
// come because of that.
void ShowMainWindow();

// The mouse on the tray icon: the left button shows the window, the right one the icon's menu.
void OnTrayClick(UINT mouseMessage);

// Switches hotkeys off, or on again.
void PauseHotkeys();

// Keeps the window above all others, or not, by the option.
void ApplyTopmost();

// Fills the hotkey tables of the hook from the list. Returns the number of entries with text.
int RebuildHotkeyTables(bool refreshTree);

// Shows the number of entries, whether hotkeys are on, and nothing else: part 3 of the status bar is the
// clock watch's own.
void UpdateStatusBar();

}  // namespace verbatix
