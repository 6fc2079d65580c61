// What the parts of the main window share: its controls, the list of entries and how the views show it. A
// part changes what stands here, and tells the window what has happened by the messages of ids.h. UI thread
// only.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "store/list_file.h"

namespace verbatix {

// Which of the entries list and tree show, beside what the filter asks for.
enum class ListMode { kAll, kUnused, kClashes };

struct MainWindow {
    HWND window = nullptr;
    HWND list = nullptr;
    HWND tree = nullptr;  // in the place of the list when the option says so
    HWND statusBar = nullptr;
    HMENU menuBar = nullptr;
    UINT dpi = 96;  // the resolution for which everything in the window is drawn
    EntryList entries;
    ListClient listClient;
    std::vector<int> rows;  // position keys of the entries that the list view shows, in its order
    ListMode listMode = ListMode::kAll;
    std::size_t entryCount = 0;        // entries that are not deleted, shown or not
    bool listCommandsBlocked = false;  // an entry is being dragged or a menu of the view is open
    bool maximizeWhenShown = false;    // not shown yet, and maximised when it was last seen
    ULONGLONG broughtToFrontAt = 0;    // milliseconds since the system started
};

// The one main window of the process.
extern MainWindow mainWindow;

// A control of the dialog by its number, and the text that stands in it.
HWND DialogControl(int control);
std::wstring FieldText(int control);

// Whether the tree stands in the place of the list: not for clashes, which are in no order of a tree.
bool IsTreeShown();

// Whether the user has narrowed the views.
bool IsFiltered();

// The view that is shown: list or tree.
HWND ShownView();

}  // namespace verbatix
