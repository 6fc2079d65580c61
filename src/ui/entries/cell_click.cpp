#include "ui/entries/cell_click.h"

#include <commctrl.h>
#include <windowsx.h>

#include "base/common_controls.h"
#include "ids.h"
#include "ui/entries/rename.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"

namespace verbatix {

namespace {

struct CellClick {
    int row = -1;  // -1: the click does nothing but select
    int column = 0;
    bool activates = false;  // it brought the window to the front
};

CellClick click;

bool WasSelectedAlone(HWND list, int row) {
    return GetFocus() == list && ListView_GetSelectedCount(list) == 1 &&
           ListView_GetItemState(list, row, LVIS_SELECTED) != 0;
}

void NotePress(HWND list, WPARAM keys, LPARAM place) {
    LVHITTESTINFO hit = {};
    hit.pt = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    SendMessageW(list, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    const bool isSecond = hit.iItem >= 0 && !click.activates && !(keys & (MK_CONTROL | MK_SHIFT)) &&
                          WasSelectedAlone(list, hit.iItem);
    click = {isSecond ? hit.iItem : -1, hit.iSubItem, false};
}

void Forget() {
    click.row = -1;
    KillTimer(mainWindow.window, TIMER_CELL_EDIT);
}

LRESULT CALLBACK WithCellClicks(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                DWORD_PTR) noexcept {
    switch (message) {
        case WM_MOUSEACTIVATE: click.activates = GetActiveWindow() != mainWindow.window; break;
        case WM_LBUTTONDOWN:
            KillTimer(mainWindow.window, TIMER_CELL_EDIT);
            NotePress(list, wParam, lParam);
            break;
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_KILLFOCUS: Forget(); break;
        case WM_NCDESTROY: RemoveSubclass(list, WithCellClicks, id); break;
        default: break;
    }
    return PassToSubclassed(list, message, wParam, lParam);
}

}  // namespace

void SetUpCellClicks(HWND list) {
    constexpr UINT_PTR kId = 3;
    AddSubclass(list, WithCellClicks, kId);
}

void OnCellClick() {
    if (click.row >= 0) SetTimer(mainWindow.window, TIMER_CELL_EDIT, GetDoubleClickTime(), nullptr);
}

void OnCellTimer() {
    const CellClick on = click;
    Forget();
    if (on.row < 0 || mainWindow.listCommandsBlocked || !WasSelectedAlone(mainWindow.list, on.row)) return;
    switch (on.column) {
        case 0: SetFocus(DialogControl(IDC_KEY)); break;
        case 1: RenameSelected(); break;
        default: SetFocus(DialogControl(IDC_TEXT)); break;
    }
}

}  // namespace verbatix
