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

void RefreshList(int selected) {
    const HWND list = mainWindow.list;
    SendMessageW(list, LVM_SETITEMCOUNT, mainWindow.rows.size(), LVSICF_NOSCROLL);
    // A scroll bar may have come or gone.
    ShareListWidth();
    SelectListRow(selected);
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
        case LVN_ITEMCHANGED: PostMessageW(mainWindow.window, WM_SELECTION_CHANGED, 0, 0); break;
        default: break;
    }
}

}  // namespace verbatix
