#include "ui/views/list_columns.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

#include "base/language.h"
#include "base/local_time.h"
#include "store/settings.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/views/list_modes.h"

namespace verbatix {

namespace {

struct Column {
    ListColumn id;
    int title;    // language text
    int percent;  // of the list's width, at the first layout or when it comes
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
    {kHotkeyColumn, text::kHotkeyColumn, 24, Always},
    {kLabelColumn, text::kLabelColumn, 24, Always},
    {kTextColumn, text::kTextColumn, 52, Always},
    {kLastUsedColumn, text::kLastUsedColumn, 19, IsUseShown},
    {kUsesColumn, text::kUsesColumn, 9, IsUseShown},
    {kClashColumn, text::kClashColumn, 24, IsClashShown},
};

// In the control's order.
std::vector<const Column*> shown;

int ListWidth(HWND list) {
    RECT client = {};
    GetClientRect(list, &client);
    return static_cast<int>(client.right) - GetSystemMetrics(SM_CXVSCROLL);
}

int WidthOf(HWND list, const Column& column) {
    return std::max(40, ListWidth(list) * column.percent / 100);
}

void Insert(HWND list, int index, const Column& column) {
    LVCOLUMNW info = {};
    info.mask = LVCF_SUBITEM | LVCF_WIDTH | LVCF_FMT;
    info.fmt = column.id == kUsesColumn ? LVCFMT_RIGHT : LVCFMT_LEFT;
    info.cx = WidthOf(list, column);
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
    for (int index = 0; index < static_cast<int>(shown.size()); ++index) {
        const bool isFirst = shown[static_cast<std::size_t>(index)]->id == kClashColumn;
        order.insert(isFirst ? order.begin() : order.end(), index);
    }
    SendMessageW(list, LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
}

}  // namespace

void ShowColumns(HWND list) {
    std::vector<const Column*> wanted;
    for (const Column& column : kColumns) {
        if (column.isShown()) wanted.push_back(&column);
    }
    const bool isOther = wanted != shown;
    if (isOther) {
        // The first ones are in both and stay.
        const auto [gone, come] = std::mismatch(shown.begin(), shown.end(), wanted.begin(), wanted.end());
        const auto kept = static_cast<int>(gone - shown.begin());
        for (int index = static_cast<int>(shown.size()) - 1; index >= kept; --index)
            SendMessageW(list, LVM_DELETECOLUMN, static_cast<WPARAM>(index), 0);
        for (int index = kept; index < static_cast<int>(wanted.size()); ++index)
            Insert(list, index, *wanted[static_cast<std::size_t>(index)]);
        shown = std::move(wanted);
    }
    int index = 0;
    for (const Column* column : shown) Label(list, index++, *column);
    if (!isOther) return;
    PutClashesFirst(list);
    StretchTextColumn(list);
}

ListColumn ColumnAt(int index) {
    const auto place = static_cast<std::size_t>(index);
    return place < shown.size() ? shown[place]->id : kTextColumn;
}

std::wstring ExtraCellText(int position, const ListEntry& entry, ListColumn column) {
    if (column == kClashColumn) return ClashText(position);
    const Uses uses = UsesOf(entry);
    if (column == kUsesColumn) return std::to_wstring(uses.count);
    return uses.count ? ShortDateAndTime(uses.last) : LanguageText(text::kNeverUsed);
}

void LayOutColumns(HWND list) {
    int index = 0;
    for (const Column* column : shown) ListView_SetColumnWidth(list, index++, WidthOf(list, *column));
    StretchTextColumn(list);
}

void StretchTextColumn(HWND list) {
    RECT client;
    if (!GetClientRect(list, &client)) return;
    // Room for the scroll bar stays free: one that comes must not bring the other one along.
    const bool scrolls = (GetWindowLongPtrW(list, GWL_STYLE) & WS_VSCROLL) != 0;
    int left = static_cast<int>(client.right) - (scrolls ? 0 : GetSystemMetrics(SM_CXVSCROLL));
    for (int index = 0; index < static_cast<int>(shown.size()); ++index) {
        if (index != kTextColumn) left -= ListView_GetColumnWidth(list, index);
    }
    // Beside the columns that come and go something of the text is to be seen all the same.
    ListView_SetColumnWidth(list, kTextColumn, std::max(client.right / 8, LONG{left}));
}

void ShowSortArrow(HWND list) {
    const HWND header = ListView_GetHeader(list);
    for (int index = 0; index < static_cast<int>(shown.size()); ++index) {
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
