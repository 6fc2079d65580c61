#include "ui/window/dialog_keys.h"

#include <commctrl.h>

#include <algorithm>
#include <span>

#include "ids.h"
#include "store/entry.h"
#include "ui/editor/code_list.h"
#include "ui/editor/word_completion.h"
#include "ui/entries/drag_entry.h"
#include "ui/look/splitter.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

bool IsDown(int key) {
    return GetKeyState(key) < 0;
}

enum Held : unsigned { kNone = 0, kCtrl = 1, kAlt = 2, kShift = 4 };

unsigned HeldKeys() {
    return (IsDown(VK_CONTROL) ? kCtrl : kNone) | (IsDown(VK_MENU) ? kAlt : kNone) |
           (IsDown(VK_SHIFT) ? kShift : kNone);
}

bool IsTextField(HWND window) {
    const int id = GetDlgCtrlID(window);
    return GetParent(window) == mainWindow.window &&
           (id == IDC_TEXT || id == IDC_FILTER || id == IDC_LABEL || id == IDC_PREVIEW);
}

void GoTo(HWND control) {
    SetFocus(control);
    SendMessageW(control, EM_SETSEL, 0, -1);
}

void GoToView() {
    SetFocus(ShownView());
    if (SelectedEntry() >= 0 || SelectedNode() > 0) return;
    if (ShownView() == mainWindow.tree) {
        TreeView_SelectItem(mainWindow.tree, TreeView_GetRoot(mainWindow.tree));
    } else {
        SelectFirstEntry();
    }
}

void GoRound(HWND focus) {
    const HWND filter = DialogControl(IDC_FILTER);
    const HWND text = DialogControl(IDC_TEXT);
    if (focus == filter) return GoToView();
    SetFocus(focus == ShownView() && IsWindowEnabled(text) ? text : filter);
}

template <int command>
void Send() {
    PostMessageW(mainWindow.window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

// As the Menu key does; not every Windows turns Shift+F10 into the message by itself.
void ShowMenu() {
    PostMessageW(ShownView(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(ShownView()), -1);
}

void EnterView() {
    const HTREEITEM item = ShownView() == mainWindow.tree ? ItemOf(SelectedNode()) : nullptr;
    if (SelectedEntry() >= 0) {
        SetFocus(DialogControl(IDC_TEXT));
    } else if (item) {
        TreeView_Expand(mainWindow.tree, item, TVE_TOGGLE);
    }
}

struct Key {
    unsigned held;
    WPARAM key;
    void (*run)();
};

void GoOn() {
    GoRound(GetFocus());
}

// Wherever in the window the user is; their names stand beside the rows of the menus.
constexpr Key kWindowKeys[] = {
    {kCtrl, 'N', Send<CMD_NEW_ENTRY>},
    {kCtrl, 'D', Send<CMD_COPY_ENTRY>},
    {kCtrl, 'F', Send<CMD_FIND>},
    {kCtrl, 'S', Send<CMD_SAVE>},
    {kNone, VK_F2, Send<CMD_RENAME_ENTRY>},
    {kNone, VK_F3, Send<CMD_FIND_NEXT>},
    {kShift, VK_F3, Send<CMD_FIND_PREVIOUS>},
    {kNone, VK_F5, Send<CMD_TEST_ENTRY>},
    {kNone, VK_F6, GoOn},
    {kNone, VK_F8, FocusSplitter},
};

constexpr Key kViewKeys[] = {
    {kNone, VK_RETURN, EnterView},        {kNone, VK_DELETE, Send<CMD_DELETE_ENTRY>},
    {kShift, VK_F10, ShowMenu},           {kAlt, VK_UP, Send<CMD_MOVE_UP>},
    {kAlt, VK_DOWN, Send<CMD_MOVE_DOWN>}, {kCtrl, 'A', Send<CMD_SELECT_ALL>},
};

bool HandleKey(std::span<const Key> keys, WPARAM key, unsigned held) {
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const Key& row) { return row.held == held && row.key == key; });
    if (found == keys.end()) return false;
    found->run();
    return true;
}

// Leads from one of the list's modes back to the whole list; first of all Esc clears the filter. Where a
// name is edited in place, or a list has dropped down, it is theirs.
bool HandleModeKey(HWND focus, WPARAM key, unsigned held) {
    const bool clearsFilter = focus == DialogControl(IDC_FILTER) && GetWindowTextLengthW(focus) > 0;
    const bool isMine = focus == mainWindow.window || GetParent(focus) == mainWindow.window;
    if (held != kNone || key != VK_ESCAPE || mainWindow.listMode == ListMode::kAll) return false;
    if (clearsFilter || !isMine || SendMessageW(focus, CB_GETDROPPEDSTATE, 0, 0)) return false;
    ShowListMode(ListMode::kAll);
    return true;
}

// What is typed there is a step of the list like all the others. Not a text that is too long for an entry,
// which the list does not have.
bool TypesSteps(HWND focus) {
    if (focus == DialogControl(IDC_LABEL)) return true;
    return focus == DialogControl(IDC_TEXT) &&
           GetWindowTextLengthW(focus) <= static_cast<int>(kEditorTextLimit);
}

// The undo of a field can itself be undone: asked again and again, it goes to and fro.
bool HandleUndoKey(HWND focus, WPARAM key, unsigned held) {
    const bool isUndo = (held == kCtrl && key == 'Z') || (held == kAlt && key == VK_BACK);
    const bool isRedo = (held == kCtrl && key == 'Y') || (held == (kCtrl | kShift) && key == 'Z');
    // A name that is being edited in place.
    if ((!isUndo && !isRedo) || GetParent(focus) == ShownView()) return false;
    if (isUndo && !TypesSteps(focus) && SendMessageW(focus, EM_CANUNDO, 0, 0)) return false;
    return isUndo ? Send<CMD_UNDO>() : Send<CMD_REDO>(), true;
}

bool HandleFieldKey(HWND focus, WPARAM key, unsigned held) {
    const bool inFilter = focus == DialogControl(IDC_FILTER);
    if (held == kCtrl && key == 'A' && IsTextField(focus)) return GoTo(focus), true;
    if (held == kCtrl && key == VK_SPACE && focus == DialogControl(IDC_TEXT))
        return ShowCodesAtCaret(), true;
    if (held == kNone && key == VK_ESCAPE && IsTextField(focus)) {
        if (inFilter) SetWindowTextW(focus, L"");
        return true;
    }
    if (held == kNone && (key == VK_DOWN || key == VK_RETURN) && inFilter) return GoToView(), true;
    return false;
}

}  // namespace

bool HandleDialogKey(const MSG& message) {
    const HWND window = mainWindow.window;
    if (HandleCodeListMessage(message) || HandleCompletionMessage(message)) return true;
    // There every key is one to be taken.
    if (window && message.hwnd == DialogControl(IDC_HOTKEY)) return false;
    if ((message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) || !window) return false;
    if (!IsWindowEnabled(window) || (message.hwnd != window && !IsChild(window, message.hwnd)))
        return false;
    const WPARAM key = message.wParam;
    if (IsDragging()) {
        if (key == VK_ESCAPE) CancelDrag();
        return true;
    }
    const unsigned held = HeldKeys();
    // A name that is being edited in place has its keys to itself.
    const bool isRenaming = GetParent(message.hwnd) == ShownView();
    if (!isRenaming && HandleKey(kWindowKeys, key, held)) return true;
    if (HandleModeKey(message.hwnd, key, held)) return true;
    if (HandleUndoKey(message.hwnd, key, held)) return true;
    // A button that is drawn by its owner does not take Enter for a press.
    if (held == kNone && key == VK_RETURN && GetDlgCtrlID(message.hwnd) == IDC_OFFER_LINK)
        return Send<IDC_OFFER_LINK>(), true;
    return message.hwnd == ShownView() ? HandleKey(kViewKeys, key, held)
                                       : HandleFieldKey(message.hwnd, key, held);
}

}  // namespace verbatix
