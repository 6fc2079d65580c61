#include "ui/views/tree_view.h"

#include <optional>
#include <set>
#include <utility>

#include "base/text.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_kind.h"
#include "ui/views/list_view.h"
#include "ui/views/open_nodes.h"

namespace verbatix {

namespace {

struct TreeView {
    EntryTree tree;
    std::vector<HTREEITEM> items;  // by node; null until it is made
    OpenNodes open;                // by the user
    std::set<int> marked;          // selected nodes, empty while it is the control's own one alone
    bool keepsMarks = false;
    bool shownBefore = false;
    bool filtered = false;
    bool filling = false;  // notifications come from our own doing
};

TreeView view;

// Up to so many entries stand open at first, and when a filter has left no more.
constexpr std::size_t kFewEntries = 100;

TreeNode& Node(int index) {
    return view.tree.nodes[static_cast<std::size_t>(index)];
}

HTREEITEM& Item(int index) {
    return view.items[static_cast<std::size_t>(index)];
}

void Insert(int index, HTREEITEM parent) {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.iImage = insert.item.iSelectedImage = I_IMAGECALLBACK;
    insert.item.pszText = LPSTR_TEXTCALLBACKW;
    insert.item.lParam = index;
    if (view.marked.count(index)) {
        insert.item.mask |= TVIF_STATE;
        insert.item.state = insert.item.stateMask = TVIS_SELECTED;
    }
    insert.item.cChildren = Node(index).children.empty() ? 0 : 1;
    Item(index) = reinterpret_cast<HTREEITEM>(
        SendMessageW(mainWindow.tree, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void MakeChildren(int index) {
    const std::vector<int>& children = Node(index).children;
    if (children.empty() || Item(children.front())) return;
    const HTREEITEM parent = index == 0 ? TVI_ROOT : Item(index);
    for (const int child : children) Insert(child, parent);
}

// Makes the item of a node, for which those above it are needed.
void MakeItem(int index) {
    if (index <= 0 || Item(index)) return;
    MakeItem(Node(index).parent);
    MakeChildren(Node(index).parent);
}

// Opens what `wanted` says, children before their parents: rows that nobody sees cost the control less.
template <typename Wanted>
void Open(int index, const Wanted& wanted) {
    const TreeNode& node = Node(index);
    if (node.children.empty() || (index != 0 && !wanted(node))) return;
    MakeChildren(index);
    for (const int child : node.children) Open(child, wanted);
    if (index != 0) TreeView_Expand(mainWindow.tree, Item(index), TVE_EXPAND);
}

bool StandsOpen(const TreeNode& node) {
    if (view.filtered && mainWindow.rows.size() <= kFewEntries) return true;
    return IsOpen(view.open, node);
}

std::optional<TreeNode> CopyOf(HTREEITEM item) {
    const int node = NodeOf(item);
    return node < 0 ? std::nullopt : std::optional(Node(node));
}

// The control draws every item with this state as selected, and itself sets it for one.
void DrawAsSelected(int index, bool on) {
    if (index <= 0 || !Item(index)) return;
    TVITEMW item = {};
    item.mask = TVIF_STATE | TVIF_HANDLE;
    item.hItem = Item(index);
    item.stateMask = TVIS_SELECTED;
    item.state = on ? TVIS_SELECTED : 0U;
    SendMessageW(mainWindow.tree, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void DrawMarks() {
    if (view.marked.empty()) return;
    for (const int node : view.marked) DrawAsSelected(node, true);
    const int caret = SelectedNode();
    if (!view.marked.count(caret)) DrawAsSelected(caret, false);
}

void DropMarks() {
    const int caret = SelectedNode();
    for (const int node : std::exchange(view.marked, {})) DrawAsSelected(node, node == caret);
    DrawAsSelected(caret, true);
}

bool LiesIn(int node, int above) {
    while (node > 0 && node != above) node = Node(node).parent;
    return node == above;
}

void FollowSelection() {
    if (view.filling) return;
    std::vector<int> positions;
    const int caret = SelectedNode();
    for (const int node : MarkedNodes()) {
        if (Node(node).kind != NodeKind::kEntry) continue;
        positions.insert(node == caret ? positions.begin() : positions.end(), Node(node).position);
    }
    SelectListRows(positions);
    // Groups have no row: what is selected may have changed all the same.
    TellSelectionChanged();
}

// Nobody shall delete what he does not see to be selected.
void DropMarksIn(int closed) {
    if (!std::erase_if(view.marked, [=](int node) { return node != closed && LiesIn(node, closed); }))
        return;
    const int caret = SelectedNode();
    if (view.marked.size() == 1 && view.marked.count(caret)) view.marked.clear();
    // That one is selected now, and is seen to be.
    if (view.marked.empty()) DrawAsSelected(caret, true);
    FollowSelection();
}

void Select(int index) {
    const HTREEITEM selected = TreeView_GetSelection(mainWindow.tree);
    if (index > 0) MakeItem(index);
    // The control opens what the item lies in, and so it stays.
    for (int above = index > 0 ? Node(index).parent : 0; above > 0; above = Node(above).parent) {
        SetOpen(view.open, Node(above), true);
    }
    const HTREEITEM item = index > 0 ? Item(index) : nullptr;
    if (item == selected) return;
    view.filling = true;
    TreeView_SelectItem(mainWindow.tree, item);
    view.filling = false;
}

void Refill() {
    const HWND control = mainWindow.tree;
    view.items.assign(view.tree.nodes.size(), nullptr);
    TreeView_SelectItem(control, nullptr);
    TreeView_DeleteAllItems(control);
    Open(0, StandsOpen);
}

void OpenAllOfFew() {
    if (!std::exchange(view.shownBefore, true) && mainWindow.rows.size() <= kFewEntries)
        SetAllOpen(view.open, view.tree);
}

// While a filter holds everything open the user's own state is kept.
void RememberOpen(const NMTREEVIEWW& change) {
    const int node = NodeOf(change.itemNew.hItem);
    if (view.filling || node < 0) return;
    if (change.action == TVE_COLLAPSE) DropMarksIn(node);
    if (view.filtered) return;
    if (change.action == TVE_EXPAND || change.action == TVE_COLLAPSE)
        SetOpen(view.open, Node(node), change.action == TVE_EXPAND);
}

int PictureOf(const TreeNode& node) {
    EntryKind kind = node.kind == NodeKind::kHotkey ? EntryKind::kHotkey : EntryKind::kGroup;
    const auto entry = mainWindow.entries.find(node.position);
    if (node.kind == NodeKind::kEntry && entry != mainWindow.entries.end()) {
        kind = KindOfEntry(entry->second.current.text);
    }
    return static_cast<int>(kind);
}

void GiveName(NMTVDISPINFOW& request) {
    TVITEMW& item = request.item;
    const auto index = static_cast<std::size_t>(item.lParam);
    if (index >= view.tree.nodes.size()) return;
    if (item.mask & (TVIF_IMAGE | TVIF_SELECTEDIMAGE)) {
        item.iImage = item.iSelectedImage = PictureOf(view.tree.nodes[index]);
    }
    if (!(item.mask & TVIF_TEXT) || item.cchTextMax <= 0) return;
    const auto capacity = static_cast<std::size_t>(item.cchTextMax);
    CopyText(item.pszText, capacity, capacity, view.tree.nodes[index].name);
}

void FollowCaret() {
    if (view.filling) return;
    if (view.keepsMarks) return DrawMarks();
    DropMarks();
    FollowSelection();
}

class WithoutDrawing {
  public:
    WithoutDrawing() {
        view.filling = true;
        SendMessageW(mainWindow.tree, WM_SETREDRAW, FALSE, 0);
    }
    ~WithoutDrawing() {
        SendMessageW(mainWindow.tree, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(mainWindow.tree, nullptr, TRUE);
        view.filling = false;
    }
    WithoutDrawing(const WithoutDrawing&) = delete;
    WithoutDrawing& operator=(const WithoutDrawing&) = delete;
};

void OpenAgain() {
    const std::optional<TreeNode> selected = CopyOf(TreeView_GetSelection(mainWindow.tree));
    {
        const WithoutDrawing quiet;
        Refill();
    }
    if (selected) SelectNode(*selected);
    FollowSelection();
}

}  // namespace

const EntryTree& ShownTree() {
    return view.tree;
}

int NodeOf(HTREEITEM item) {
    if (!item) return -1;
    TVITEMW info = {};
    info.mask = TVIF_PARAM;
    info.hItem = item;
    if (!SendMessageW(mainWindow.tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info))) return -1;
    const auto index = static_cast<std::size_t>(info.lParam);
    return index < view.tree.nodes.size() ? static_cast<int>(index) : -1;
}

void RefreshTree(int selected, bool filtered) {
    if (!IsTreeShown()) {
        view.tree = {};
        view.marked.clear();
        const WithoutDrawing quiet;
        return Refill();
    }
    const HWND control = mainWindow.tree;
    const std::optional<TreeNode> before = CopyOf(TreeView_GetSelection(control));
    const std::optional<TreeNode> top = CopyOf(TreeView_GetFirstVisible(control));
    EntryTree tree = BuildTree(mainWindow.entries, mainWindow.rows, settings.grouping != 0);
    const bool sameShape = filtered == view.filtered && HaveSameShape(view.tree, tree);
    view.marked = FindSameNodes(view.tree, view.marked, tree);
    view.tree = std::move(tree);
    view.filtered = filtered;
    if (sameShape) {
        InvalidateRect(control, nullptr, TRUE);
    } else {
        OpenAllOfFew();
        const WithoutDrawing quiet;
        Refill();
    }
    if (selected >= 0) {
        Select(FindEntryNode(view.tree, selected));
    } else if (before && before->kind != NodeKind::kEntry) {
        if (const int node = FindNode(view.tree, *before); node > 0) Select(node);
    }
    DrawMarks();
    const int first = sameShape || !top ? -1 : FindNode(view.tree, *top);
    if (first > 0 && Item(first)) TreeView_SelectSetFirstVisible(control, Item(first));
    if (SelectedNode() > 0) TreeView_EnsureVisible(control, TreeView_GetSelection(control));
}

void SelectInTree(const std::vector<int>& positions, int shown) {
    if (!IsTreeShown()) return;
    DropMarks();
    Select(shown < 0 ? -1 : FindEntryNode(view.tree, shown));
    if (positions.size() < 2) return;
    const std::set<int> wanted(positions.begin(), positions.end());
    for (std::size_t index = 0; index < view.tree.nodes.size(); ++index) {
        if (wanted.count(view.tree.nodes[index].position)) view.marked.insert(static_cast<int>(index));
    }
    DrawMarks();
}

std::vector<int> MarkedNodes() {
    const int caret = SelectedNode();
    if (view.marked.empty()) return caret > 0 ? std::vector<int>{caret} : std::vector<int>();
    std::vector<int> nodes;
    std::vector<int> open = {0};
    while (!open.empty()) {
        const int index = open.back();
        open.pop_back();
        if (view.marked.count(index)) nodes.push_back(index);
        const std::vector<int>& children = Node(index).children;
        open.insert(open.end(), children.rbegin(), children.rend());
    }
    return nodes;
}

void SetMarks(const std::set<int>& nodes, int caret) {
    if (caret <= 0 || static_cast<std::size_t>(caret) >= view.tree.nodes.size()) return;
    DropMarks();
    Select(caret);
    const bool isCaretAlone = nodes.size() == 1 && *nodes.begin() == caret;
    // With none marked the control's own one is selected: one item always is.
    if (!isCaretAlone) view.marked = nodes;
    DrawMarks();
    FollowSelection();
}

void KeepMarks(bool on) {
    view.keepsMarks = on;
}

void SelectNode(const TreeNode& node) {
    const int index = FindNode(view.tree, node);
    if (index > 0) DropMarks();
    if (index > 0) Select(index);
}

int SelectedNode() {
    return IsTreeShown() ? NodeOf(TreeView_GetSelection(mainWindow.tree)) : -1;
}

bool NodeRectangle(HTREEITEM node, bool nameOnly, RECT& item) {
    // The item goes in where the rectangle comes out, and wants more alignment than a rectangle has.
    union {
        HTREEITEM node;
        RECT rectangle;
    } request = {node};
    if (!SendMessageW(mainWindow.tree, TVM_GETITEMRECT, nameOnly, reinterpret_cast<LPARAM>(&request))) {
        return false;
    }
    item = request.rectangle;
    return true;
}

int NodeAt(POINT place, RECT& item) {
    TVHITTESTINFO hit = {};
    hit.pt = place;
    TreeView_HitTest(mainWindow.tree, &hit);
    const int node = NodeOf(hit.hItem);
    if (node >= 0) NodeRectangle(hit.hItem, false, item);
    return node;
}

HTREEITEM ItemOf(int node) {
    return node > 0 ? Item(node) : nullptr;
}

void KeepOpenUnder(const TreeNode& node, const TreeNode& renamed) {
    RenameOpen(view.open, node, renamed);
}

void ExpandAll() {
    if (!IsTreeShown()) return;
    SetAllOpen(view.open, view.tree);
    OpenAgain();
}

void CollapseAll() {
    if (!IsTreeShown()) return;
    view.open = {};
    view.filtered = false;
    // What is selected would open again what it lies in.
    for (int node = SelectedNode(); node > 0 && Node(node).kind != NodeKind::kHotkey;) {
        node = Node(node).parent;
        Select(node);
    }
    OpenAgain();
}

void OnTreeNotify(const NMHDR& header) {
    // The message came with a pointer to a larger structure, which some answers change.
    NMHDR* const change = const_cast<NMHDR*>(&header);
    switch (header.code) {
        case TVN_GETDISPINFOW: return GiveName(*reinterpret_cast<NMTVDISPINFOW*>(change));
        case TVN_ITEMEXPANDINGW: {
            const int node = NodeOf(reinterpret_cast<const NMTREEVIEWW*>(change)->itemNew.hItem);
            return node > 0 ? MakeChildren(node) : void();
        }
        case TVN_ITEMEXPANDEDW: return RememberOpen(*reinterpret_cast<const NMTREEVIEWW*>(change));
        case TVN_SELCHANGEDW: return FollowCaret();
        default: return;
    }
}

}  // namespace verbatix
