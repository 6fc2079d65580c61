#include "ui/dialog_keys.h"

#include <commctrl.h>

#include "ids.h"
#include "ui/main_window.h"

namespace verbatix {

namespace {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

// Ctrl alone: with Alt it is the key of characters.
bool OnlyCtrlIsDown() {
    return IsDown(VK_CONTROL) && !IsDown(VK_MENU) && !IsDown(VK_SHIFT);
}

bool IsTextField(HWND window) {
    const int id = GetDlgCtrlID(window);
    return GetParent(window) == mainWindow.window &&
           (id == IDC_TEXT || id == IDC_FILTER || id == IDC_LABEL);
}

void GoTo(HWND control) {
    SetFocus(control);
    SendMessageW(control, EM_SETSEL, 0, -1);
}

void GoToList() {
    SetFocus(mainWindow.list);
    if (ListView_GetNextItem(mainWindow.list, -1, LVNI_SELECTED) >= 0) return;
    ListView_SetItemState(mainWindow.list, 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

bool HandleCtrlKey(HWND focus, WPARAM key) {
    if (key == 'F') return GoTo(GetDlgItem(mainWindow.window, IDC_FILTER)), true;
    if (key == 'A' && IsTextField(focus)) return SendMessageW(focus, EM_SETSEL, 0, -1), true;
    return false;
}

}  // namespace

bool HandleDialogKey(const MSG& message) {
    const HWND window = mainWindow.window;
    if (message.message != WM_KEYDOWN || !window || !IsWindowEnabled(window)) return false;
    if (message.hwnd != window && !IsChild(window, message.hwnd)) return false;
    if (OnlyCtrlIsDown()) return HandleCtrlKey(message.hwnd, message.wParam);
    const bool inFilter = message.hwnd == GetDlgItem(window, IDC_FILTER);
    if (message.wParam == VK_ESCAPE && IsTextField(message.hwnd)) {
        if (inFilter) SetWindowTextW(message.hwnd, L"");
        return true;
    }
    if (message.wParam == VK_DOWN && inFilter) return GoToList(), true;
    return false;
}

}  // namespace verbatix
