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

static int RowOf(int position) {
    const auto found = std::find(mainWindow.rows.begin(), mainWindow.rows.end(), position);
    return found == mainWindow.rows.end() ? -1 : static_cast<int>(found - mainWindow.rows.begin());
}

static std::vector<int> SelectedRows() {
    std::vector<int> rows;
    const auto next = [](int row) { return ListView_GetNextItem(mainWindow.list, row, LVNI_SELECTED); };
    // A control that is not there answers 0 for ever.
    for (int row = next(-1), last = -1; row > last; last = row, row = next(row)) rows.push_back(row);
    return rows;
}

void RefreshList(const std::vector<int>& selected) {
    const HWND list = mainWindow.list;
    SendMessageW(list, LVM_SETITEMCOUNT, mainWindow.rows.size(), LVSICF_NOSCROLL);
    ShowColumns(list);
    // A scroll bar may have come or gone.
    ShareListWidth();
    SelectListRows(selected);
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

// What was selected is found again by its position in the list: rows move when the order changes.
void SelectListRows(const std::vector<int>& positions) {
    const HWND list = mainWindow.list;
    std::vector<int> wanted = positions;
    std::sort(wanted.begin(), wanted.end());
    std::vector<int> rows;
    for (std::size_t row = 0; row < mainWindow.rows.size() && !wanted.empty(); ++row) {
        if (std::binary_search(wanted.begin(), wanted.end(), mainWindow.rows[row])) {
            rows.push_back(static_cast<int>(row));
        }
    }
    const int first = rows.empty() ? -1 : RowOf(positions.front());
    const int focus = first < 0 && !rows.empty() ? rows.front() : first;
    if (rows == SelectedRows() && focus == SelectedRow()) return;
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
    if (focus < 0) return;
    if (rows.size() > 1 && rows.size() == mainWindow.rows.size()) rows = {-1};
    for (const int row : rows) ListView_SetItemState(list, row, LVIS_SELECTED, LVIS_SELECTED);
    ListView_SetItemState(list, focus, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetSelectionMark(list, focus);
}

int SelectedRow() {
    const int focus = ListView_GetNextItem(mainWindow.list, -1, LVNI_FOCUSED | LVNI_SELECTED);
    return focus >= 0 ? focus : ListView_GetNextItem(mainWindow.list, -1, LVNI_SELECTED);
}

int SelectedEntry() {
    const int row = SelectedRow();
    const bool exists = row >= 0 && static_cast<std::size_t>(row) < mainWindow.rows.size();
    return exists ? mainWindow.rows[static_cast<std::size_t>(row)] : -1;
}

std::vector<int> SelectedInList() {
    std::vector<int> positions;
    for (const int row : SelectedRows()) {
        const auto index = static_cast<std::size_t>(row);
        if (index < mainWindow.rows.size()) positions.push_back(mainWindow.rows[index]);
    }
    return positions;
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
        case LVN_ITEMCHANGED:
        case LVN_ODSTATECHANGED: TellSelectionChanged(); break;
        default: break;
    }
}

}  // namespace verbatix
