#include "ui/editor/insert_menu.h"

#include <string>
#include <vector>

#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "ui/editor/code_catalogue.h"
#include "ui/editor/insertion.h"
#include "ui/state/main_window.h"

namespace verbatix {

static UniqueMenu BuildInsertMenu(const std::vector<CodeItem>& items) {
    UniqueMenu menu(CreatePopupMenu());
    HMENU submenu = nullptr;
    int group = 0;
    UINT_PTR id = 1;
    for (const CodeItem& item : items) {
        if (item.group != group) {
            group = item.group;
            submenu = CreatePopupMenu();
            AppendMenuW(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                        LanguageText(group).c_str());
        }
        std::wstring line = item.token + (item.meaning.empty() ? L"" : L"\t") + item.meaning;
        ReplaceAll(line, L"&", L"&&");
        AppendMenuW(submenu, MF_STRING, id++, line.c_str());
    }
    return menu;
}

void ShowInsertMenu(HWND button) {
    const std::vector<CodeItem> items = CodeItems();
    const UniqueMenu menu = BuildInsertMenu(items);
    RECT place = {};
    GetWindowRect(button, &place);
    TPMPARAMS beside = {};
    beside.cbSize = sizeof beside;
    beside.rcExclude = place;
    const int chosen =
        TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_VERTICAL, static_cast<int>(place.left),
                         static_cast<int>(place.bottom), mainWindow.window, &beside);
    if (chosen <= 0 || static_cast<std::size_t>(chosen) > items.size()) return;
    const CodeItem& item = items[static_cast<std::size_t>(chosen) - 1];
    InsertIntoText(item.token, item.atStart);
}

}  // namespace verbatix
