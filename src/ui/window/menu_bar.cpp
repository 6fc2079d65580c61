#include "ui/window/menu_bar.h"

#include <optional>
#include <span>

#include "base/language.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/shell/autostart.h"
#include "ui/shell/language_menu.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"
#include "ui/window/commands.h"

namespace verbatix {

namespace {

// A row of a menu: `depth` 1 stands in it, 2 and 3 in the submenu above it. A row without id opens a
// submenu; one without text draws a line.
struct Row {
    int depth;
    int id;
    int text;
};

// In place of an id: the rows of the languages stand here.
constexpr int kLanguageRows = -1;

constexpr Row kFileRows[] = {
    {1, 1116, 1111},
    {1, 0, 1029},  // import
    {2, 1117, 1112},
    {2, 1118, 1113},
    {1, 0, 1320},  // export
    {2, CMD_EXPORT_SELECTION, 1303},
    {2, CMD_EXPORT_ALL, 1302},
    {2, CMD_COPY_ALL_AS_TEXT, 1304},
    {2, CMD_WRITE_EXCHANGE_FILE, 1305},
    {1, 0, 0},
    {1, 7, 1105},
    {1, 0, 1321},  // restart
    {2, 12804, 1128},
    {2, 12800, 1125},
    {2, 12801, 1126},
    {1, 12802, 1127},
};

constexpr Row kOptionRows[] = {
    {1, 0, 1025},  // closing, minimising, starting
    {2, 2, 1100},
    {2, 6, 1104},
    {2, 5, 1103},
    {2, 0, 0},
    {2, CMD_START_WITH_WINDOWS, 1120},
    {2, 3, 1101},
    {2, 4, 1102},
    {1, 0, 1026},  // date and time
    {2, 1112, 1106},
    {2, 1113, 1107},
    {1, 0, 1027},  // order of the paste menu
    {2, 2000, 1114},
    {2, 2001, 1115},
    {2, 2002, 1116},
    {2, 0, 0},
    {2, 3002, 1119},
    {2, 3000, 1117},
    {2, 3001, 1118},
    {1, 0, 1028},  // backups
    {2, 4001, 1121},
    {2, 4002, 1122},
    {2, 0, 0},
    {2, 4003, 1123},
    {2, 4004, 1124},
    {1, 0, 1032},  // the window
    {2, CMD_TOPMOST, 1131},
    {2, CMD_SET_FOCUS, 1143},
    {2, CMD_SOFT_PAINT, 1142},
    {2, 0, 1144},  // size
    {3, CMD_SIZE_FIRST, 1350},
    {3, CMD_SIZE_FIRST + 1, 1351},
    {3, CMD_SIZE_FIRST + 2, 1352},
    {1, 0, 1030},  // language
    {2, kLanguageRows, 1135},
    {1, 0, 0},
    {1, 1115, 1110},
    {1, CMD_SUGGEST_WORDS, 1140},
    {1, 3004, 1139},
};

constexpr Row kViewRows[] = {
    {1, CMD_SHOW_TREE, 1138}, {1, CMD_EXPAND_ALL, 1050}, {1, CMD_COLLAPSE_ALL, 1051}};

constexpr Row kHelpRows[] = {
    {1, 32794, 1137}, {1, 1114, 1108}, {1, 4005, 1109},  {1, 0, 0},        {1, 1018, 1132},
    {1, 2031, 1136},  {1, 0, 0},       {1, 44000, 1129}, {1, 44003, 1130},
};

struct Menu {
    int title;
    std::span<const Row> rows;
};

constexpr Menu kMenus[] = {{1020, kFileRows}, {1024, kViewRows}, {1021, kOptionRows}, {1022, kHelpRows}};

void AppendRow(HMENU menu, const Row& row) {
    if (row.id == kLanguageRows) {
        AppendLanguages(menu);
    } else if (row.text == 0) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else {
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(row.id), LanguageText(row.text).c_str());
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

std::optional<bool> IsChecked(int id) {
    return id == CMD_START_WITH_WINDOWS ? StartsWithWindows() : IsSettingChecked(id);
}

// What would do nothing is grey.
bool IsEnabled(int id) {
    switch (id) {
        case CMD_EXPAND_ALL:
        case CMD_COLLAPSE_ALL: return settings.showTree != 0;
        case CMD_EXPORT_SELECTION: return SelectedEntry() >= 0 || SelectedNode() >= 0;
        default: return true;
    }
}

void RefreshMenu(HMENU menu) {
    for (int position = GetMenuItemCount(menu) - 1; position >= 0; --position) {
        if (const HMENU submenu = GetSubMenu(menu, position)) {
            RefreshMenu(submenu);
            continue;
        }
        const int id = static_cast<int>(GetMenuItemID(menu, position));
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
    RefreshMenu(bar);
    return bar;
}

HMENU CreateOptionsMenu() {
    const HMENU menu = CreatePopupMenu();
    AppendRows(menu, kOptionRows);
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
