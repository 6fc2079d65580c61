#include "ui/views/list_columns.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/local_time.h"
#include "base/screen_scale.h"
#include "store/settings.h"
#include "ui/look/view_look.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/views/list_modes.h"

namespace verbatix {

namespace {

struct Column {
    ListColumn id;
    int title;             // language text
    int Settings::*width;  // as the user has chosen it; null: not kept
    int pixels;            // of a column beside the first three, at 100 % and in the normal size
    bool (*isShown)();
};

bool Always() {
    return true;
}

bool IsClashShown() {
    return mainWindow.listMode == ListMode::kClashes;
}

// Not beside the clashes, which need the room.
bool IsUseShown() {
    return settings.showUses && !IsClashShown();
}

constexpr Column kColumns[] = {
    {kHotkeyColumn, text::kHotkeyColumn, &Settings::hotkeyWidth, 0, Always},
    {kLabelColumn, text::kLabelColumn, &Settings::labelWidth, 0, Always},
    {kTextColumn, text::kTextColumn, nullptr, 0, Always},
    {kLastUsedColumn, text::kLastUsedColumn, nullptr, 125, IsUseShown},
    {kUsesColumn, text::kUsesColumn, nullptr, 55, IsUseShown},
    {kClashColumn, text::kClashColumn, nullptr, 135, IsClashShown},
};
constexpr int kSharing = 3;  // the first ones, which share what the others leave

struct Columns {
    std::vector<const Column*> shown;  // in the control's order
    // In place of Column::pixels, for as long as the program runs; 0: not dragged.
    std::array<int, std::size(kColumns)> dragged = {};
    bool sharing = false;    // notifications come from our own doing
    bool areChosen = false;  // the user has dragged one since the widths were read
};

Columns columns;

constexpr UINT_PTR kColumnsSubclass = 1;

int Count() {
    return static_cast<int>(columns.shown.size());
}

int& DraggedWidth(const Column& column) {
    return columns.dragged[static_cast<std::size_t>(&column - kColumns)];
}

// Pixels as they are at this resolution and in the size that the user has chosen for the list.
int Enlarged(int pixels) {
    return Scaled(pixels * ViewSizePercent() / 100, mainWindow.dpi);
}

// Of a column beside those that share the list.
int OwnWidth(const Column& column) {
    const int dragged = DraggedWidth(column);
    return Enlarged(dragged ? dragged : column.pixels);
}

void Insert(HWND list, int index, const Column& column) {
    LVCOLUMNW info = {};
    info.mask = LVCF_SUBITEM | LVCF_WIDTH | LVCF_FMT;
    info.fmt = column.id == kUsesColumn ? LVCFMT_RIGHT : LVCFMT_LEFT;
    info.cx = OwnWidth(column);
    info.iSubItem = index;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
}

void Label(HWND list, int index, const Column& column) {
    std::wstring title = LanguageText(column.title);
    LVCOLUMNW info = {};
    info.mask = LVCF_TEXT;
    info.pszText = title.data();
    SendMessageW(list, LVM_SETCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
}

// What a clash is about stands before what clashes.
void PutClashesFirst(HWND list) {
    std::vector<int> order;
    for (int index = 0; index < Count(); ++index) {
        const bool isFirst = columns.shown[static_cast<std::size_t>(index)]->id == kClashColumn;
        order.insert(isFirst ? order.begin() : order.end(), index);
    }
    SendMessageW(list, LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
}

// The user has dragged the edge of a title, and the other columns follow.
void OnColumnDragged() {
    if (columns.sharing) return;
    // All of them: a share would follow the window, but not the one beside it.
    int index = 0;
    for (const Column* column : columns.shown) {
        const int width = ListView_GetColumnWidth(mainWindow.list, index++);
        if (column->width) {
            settings.*column->width = Unscaled(width, mainWindow.dpi);
        } else if (column->pixels && width != OwnWidth(*column)) {
            DraggedWidth(*column) =
                std::max(1, MulDiv(Unscaled(width, mainWindow.dpi), 100, ViewSizePercent()));
        }
    }
    columns.areChosen = true;
    ShareListWidth();
}

bool IsNewWidth(const NMHDR& header) {
    if (header.code != HDN_ITEMCHANGEDW && header.code != HDN_ITEMCHANGEDA) return false;
    const HDITEMW* const item = reinterpret_cast<const NMHEADERW&>(header).pitem;
    return item && (item->mask & HDI_WIDTH);
}

// The titles tell the list of their widths, and not every Windows tells the dialog.
LRESULT CALLBACK ListProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                               DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) RemoveSubclass(list, ListProcedure, id);
    const LRESULT answer = PassToSubclassed(list, message, wParam, lParam);
    if (message == WM_NOTIFY && IsNewWidth(*reinterpret_cast<const NMHDR*>(lParam))) OnColumnDragged();
    return answer;
}

}  // namespace

void SetUpColumns(HWND list) {
    columns.shown.clear();
    AddSubclass(list, ListProcedure, kColumnsSubclass);
    ShowColumns(list);
}

void ShowColumns(HWND list) {
    std::vector<const Column*> wanted;
    for (const Column& column : kColumns) {
        if (column.isShown()) wanted.push_back(&column);
    }
    if (wanted == columns.shown) return;
    const bool isVisible = IsWindowVisible(list) != FALSE;
    // One painting instead of one for each of the changes.
    if (isVisible) SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    const bool before = std::exchange(columns.sharing, true);
    // The first ones are in both and stay.
    const auto [gone, come] =
        std::mismatch(columns.shown.begin(), columns.shown.end(), wanted.begin(), wanted.end());
    const auto kept = static_cast<int>(gone - columns.shown.begin());
    for (int index = Count() - 1; index >= kept; --index)
        SendMessageW(list, LVM_DELETECOLUMN, static_cast<WPARAM>(index), 0);
    columns.shown = std::move(wanted);
    for (int index = kept; index < Count(); ++index) {
        Insert(list, index, *columns.shown[static_cast<std::size_t>(index)]);
        Label(list, index, *columns.shown[static_cast<std::size_t>(index)]);
    }
    PutClashesFirst(list);
    columns.sharing = before;
    ShareListWidth();
    if (isVisible) {
        SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}

void RelabelColumns(HWND list) {
    int index = 0;
    for (const Column* column : columns.shown) Label(list, index++, *column);
}

ListColumn ColumnAt(int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < columns.shown.size() ? columns.shown[place]->id : kTextColumn;
}

std::wstring ExtraCellText(int position, const ListEntry& entry, ListColumn column) {
    if (column == kClashColumn) return ClashText(position);
    const Uses uses = UsesOf(entry);
    if (column == kUsesColumn) return std::to_wstring(uses.count);
    return uses.count ? ShortDateAndTime(uses.last) : LanguageText(text::kNeverUsed);
}

void ShareListWidth() {
    const HWND list = mainWindow.list;
    RECT client = {};
    if (columns.sharing || !GetClientRect(list, &client)) return;
    constexpr int kLeastText = 60;
    // Beside others; in a narrow list they are scrolled to.
    constexpr int kLeastShared = 270;
    const UINT dpi = mainWindow.dpi;
    std::vector<int> others;
    for (int index = kSharing; index < Count(); ++index)
        others.push_back(OwnWidth(*columns.shown[static_cast<std::size_t>(index)]));
    int left = std::accumulate(others.begin(), others.end(), static_cast<int>(client.right), std::minus());
    if (!others.empty()) left = std::max(left, Enlarged(kLeastShared));
    const std::array<int, kSharing> shared = ColumnWidths(
        left, Scaled(settings.hotkeyWidth, dpi), Scaled(settings.labelWidth, dpi), Enlarged(kLeastText));
    std::vector<int> widths(shared.begin(), shared.end());
    widths.insert(widths.end(), others.begin(), others.end());
    columns.sharing = true;
    int index = 0;
    for (const int width : widths) {
        if (ListView_GetColumnWidth(list, index) != width) ListView_SetColumnWidth(list, index, width);
        ++index;
    }
    columns.sharing = false;
}

void RememberColumns() {
    if (!std::exchange(columns.areChosen, false)) return;
    for (const Column& column : kColumns) {
        if (column.width) ChangeSetting(column.width, settings.*column.width);
    }
}

void ShowSortArrow(HWND list) {
    const HWND header = ListView_GetHeader(list);
    for (int index = 0; index < Count(); ++index) {
        HDITEMW item = {};
        item.mask = HDI_FORMAT;
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        item.fmt &= ~(HDF_SORTUP | HDF_SORTDOWN);
        const bool isSorted = ColumnAt(index) == settings.sortColumn && !IsClashShown();
        if (isSorted) item.fmt |= settings.sortDescending ? HDF_SORTDOWN : HDF_SORTUP;
        SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    }
}

}  // namespace verbatix
