#include "ui/entries/drag_entry.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/entries/block_moves.h"
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

struct Landing {
    Placement one;
    Destination many;
};

struct Drag {
    bool isOn = false;
    int position = -1;  // of the dragged entry; -1: all that is selected is dragged
    std::optional<Landing> drop;
};

Drag drag;

// What lies under the mouse.
struct Target {
    std::optional<Landing> drop;
    int litNode = -1;  // it goes into that
    RECT beside = {};  // or beside that, in client coordinates
    bool after = false;
    std::wstring name;
};

bool InLowerHalf(const RECT& item, POINT mouse) {
    return mouse.y >= (item.top + item.bottom) / 2;
}

std::optional<Landing> AsDrop(const std::optional<Placement>& one) {
    return one ? std::optional(Landing{*one, {}}) : std::nullopt;
}

std::optional<Landing> AsDrop(const std::optional<Destination>& many) {
    return many ? std::optional(Landing{{}, *many}) : std::nullopt;
}

std::optional<Landing> DropOn(int node, bool lowerHalf) {
    if (drag.position < 0) return AsDrop(DropManyOnNode(ShownTree(), MarkedNodes(), node, lowerHalf));
    return AsDrop(DropOnNode(ShownTree(), mainWindow.entries, drag.position, node, lowerHalf));
}

std::optional<Landing> DropIn(int gap) {
    if (drag.position < 0) return AsDrop(DropManyInGap(mainWindow.rows, SelectedInList(), gap));
    return AsDrop(DropInGap(mainWindow.rows, mainWindow.entries, drag.position, gap));
}

Target TargetInTree(POINT mouse) {
    Target target;
    const int index = NodeAt(mouse, target.beside);
    if (index <= 0) return target;
    const TreeNode& node = ShownTree().nodes[static_cast<std::size_t>(index)];
    target.after = InLowerHalf(target.beside, mouse);
    target.drop = DropOn(index, target.after);
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
    target.drop = DropIn(row + (target.after ? 1 : 0));
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

std::wstring HotkeyName(unsigned key, unsigned modifier) {
    if ((key & 0xff) == 0) return LanguageText(text::kWithoutHotkey);
    return FormatHotkeyDisplay(key, modifier);
}

// What the hotkey of what is dragged becomes there; empty: it stays.
std::wstring HotkeyChange(const Landing& drop) {
    const std::vector<int> dragged =
        drag.position < 0 ? SelectedEntries() : std::vector<int>{drag.position};
    const auto key = drag.position < 0 ? drop.many.key : std::optional(drop.one.key);
    if (!key) return {};
    const std::wstring after = HotkeyName(*key, drag.position < 0 ? drop.many.modifier : drop.one.modifier);
    std::wstring before;
    for (const int position : dragged) {
        const auto found = mainWindow.entries.find(position);
        if (found == mainWindow.entries.end()) continue;
        const ListEntry& entry = found->second.current;
        const std::wstring name = HotkeyName(entry.keyCode, entry.modifier);
        if (name == after || before.find(name) != std::wstring::npos) continue;
        before += (before.empty() ? L"" : L", ") + name;
    }
    return before.empty() ? before : FillIn(LanguageText(text::kHotkeyWillBecome), {before, after});
}

void TellTarget(const Target& target) {
    std::wstring text = target.drop ? HotkeyChange(*target.drop) : std::wstring();
    if (!text.empty()) return TellInStatusBar(text);
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
std::optional<Landing> End() {
    std::optional<Landing> drop = std::exchange(drag, {}).drop;
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
    const std::optional<Landing> drop = End();
    if (!drop) return;
    if (position >= 0) return PlaceAndShow(position, drop->one, Act::kMove);
    const std::vector<Moved> moved =
        IsTreeShown() ? MovedNodes(ShownTree(), MarkedNodes()) : MovedEntries(SelectedInList());
    PlaceManyAndShow(moved, drop->many, Act::kMove);
}

}  // namespace

// An entry by itself, or, with -1, all that is selected.
static void BeginDrag(int position) {
    constexpr UINT kScrollMilliseconds = 60;
    // What is typed is kept first: that may fill the views anew.
    if (!SaveEdits(Warn::kAlways)) return;
    SetFocus(ShownView());
    if (position >= 0) SelectEntry(position);
    drag = {true, position, {}};
    mainWindow.listCommandsBlocked = true;
    SetCapture(mainWindow.window);
    SetTimer(mainWindow.window, TIMER_DRAG_SCROLL, kScrollMilliseconds, nullptr);
    Track();
}

void OnDragNotify(const NMHDR& header) {
    if (header.code == LVN_BEGINDRAG) {
        const std::vector<int> selected = SelectedInList();
        if (!selected.empty()) BeginDrag(selected.size() == 1 ? selected.front() : -1);
    }
    if (header.code != TVN_BEGINDRAGW) return;
    const int node = NodeOf(reinterpret_cast<const NMTREEVIEWW&>(header).itemNew.hItem);
    if (node <= 0) return;
    const std::vector<int> marked = MarkedNodes();
    const bool isMarked = std::find(marked.begin(), marked.end(), node) != marked.end();
    const TreeNode dragged = ShownTree().nodes[static_cast<std::size_t>(node)];
    if (!isMarked) SetMarks({node}, node);
    BeginDrag(isMarked && marked.size() > 1 ? -1 : dragged.position);
}

bool IsDragging() {
    return drag.isOn;
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
