#include "ui/views/entry_views.h"

#include <commctrl.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/language.h"
#include "ids.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "ui/editor/editor.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/state/notice.h"
#include "ui/state/status_bar.h"
#include "ui/views/list_columns.h"
#include "ui/views/list_modes.h"
#include "ui/views/list_rows.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

void ShowChosenView() {
    const HWND shown = ShownView();
    const HWND other = shown == mainWindow.tree ? mainWindow.list : mainWindow.tree;
    const bool hasKeyboard = GetFocus() == other;
    ShowWindow(shown, SW_SHOW);
    if (hasKeyboard) SetFocus(shown);
    ShowWindow(other, SW_HIDE);
    // Captions without size: they are there for the access key, which a hidden one would not have.
    const bool isTree = shown == mainWindow.tree;
    ShowWindow(DialogControl(IDC_TREE_CAPTION), isTree ? SW_SHOW : SW_HIDE);
    ShowWindow(DialogControl(IDC_LIST_CAPTION), isTree ? SW_HIDE : SW_SHOW);
}

// The line at the bottom of the window, a click on which leads back.
static void TellMode() {
    const std::wstring line = ModeLine(mainWindow.rows.size());
    if (line.empty()) {
        TakeNoticeDown(Notice::kListMode);
    } else {
        PutNotice(Notice::kListMode, line, {text::kShowAllEntries, [] { ShowListMode(ListMode::kAll); }});
    }
}

void RefreshViews(bool keepSelection) {
    MainWindow& main = mainWindow;
    if (!main.list) return;
    static std::pair<ListMode, std::wstring> shownBefore;
    // Of those in selected groups only the groups stay selected.
    std::vector<int> selected;
    if (keepSelection) {
        selected = SelectedInList();
        const auto shown = std::find(selected.begin(), selected.end(), SelectedEntry());
        if (shown != selected.end()) std::rotate(selected.begin(), shown, shown + 1);
    }
    ListOrder order = {FieldText(IDC_FILTER), settings.useIgnoreCase != 0,
                       IsTreeShown() ? -1 : settings.sortColumn, settings.sortDescending != 0};
    order.usesOf = UsesOf;
    const std::pair shownNow(main.listMode, order.filter);
    if (std::exchange(shownBefore, shownNow) == shownNow && !selected.empty())
        order.pinned = selected.front();
    if (main.listMode == ListMode::kClashes) order.sortColumn = -1;
    main.rows = RowsOfMode(ShownRows(main.entries, order), order.pinned);
    main.entryCount = CountEntries(main.entries);
    RefreshList(selected);
    RefreshTree(SelectedEntry(), IsFiltered());
    TellMode();
    UpdateStatusBar();
    TellSelectionChanged();
}

void ShowListMode(ListMode mode) {
    if (std::exchange(mainWindow.listMode, mode) == mode) return;
    ShowChosenView();
    RefreshViews(true);
    if (mode != ListMode::kAll && SelectedEntry() < 0) SelectFirstEntry();
    ScrollToListRow(SelectedEntry());
}

void SelectEntries(const std::vector<int>& positions) {
    if (positions.empty()) return;
    const auto isHidden = [](int position) {
        const auto found = mainWindow.entries.find(position);
        return found != mainWindow.entries.end() && !IsBlank(found->second.current) &&
               !HasListRow(position);
    };
    if (IsFiltered() && std::any_of(positions.begin(), positions.end(), isHidden)) {
        SetDlgItemTextW(mainWindow.window, IDC_FILTER, L"");
        ShowListMode(ListMode::kAll);
        RefreshViews(true);
    }
    SelectListRows(positions);
    ScrollToListRow(SelectedEntry());
    SelectInTree(SelectedInList(), SelectedEntry());
}

void SelectEntry(int position) {
    SelectEntries({position});
}

static std::vector<int> ShownOrder() {
    return IsTreeShown() ? EntriesBelow(ShownTree(), 0) : mainWindow.rows;
}

void SelectAllEntries() {
    std::vector<int> all = ShownOrder();
    const auto shown = std::find(all.begin(), all.end(), SelectedEntry());
    if (shown != all.end()) std::rotate(all.begin(), shown, shown + 1);
    SelectEntries(all);
}

std::vector<int> SelectedEntries() {
    if (!IsTreeShown()) return SelectedInList();
    std::vector<int> positions;
    std::set<int> known;
    for (const int node : MarkedNodes()) {
        for (const int position : EntriesBelow(ShownTree(), node)) {
            if (known.insert(position).second) positions.push_back(position);
        }
    }
    return positions;
}

void CountSelected() {
    mainWindow.selectedCount = SelectedEntries().size();
}

void SelectFirstEntry() {
    const std::vector<int> rows = ShownOrder();
    if (!rows.empty()) SelectEntry(rows.front());
}

void SelectNextHit(bool above) {
    const std::vector<int> rows = ShownOrder();
    if (rows.empty()) return;
    const auto found = std::find(rows.begin(), rows.end(), SelectedEntry());
    if (above) return SelectEntry(found == rows.begin() || found == rows.end() ? rows.back() : found[-1]);
    SelectEntry(found == rows.end() || found + 1 == rows.end() ? rows.front() : found[1]);
}

int NeighbourOf(const std::vector<int>& positions) {
    const std::vector<int> rows = ShownOrder();
    const std::set<int> among(positions.begin(), positions.end());
    int above = -1;
    bool isBelow = false;
    for (const int row : rows) {
        const bool isOne = among.count(row) != 0;
        if (!isOne && isBelow) return row;
        if (!isOne) above = row;
        isBelow |= isOne;
    }
    return isBelow ? above : -1;
}

void OnSelectionChanged() {
    mainWindow.selectionIsTold = false;
    const std::size_t before = mainWindow.selectedCount;
    CountSelected();
    EnableSelectionButtons();
    if (mainWindow.selectedCount != before) WithdrawOffer();
    UpdateStatusBar();
    // Several of these come of one click, and the later ones while the user is asked about a long text.
    static bool isFollowing = false;
    if (SelectedEntry() == editor.position || std::exchange(isFollowing, true)) return;
    WithdrawOffer();
    const bool isSaved = SaveEdits(Warn::kAlways);
    isFollowing = false;
    if (!isSaved) return SelectEntry(editor.position);
    ShowInEditor(SelectedEntry());
}

// Selected when the user turned to the filter; -1: he has gone to a hit since.
static int selectedBeforeFilter = -1;

static void OnFilterChanged() {
    SaveEdits(Warn::kNever);
    RefreshViews(true);
    if (GetWindowTextLengthW(DialogControl(IDC_FILTER)) > 0) {
        SelectFirstEntry();
    } else if (HasListRow(selectedBeforeFilter)) {
        SelectEntry(selectedBeforeFilter);
    }
}

void OnFilterNotification(int code) {
    switch (code) {
        case EN_CHANGE: return OnFilterChanged();
        case EN_SETFOCUS:
            if (selectedBeforeFilter < 0) selectedBeforeFilter = SelectedEntry();
            break;
        case EN_KILLFOCUS:
            // Not where another program has come to the front: the search goes on when the user is back.
            if (IsChild(mainWindow.window, GetFocus())) selectedBeforeFilter = -1;
            break;
        default: break;
    }
}

void ShowUsesAnew() {
    const HWND list = mainWindow.list;
    const bool isSorted = settings.sortColumn == kLastUsedColumn || settings.sortColumn == kUsesColumn;
    const bool isSeen = settings.showUses || mainWindow.listMode == ListMode::kUnused;
    if (!isSeen) return;
    // Not under the user's hands: rows that go while he is here stay until he does something.
    const bool isHere = IsWindowVisible(mainWindow.window) && GetActiveWindow() == mainWindow.window;
    const bool isAway = !isHere && !mainWindow.listCommandsBlocked;
    if (isAway && (isSorted || mainWindow.listMode == ListMode::kUnused)) return RefreshViews(true);
    InvalidateRect(list, nullptr, FALSE);
}

void SwitchUseColumns() {
    RunSettingCommand(CMD_SHOW_USES);
    if (!settings.showUses && settings.sortColumn > kTextColumn) ChangeSetting(&Settings::sortColumn, -1);
    RefreshViews(true);
}

bool CanSort() {
    return !IsTreeShown() && mainWindow.listMode != ListMode::kClashes;
}

void SortEntries(int sortColumn, int descending) {
    if (!CanSort()) return;
    const SettingsBatch together;
    if (sortColumn != settings.sortColumn) ChangeSetting(&Settings::sortColumn, sortColumn);
    if (descending != settings.sortDescending) ChangeSetting(&Settings::sortDescending, descending);
    RefreshViews(true);
}

void OnViewNotify(const NMHDR& header) {
    if (header.hwndFrom == mainWindow.tree) return OnTreeNotify(header);
    if (header.code != LVN_COLUMNCLICK) return OnListNotify(header);
    int column = settings.sortColumn;
    int descending = settings.sortDescending;
    ClickColumn(ColumnAt(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem), column, descending);
    SortEntries(column, descending);
}

}  // namespace verbatix
