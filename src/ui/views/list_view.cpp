#include "ui/views/list_view.h"

#include <algorithm>

#include "base/text.h"
#include "ids.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_kind.h"
#include "ui/views/list_columns.h"

namespace verbatix {

void SetUpListView(HWND list) {
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    SetUpColumns(list);
}

// What was selected is found again by its position in the list: rows move when the order changes.
static void SelectRow(int row) {
    const HWND list = mainWindow.list;
    const int selected = ListView_GetNextItem(list, -1, LVNI_SELECTED);
    if (row == selected) return;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (row >= 0)
        ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

static int RowOf(int position) {
    const auto found = std::find(mainWindow.rows.begin(), mainWindow.rows.end(), position);
    return found == mainWindow.rows.end() ? -1 : static_cast<int>(found - mainWindow.rows.begin());
}

void RefreshList(int selected) {
    const HWND list = mainWindow.list;
    SendMessageW(list, LVM_SETITEMCOUNT, mainWindow.rows.size(), LVSICF_NOSCROLL);
    ShowColumns(list);
    // A scroll bar may have come or gone.
    ShareListWidth();
    SelectListRow(selected);
    InvalidateRect(list, nullptr, TRUE);
    ShowSortArrow(list);
}

bool HasListRow(int position) {
    return RowOf(position) >= 0;
}

void ScrollToListRow(int position) {
    const int row = RowOf(position);
    if (row >= 0) ListView_EnsureVisible(mainWindow.list, row, FALSE);
}

void SelectListRow(int position) {
    SelectRow(RowOf(position));
}

int SelectedEntry() {
    const int row = ListView_GetNextItem(mainWindow.list, -1, LVNI_SELECTED);
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < mainWindow.rows.size();
    return exists ? mainWindow.rows[static_cast<std::size_t>(row)] : -1;
}

static void FillCell(NMLVDISPINFOW& request) {
    LVITEMW& item = request.item;
    const auto row = static_cast<std::size_t>(item.iItem);
    if (row >= mainWindow.rows.size()) return;
    const auto slot = mainWindow.entries.find(mainWindow.rows[row]);
    if (slot == mainWindow.entries.end()) return;
    const ListColumn column = ColumnAt(item.iSubItem);
    const ListEntry& entry = slot->second.current;
    if (item.mask & LVIF_IMAGE) item.iImage = static_cast<int>(KindOfEntry(entry.text));
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return;
    const std::wstring text =
        column <= kTextColumn ? CellText(entry, column) : ExtraCellText(slot->first, entry, column);
    const auto capacity = static_cast<std::size_t>(item.cchTextMax);
    CopyText(item.pszText, capacity, capacity, text);
}

int FindTyped(const NMLVFINDITEMW& request) {
    const bool isText = (request.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) != 0;
    if (!isText || !request.lvfi.psz || !*request.lvfi.psz) return -1;
    return FindRow(mainWindow.entries, mainWindow.rows, request.iStart, request.lvfi.psz);
}

void OnListNotify(const NMHDR& header) {
    switch (header.code) {
        case LVN_GETDISPINFOW:
            FillCell(*reinterpret_cast<NMLVDISPINFOW*>(const_cast<NMHDR*>(&header)));
            break;
        // Later, when the control is done with the click: the old row is unselected before the new one is
        // selected, and a message box must not come up in between.
        case LVN_ITEMCHANGED: PostMessageW(mainWindow.window, WM_SELECTION_CHANGED, 0, 0); break;
        default: break;
    }
}

}  // namespace verbatix
