#include "ui/views/tree_marks.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/common_controls.h"
#include "ui/state/main_window.h"
#include "ui/views/tree_view.h"

namespace verbatix {

namespace {

// Where a range begins: what was chosen last without Shift. Items do not outlive a refresh.
std::optional<TreeNode> anchor;

void AnchorAt(int node) {
    anchor = node > 0 ? std::optional(ShownTree().nodes[static_cast<std::size_t>(node)]) : std::nullopt;
}

HTREEITEM AnchorItem() {
    return anchor ? ItemOf(FindNode(ShownTree(), *anchor)) : nullptr;
}

HTREEITEM Caret() {
    return TreeView_GetSelection(mainWindow.tree);
}

HTREEITEM Next(HTREEITEM item, UINT direction) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(mainWindow.tree, TVM_GETNEXTITEM, direction, reinterpret_cast<LPARAM>(item)));
}

// The selected nodes, where it is only one as well.
std::set<int> Chosen() {
    const std::vector<int> marked = MarkedNodes();
    return {marked.begin(), marked.end()};
}

void Toggle(int node) {
    std::set<int> chosen = Chosen();
    if (!chosen.insert(node).second) chosen.erase(node);
    AnchorAt(node);
    SetMarks(chosen, node);
}

// Items from one to another, whichever comes first; those that are not in sight do not count.
std::set<int> Between(HTREEITEM from, HTREEITEM to) {
    for (const auto& [first, last] : {std::pair{from, to}, {to, from}}) {
        std::set<int> nodes;
        for (HTREEITEM item = first; item; item = Next(item, TVGN_NEXTVISIBLE)) {
            nodes.insert(NodeOf(item));
            if (item == last) return nodes;
        }
    }
    return {NodeOf(to)};
}

// A heading that stands open counts only with all that is below it; one that was pressed itself, always.
std::set<int> WithoutPassedHeadings(std::set<int> nodes, int pressed) {
    const std::vector<int> backwards(nodes.rbegin(), nodes.rend());  // children have larger numbers
    for (const int node : backwards) {
        if (node <= 0 || node == pressed) continue;
        const std::vector<int>& children = ShownTree().nodes[static_cast<std::size_t>(node)].children;
        const bool isOpen =
            TreeView_GetItemState(mainWindow.tree, ItemOf(node), TVIS_EXPANDED) & TVIS_EXPANDED;
        const auto isIn = [&](int child) { return nodes.count(child) != 0; };
        if (isOpen && !std::all_of(children.begin(), children.end(), isIn)) nodes.erase(node);
    }
    return nodes;
}

void ExtendTo(HTREEITEM item) {
    if (!AnchorItem()) AnchorAt(NodeOf(Caret()));
    const HTREEITEM from = AnchorItem();
    SetMarks(WithoutPassedHeadings(Between(from ? from : item, item), NodeOf(item)), NodeOf(item));
}

HTREEITEM Target(WPARAM key) {
    switch (key) {
        case VK_UP: return Next(Caret(), TVGN_PREVIOUSVISIBLE);
        case VK_DOWN: return Next(Caret(), TVGN_NEXTVISIBLE);
        case VK_HOME: return TreeView_GetRoot(mainWindow.tree);
        case VK_END: return TreeView_GetLastVisible(mainWindow.tree);
        default: return nullptr;
    }
}

bool OnKey(WPARAM key) {
    const bool isCtrl = GetKeyState(VK_CONTROL) < 0;
    const bool isShift = GetKeyState(VK_SHIFT) < 0;
    if (isCtrl == isShift || !Caret()) return false;
    if (isCtrl && key == VK_SPACE) return Toggle(NodeOf(Caret())), true;
    if (key != VK_UP && key != VK_DOWN && key != VK_HOME && key != VK_END) return false;
    const HTREEITEM item = Target(key);
    if (!item) return true;
    if (isShift) {
        ExtendTo(item);
    } else {
        SetMarks(Chosen(), NodeOf(item));
    }
    TreeView_EnsureVisible(mainWindow.tree, item);
    return true;
}

// On one of several a press may begin to drag them all; only when it has not, it selects that one alone.
LRESULT PressOnMarked(HWND tree, WPARAM wParam, LPARAM lParam, int node) {
    KeepMarks(true);
    const LRESULT answer = PassToSubclassed(tree, WM_LBUTTONDOWN, wParam, lParam);
    KeepMarks(false);
    if (GetCapture() != mainWindow.window) SetMarks({node}, node);
    return answer;
}

bool OnPress(HWND tree, WPARAM wParam, LPARAM lParam, LRESULT& answer) {
    TVHITTESTINFO hit = {};
    hit.pt = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    TreeView_HitTest(tree, &hit);
    const int node = NodeOf(hit.hItem);
    answer = 0;
    if (node <= 0 || (hit.flags & TVHT_ONITEMBUTTON)) return false;
    if (wParam & MK_CONTROL) return SetFocus(tree), Toggle(node), true;
    if (wParam & MK_SHIFT) return SetFocus(tree), ExtendTo(hit.hItem), true;
    AnchorAt(node);
    const std::set<int> chosen = Chosen();
    if (chosen.size() < 2 || !chosen.count(node)) return false;
    answer = PressOnMarked(tree, wParam, lParam, node);
    return true;
}

LRESULT CALLBACK MarkingProcedure(HWND tree, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                  DWORD_PTR) noexcept {
    LRESULT answer = 0;
    switch (message) {
        case WM_LBUTTONDOWN:
            if (OnPress(tree, wParam, lParam, answer)) return answer;
            break;
        case WM_KEYDOWN:
            if (OnKey(wParam)) return 0;
            if (GetKeyState(VK_SHIFT) >= 0) anchor.reset();
            break;
        case WM_CHAR:
            // The space bar with Ctrl would be looked for as the beginning of a name.
            if (wParam == L' ' && GetKeyState(VK_CONTROL) < 0) return 0;
            break;
        case WM_NCDESTROY: RemoveSubclass(tree, MarkingProcedure, id); break;
        default: break;
    }
    return PassToSubclassed(tree, message, wParam, lParam);
}

}  // namespace

void SetUpTreeMarks(HWND tree) {
    constexpr UINT_PTR kId = 4;
    AddSubclass(tree, MarkingProcedure, kId);
}

}  // namespace verbatix
