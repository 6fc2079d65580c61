#include "ui/list_view.h"

#include <algorithm>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "ui/main_window.h"

namespace verbatix {

namespace {

struct Column {
    int title;         // language text
    int widthPercent;  // of the list's width at the first layout
};

constexpr Column kColumns[] = {{1000, 18}, {1001, 24}, {1002, 58}};

}  // namespace

void SetUpListView(HWND list) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    int index = 0;
    for (const Column& column : kColumns) {
        std::wstring title = LanguageText(column.title);
        LVCOLUMNW info = {};
        info.mask = LVCF_TEXT | LVCF_SUBITEM;
        info.pszText = title.data();
        info.iSubItem = index;
        SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
        ++index;
    }
}

void LayOutColumns(HWND list) {
    RECT client;
    GetClientRect(list, &client);
    const int width = static_cast<int>(client.right) - GetSystemMetrics(SM_CXVSCROLL);
    int index = 0;
    for (const Column& column : kColumns) {
        ListView_SetColumnWidth(list, index++, std::max(40, width * column.widthPercent / 100));
    }
}

std::wstring CellText(const ListEntry& entry, int column) {
    switch (column) {
        case 0:
            return (entry.keyCode & 0xFF) == 0 ? std::wstring()
                                               : FormatHotkeyDisplay(entry.keyCode, entry.modifier);
        case 1: return entry.label;
        default: return entry.text;
    }
}

void RefreshListView(bool keepSelection) {
    MainWindow& main = mainWindow;
    main.rows.clear();
    main.rows.reserve(main.entries.size());
    for (const auto& [position, slot] : main.entries) {
        if (*slot.current.text || *slot.current.label) main.rows.push_back(position);
    }
    if (!main.list) return;
    const int selected = ListView_GetNextItem(main.list, -1, LVNI_SELECTED);
    SendMessageW(main.list, LVM_SETITEMCOUNT, main.rows.size(), LVSICF_NOSCROLL);
    if (!keepSelection) {
        ListView_SetItemState(main.list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    } else if (selected >= 0) {
        ListView_SetItemState(main.list, selected, LVIS_SELECTED, LVIS_SELECTED);
    }
    InvalidateRect(main.list, nullptr, TRUE);
    UpdateStatusBar();
}

void SelectEntry(int position) {
    ListView_SetItemState(mainWindow.list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    const auto found = std::find(mainWindow.rows.begin(), mainWindow.rows.end(), position);
    if (found == mainWindow.rows.end()) return;
    const int row = static_cast<int>(found - mainWindow.rows.begin());
    ListView_SetItemState(mainWindow.list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(mainWindow.list, row, FALSE);
}

static void FillCell(NMLVDISPINFOW& request) {
    LVITEMW& item = request.item;
    const auto row = static_cast<std::size_t>(item.iItem);
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0 || row >= mainWindow.rows.size()) return;
    const auto slot = mainWindow.entries.find(mainWindow.rows[row]);
    if (slot == mainWindow.entries.end()) return;
    const std::wstring text = CellText(slot->second.current, item.iSubItem);
    const auto capacity = static_cast<std::size_t>(item.cchTextMax);
    CopyText(item.pszText, capacity, capacity, text);
}

LRESULT OnListNotify(const NMHDR& header) {
    if (header.code == LVN_GETDISPINFOW) {
        FillCell(*reinterpret_cast<NMLVDISPINFOW*>(const_cast<NMHDR*>(&header)));
    }
    return 0;
}

}  // namespace verbatix
