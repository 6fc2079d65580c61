#include "ui/menu_bar.h"

#include "base/language.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/commands.h"

namespace verbatix {

namespace {

// A row of the bar: `depth` 0 opens a menu of the bar, 1 stands in it, 2 in the submenu above it. A row
// without id opens a submenu; one without text draws a line.
struct Row {
    int depth;
    int id;
    int text;
};

constexpr Row kRows[] = {
    {0, 0, 1020},  // File
    {1, 1116, 1111},
    {1, 7, 1105},
    {1, 0, 0},
    {1, 12802, 1127},
    {0, 0, 1024},  // View
    {1, CMD_SHOW_TREE, 1138},
    {1, CMD_EXPAND_ALL, 1050},
    {1, CMD_COLLAPSE_ALL, 1051},
    {0, 0, 1021},  // Options
    {1, 0, 1025},  // closing, minimising, starting
    {2, 2, 1100},
    {2, 6, 1104},
    {2, 5, 1103},
    {2, 0, 0},
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
    {1, 0, 0},
    {1, 1115, 1110},
    {1, 3004, 1139},
};

void AppendRow(HMENU menu, const Row& row) {
    if (row.text == 0) {
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    } else {
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(row.id), LanguageText(row.text).c_str());
    }
}

void RefreshMenu(HMENU menu) {
    for (int position = GetMenuItemCount(menu) - 1; position >= 0; --position) {
        if (const HMENU submenu = GetSubMenu(menu, position)) {
            RefreshMenu(submenu);
            continue;
        }
        const int id = static_cast<int>(GetMenuItemID(menu, position));
        if (const std::optional<bool> on = IsSettingChecked(id)) {
            CheckMenuItem(menu, static_cast<UINT>(position),
                          MF_BYPOSITION | (*on ? MF_CHECKED : MF_UNCHECKED));
        }
    }
}

}  // namespace

HMENU CreateMenuBar() {
    const HMENU bar = CreateMenu();
    HMENU open[3] = {bar, nullptr, nullptr};
    for (const Row& row : kRows) {
        const HMENU parent = open[row.depth];
        if (row.id == 0 && row.text != 0) {
            const HMENU submenu = CreatePopupMenu();
            AppendMenuW(parent, MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                        LanguageText(row.text).c_str());
            open[row.depth + 1] = submenu;
        } else {
            AppendRow(parent, row);
        }
    }
    MENUINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = MIM_STYLE | MIM_APPLYTOSUBMENUS;
    info.dwStyle = MNS_NOTIFYBYPOS;
    SetMenuInfo(bar, &info);
    RefreshMenu(bar);
    return bar;
}

void RefreshMenuChecks(HMENU menuBar) {
    if (menuBar) RefreshMenu(menuBar);
}

void OnMenuCommand(HWND window, WPARAM position, LPARAM menu) {
    const UINT id = GetMenuItemID(reinterpret_cast<HMENU>(menu), static_cast<int>(position));
    if (id != static_cast<UINT>(-1)) SendMessageW(window, WM_COMMAND, id, kMenuBarMarker);
}

}  // namespace verbatix
