#include "ui/entries/drag_entry.h"

#include <commctrl.h>
#include <windowsx.h>

#include <optional>
#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "ids.h"
#include "ui/entries/entry_placing.h"
#include "ui/entries/move_entry.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/insert_mark.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

struct Drag {
    int position = -1;  // of the dragged entry; -1: none is
    std::optional<Placement> drop;
};

Drag drag;

// What lies under the mouse.
struct Target {
    std::optional<Placement> drop;
    int litNode = -1;  // it goes into that
    RECT beside = {};  // or beside that, in client coordinates
    bool after = false;
    std::wstring name;
};

bool InLowerHalf(const RECT& item, POINT mouse) {
    return mouse.y >= (item.top + item.bottom) / 2;
}

Target TargetInTree(POINT mouse) {
    Target target;
    const int index = NodeAt(mouse, target.beside);
    if (index <= 0) return target;
    const TreeNode& node = ShownTree().nodes[static_cast<std::size_t>(index)];
    target.after = InLowerHalf(target.beside, mouse);
    target.drop = DropOnNode(ShownTree(), mainWindow.entries, drag.position, index, target.after);
    if (target.drop && node.kind != NodeKind::kEntry) target.litNode = index;
    target.name = node.name;
    // From the name on, so that the line shows the level too.
    RECT name = {};
    if (NodeRectangle(ItemOf(index), true, name)) target.beside.left = name.left;
    return target;
}

Target TargetInList(POINT mouse) {
    Target target;
    LVHITTESTINFO hit = {};
    hit.pt = {1, mouse.y};
    int row = ListView_HitTest(mainWindow.list, &hit);
    const int count = static_cast<int>(mainWindow.rows.size());
    if (row < 0) row = count - 1;
    if (row < 0 || !CanMoveInView()) return target;
    ListView_GetItemRect(mainWindow.list, row, &target.beside, LVIR_BOUNDS);
    target.after = InLowerHalf(target.beside, mouse);
    target.drop =
        DropInGap(mainWindow.rows, mainWindow.entries, drag.position, row + (target.after ? 1 : 0));
    return target;
}

Target TargetAt(POINT mouse) {
    RECT client = {};
    GetClientRect(ShownView(), &client);
    if (!PtInRect(&client, mouse)) return {};
    return ShownView() == mainWindow.tree ? TargetInTree(mouse) : TargetInList(mouse);
}

void Light(int node) {
    if (ShownView() == mainWindow.tree) TreeView_SelectDropTarget(mainWindow.tree, ItemOf(node));
}

void TellTarget(const Target& target) {
    std::wstring text;
    if (target.drop) {
        text = target.litNode > 0 ? FillIn(LanguageText(text::kMoveTo), {target.name})
                                  : LanguageText(text::kMoveHere);
    } else if (!CanMoveInView()) {
        text = LanguageText(text::kOrderIsFixed);
    }
    TellInStatusBar(text);
}

void ShowTarget(const Target& target) {
    Light(target.litNode);
    if (target.drop && target.litNode < 0) {
        RECT line = target.beside;
        line.top = target.after ? line.bottom : line.top;
        ShowInsertMark(ShownView(), line);
    } else {
        HideInsertMark();
    }
    TellTarget(target);
    SetCursor(LoadCursorW(nullptr, target.drop ? IDC_ARROW : IDC_NO));
}

POINT MouseInView() {
    POINT mouse = {};
    GetCursorPos(&mouse);
    ScreenToClient(ShownView(), &mouse);
    return mouse;
}

void Track() {
    const Target target = TargetAt(MouseInView());
    drag.drop = target.drop;
    ShowTarget(target);
}

// Ends the drag; what was under the mouse last.
std::optional<Placement> End() {
    std::optional<Placement> drop = std::exchange(drag, {}).drop;
    mainWindow.listCommandsBlocked = false;
    KillTimer(mainWindow.window, TIMER_DRAG_SCROLL);
    HideInsertMark();
    Light(-1);
    if (GetCapture() == mainWindow.window) ReleaseCapture();
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    UpdateStatusBar();
    return drop;
}

void Drop() {
    const int position = drag.position;
    Track();
    if (const std::optional<Placement> drop = End()) PlaceAndShow(position, *drop, Act::kMove);
}

}  // namespace

static void BeginDrag(int position) {
    constexpr UINT kScrollMilliseconds = 60;
    if (position < 0 || !mainWindow.entries.count(position)) return;
    SetFocus(ShownView());
    SelectEntry(position);
    drag.position = position;
    mainWindow.listCommandsBlocked = true;
    SetCapture(mainWindow.window);
    SetTimer(mainWindow.window, TIMER_DRAG_SCROLL, kScrollMilliseconds, nullptr);
    Track();
}

void OnDragNotify(const NMHDR& header) {
    if (header.code == LVN_BEGINDRAG) BeginDrag(SelectedEntry());
    if (header.code != TVN_BEGINDRAGW) return;
    const int node = NodeOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem);
    if (node > 0) BeginDrag(ShownTree().nodes[static_cast<std::size_t>(node)].position);
}

bool IsDragging() {
    return drag.position >= 0;
}

void CancelDrag() {
    if (IsDragging()) End();
}

bool OnDragMessage(UINT message, LPARAM lParam) {
    if (!IsDragging()) return false;
    switch (message) {
        case WM_MOUSEMOVE: return Track(), true;
        case WM_LBUTTONUP: return Drop(), true;
        case WM_RBUTTONDOWN: return CancelDrag(), true;
        case WM_CAPTURECHANGED:
            if (reinterpret_cast<HWND>(lParam) != mainWindow.window) CancelDrag();
            return true;
        default: return false;
    }
}

void OnDragTimer() {
    if (!IsDragging()) return;
    RECT client = {};
    GetClientRect(ShownView(), &client);
    const LONG edge = GetSystemMetrics(SM_CYSMICON);
    const POINT mouse = MouseInView();
    if (mouse.y >= client.top + edge && mouse.y < client.bottom - edge) return;
    HideInsertMark();
    SendMessageW(ShownView(), WM_VSCROLL, mouse.y < client.top + edge ? SB_LINEUP : SB_LINEDOWN, 0);
    Track();
}

}  // namespace verbatix
