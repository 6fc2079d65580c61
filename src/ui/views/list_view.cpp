#include "ui/views/list_view.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/screen_scale.h"
#include "base/text.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_kind.h"

namespace verbatix {

namespace {

struct Column {
    int title;  // language text
    int Settings::*width;
};

constexpr Column kColumns[] = {{text::kHotkeyColumn, &Settings::hotkeyWidth},
                               {text::kLabelColumn, &Settings::labelWidth},
                               {text::kTextColumn, nullptr}};

struct Columns {
    bool sharing = false;    // notifications come from our own doing
    bool areChosen = false;  // the user has dragged one since the widths were read
};

Columns columns;

constexpr UINT_PTR kColumnsSubclass = 1;

}  // namespace

void RelabelColumns(HWND list) {
    int index = 0;
    for (const Column& column : kColumns) {
        std::wstring title = LanguageText(column.title);
        LVCOLUMNW info = {};
        info.mask = LVCF_TEXT;
        info.pszText = title.data();
        SendMessageW(list, LVM_SETCOLUMNW, static_cast<WPARAM>(index++), reinterpret_cast<LPARAM>(&info));
    }
}

void ShareListWidth() {
    const HWND list = mainWindow.list;
    RECT client = {};
    if (columns.sharing || !GetClientRect(list, &client)) return;
    constexpr int kLeastText = 60;
    const UINT dpi = mainWindow.dpi;
    const std::array<int, 3> widths =
        ColumnWidths(static_cast<int>(client.right), Scaled(settings.hotkeyWidth, dpi),
                     Scaled(settings.labelWidth, dpi), Scaled(kLeastText, dpi));
    columns.sharing = true;
    int index = 0;
    for (const int width : widths) {
        if (ListView_GetColumnWidth(list, index) != width) ListView_SetColumnWidth(list, index, width);
        ++index;
    }
    columns.sharing = false;
}

// The user has dragged the edge of a title, and the other columns follow.
static void OnColumnDragged() {
    if (columns.sharing) return;
    // All of them: a share would follow the window, but not the one beside it.
    int index = 0;
    for (const Column& column : kColumns) {
        const int width = ListView_GetColumnWidth(mainWindow.list, index++);
        if (column.width) settings.*column.width = Unscaled(width, mainWindow.dpi);
    }
    columns.areChosen = true;
    ShareListWidth();
}

static bool IsNewWidth(const NMHDR& header) {
    if (header.code != HDN_ITEMCHANGEDW && header.code != HDN_ITEMCHANGEDA) return false;
    const HDITEMW* const item = reinterpret_cast<const NMHEADERW&>(header).pitem;
    return item && (item->mask & HDI_WIDTH);
}

// The titles tell the list of their widths, and not every Windows tells the dialog.
static LRESULT CALLBACK ListProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) RemoveSubclass(list, ListProcedure, id);
    const LRESULT answer = PassToSubclassed(list, message, wParam, lParam);
    if (message == WM_NOTIFY && IsNewWidth(*reinterpret_cast<const NMHDR*>(lParam))) OnColumnDragged();
    return answer;
}

void SetUpListView(HWND list) {
    AddSubclass(list, ListProcedure, kColumnsSubclass);
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

void RememberColumns() {
    if (!std::exchange(columns.areChosen, false)) return;
    for (const Column& column : kColumns) {
        if (column.width) ChangeSetting(column.width, settings.*column.width);
    }
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

static void ShowSortArrow() {
    const HWND header = ListView_GetHeader(mainWindow.list);
    for (int column = 0; column < static_cast<int>(std::size(kColumns)); ++column) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        if (column == settings.sortColumn) item.fmt |= settings.sortDescending ? HDF_SORTDOWN : HDF_SORTUP;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&item));
    }
}

void RefreshList(const std::vector<int>& selected) {
    const HWND list = mainWindow.list;
    SendMessageW(list, LVM_SETITEMCOUNT, mainWindow.rows.size(), LVSICF_NOSCROLL);
    // A scroll bar may have come or gone.
    ShareListWidth();
    SelectListRows(selected);
    InvalidateRect(list, nullptr, TRUE);
    ShowSortArrow();
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
    if (item.mask & LVIF_IMAGE) item.iImage = static_cast<int>(KindOfEntry(slot->second.current.text));
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return;
    const std::wstring text = CellText(slot->second.current, item.iSubItem);
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
