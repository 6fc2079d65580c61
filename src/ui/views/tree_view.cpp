#include "ui/views/tree_view.h"

#include <optional>
#include <set>
#include <utility>

#include "base/text.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_kind.h"
#include "ui/views/list_view.h"

namespace verbatix {

namespace {

struct TreeView {
    EntryTree tree;
    std::vector<HTREEITEM> items;  // by node; null until it is made
    std::set<std::wstring> open;   // keys of the nodes that the user has opened
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

std::wstring OpenKey(const TreeNode& node) {
    return Format(L"%u+%u/", node.modifier, node.key) + node.path;
}

void Insert(int index, HTREEITEM parent) {
    TVINSERTSTRUCTW insert = {};
    insert.hParent = parent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    insert.item.iImage = insert.item.iSelectedImage = I_IMAGECALLBACK;
    insert.item.pszText = LPSTR_TEXTCALLBACKW;
    insert.item.lParam = index;
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
    return view.open.count(OpenKey(node)) != 0;
}

std::optional<TreeNode> CopyOf(HTREEITEM item) {
    const int node = NodeOf(item);
    return node < 0 ? std::nullopt : std::optional(Node(node));
}

void Select(int index) {
    const HTREEITEM selected = TreeView_GetSelection(mainWindow.tree);
    if (index > 0) MakeItem(index);
    // The control opens what the item lies in, and so it stays.
    for (int above = index > 0 ? Node(index).parent : 0; above > 0; above = Node(above).parent) {
        view.open.insert(OpenKey(Node(above)));
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

void RememberAllOpen() {
    for (const TreeNode& node : view.tree.nodes) {
        if (!node.children.empty()) view.open.insert(OpenKey(node));
    }
}

void OpenAllOfFew() {
    if (!std::exchange(view.shownBefore, true) && mainWindow.rows.size() <= kFewEntries) RememberAllOpen();
}

// While a filter holds everything open the user's own state is kept.
void RememberOpen(const NMTREEVIEWW& change) {
    const int node = NodeOf(change.itemNew.hItem);
    if (view.filling || view.filtered || node < 0) return;
    if (change.action == TVE_EXPAND) view.open.insert(OpenKey(Node(node)));
    if (change.action == TVE_COLLAPSE) view.open.erase(OpenKey(Node(node)));
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

void FollowSelection() {
    if (view.filling) return;
    const int node = SelectedNode();
    SelectListRow(node < 0 ? -1 : Node(node).position);
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
        const WithoutDrawing quiet;
        return Refill();
    }
    const HWND control = mainWindow.tree;
    const std::optional<TreeNode> before = CopyOf(TreeView_GetSelection(control));
    const std::optional<TreeNode> top = CopyOf(TreeView_GetFirstVisible(control));
    EntryTree tree = BuildTree(mainWindow.entries, mainWindow.rows, settings.grouping != 0);
    const bool sameShape = filtered == view.filtered && HaveSameShape(view.tree, tree);
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
        SelectInTree(selected);
    } else if (before && before->kind != NodeKind::kEntry) {
        SelectNode(*before);
    }
    const int first = sameShape || !top ? -1 : FindNode(view.tree, *top);
    if (first > 0 && Item(first)) TreeView_SelectSetFirstVisible(control, Item(first));
    if (SelectedNode() > 0) TreeView_EnsureVisible(control, TreeView_GetSelection(control));
}

void SelectInTree(int position) {
    if (IsTreeShown()) Select(position < 0 ? -1 : FindEntryNode(view.tree, position));
}

void SelectNode(const TreeNode& node) {
    const int index = FindNode(view.tree, node);
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

void KeepOpenUnder(const TreeNode& group, std::wstring_view newPath) {
    const std::wstring before = OpenKey(group);
    TreeNode renamed = group;
    renamed.path = newPath;
    std::set<std::wstring> open;
    for (const std::wstring& key : view.open) {
        const bool below =
            key.starts_with(before) && (key.size() == before.size() || key[before.size()] == L'/');
        open.insert(below ? OpenKey(renamed) + key.substr(before.size()) : key);
    }
    view.open = std::move(open);
}

void ExpandAll() {
    if (!IsTreeShown()) return;
    RememberAllOpen();
    OpenAgain();
}

void CollapseAll() {
    if (!IsTreeShown()) return;
    view.open.clear();
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
        case TVN_SELCHANGEDW: return FollowSelection();
        default: return;
    }
}

}  // namespace verbatix
