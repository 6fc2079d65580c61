#include "ui/views/tree_rows.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "ui/editor/editor_fields.h"

namespace verbatix {

namespace {

class Builder {
  public:
    explicit Builder(EntryTree& tree) : tree_(tree) {}

    void Add(const ListEntry& entry, int position) {
        TreeNode node;
        node.key = entry.keyCode & 0xff;
        node.modifier = node.key && entry.modifier < kModifierCount ? entry.modifier : 0;
        int parent = HotkeyNode(node);
        const LabelParts parts = SplitLabel(entry.label);
        if (tree_.grouped) {
            for (const std::wstring& group : parts.groups) parent = GroupNode(parent, group);
        }
        node.kind = NodeKind::kEntry;
        node.position = position;
        const bool named = tree_.grouped && !TrimBlanks(parts.name).empty();
        node.name = named ? parts.name : NameWithoutGroups(entry);
        Append(parent, std::move(node));
    }

  private:
    std::wstring NameWithoutGroups(const ListEntry& entry) const {
        if (!tree_.grouped) return EntryName(entry);
        ListEntry unlabelled = entry;
        *unlabelled.label = L'\0';
        return EntryName(unlabelled);
    }

    int Append(int parent, TreeNode node) {
        const int index = static_cast<int>(tree_.nodes.size());
        node.parent = parent;
        tree_.nodes.push_back(std::move(node));
        tree_.nodes[static_cast<std::size_t>(parent)].children.push_back(index);
        return index;
    }

    int HotkeyNode(const TreeNode& entry) {
        const auto [found, added] = hotkeys_.try_emplace({entry.modifier, entry.key}, 0);
        if (added) {
            TreeNode node = entry;
            node.kind = NodeKind::kHotkey;
            node.name = node.key ? FormatHotkeyDisplay(node.key, node.modifier)
                                 : LanguageText(text::kWithoutHotkey);
            found->second = Append(0, std::move(node));
        }
        return found->second;
    }

    int GroupNode(int parent, const std::wstring& name) {
        const auto [found, added] = groups_.try_emplace({parent, name}, 0);
        if (added) {
            TreeNode node = tree_.nodes[static_cast<std::size_t>(parent)];
            node.kind = NodeKind::kGroup;
            node.children.clear();
            node.path += (node.path.empty() ? L"" : L"/") + name;
            node.name = name;
            found->second = Append(parent, std::move(node));
        }
        return found->second;
    }

    EntryTree& tree_;
    std::map<std::pair<unsigned, unsigned>, int> hotkeys_;
    std::map<std::pair<int, std::wstring>, int> groups_;
};

}  // namespace

LabelParts SplitLabel(std::wstring_view label) {
    LabelParts parts;
    std::vector<std::wstring_view> pieces = Split(label, L'/');
    parts.name = pieces.back();
    pieces.pop_back();
    for (const std::wstring_view piece : pieces) {
        if (!TrimBlanks(piece).empty()) parts.groups.emplace_back(piece);
    }
    return parts;
}

std::wstring JoinLabel(const LabelParts& parts) {
    std::wstring label;
    for (const std::wstring& group : parts.groups) label += group + L'/';
    return label + parts.name;
}

EntryTree BuildTree(const EntryList& list, const std::vector<int>& rows, bool grouped) {
    EntryTree tree;
    tree.grouped = grouped;
    tree.nodes.reserve(rows.size() + rows.size() / 4 + 1);
    Builder builder(tree);
    for (const int position : rows) {
        const auto found = list.find(position);
        if (found != list.end() && !IsBlank(found->second.current)) {
            builder.Add(found->second.current, position);
        }
    }
    const auto rank = [&tree](int index) {
        const TreeNode& node = tree.nodes[static_cast<std::size_t>(index)];
        return std::tuple(node.key == 0, node.modifier, node.key);
    };
    std::vector<int>& hotkeys = tree.nodes.front().children;
    std::sort(hotkeys.begin(), hotkeys.end(), [&](int a, int b) { return rank(a) < rank(b); });
    return tree;
}

bool IsSameNode(const TreeNode& a, const TreeNode& b) {
    return a.kind == b.kind && a.key == b.key && a.modifier == b.modifier && a.position == b.position &&
           a.path == b.path;
}

static int IndexOf(const EntryTree& tree, std::vector<TreeNode>::const_iterator node) {
    return node == tree.nodes.end() ? -1 : static_cast<int>(node - tree.nodes.begin());
}

int FindNode(const EntryTree& tree, const TreeNode& node) {
    return IndexOf(tree, std::find_if(tree.nodes.begin(), tree.nodes.end(),
                                      [&](const TreeNode& other) { return IsSameNode(node, other); }));
}

int FindEntryNode(const EntryTree& tree, int position) {
    const auto isIt = [position](const TreeNode& node) {
        return node.kind == NodeKind::kEntry && node.position == position;
    };
    return IndexOf(tree, std::find_if(tree.nodes.begin(), tree.nodes.end(), isIt));
}

std::set<int> FindSameNodes(const EntryTree& before, const std::set<int>& nodes, const EntryTree& now) {
    std::map<int, int> entries;
    for (std::size_t index = 0; index < now.nodes.size(); ++index) {
        const TreeNode& node = now.nodes[index];
        if (node.kind == NodeKind::kEntry) entries[node.position] = static_cast<int>(index);
    }
    std::set<int> found;
    for (const int index : nodes) {
        const TreeNode& node = before.nodes[static_cast<std::size_t>(index)];
        const auto entry = entries.find(node.position);
        const bool isEntry = node.kind == NodeKind::kEntry;
        const int same = !isEntry ? FindNode(now, node) : entry != entries.end() ? entry->second : -1;
        if (same > 0) found.insert(same);
    }
    return found;
}

bool HaveSameShape(const EntryTree& a, const EntryTree& b) {
    const auto same = [](const TreeNode& one, const TreeNode& other) {
        return IsSameNode(one, other) && one.children == other.children;
    };
    return std::equal(a.nodes.begin(), a.nodes.end(), b.nodes.begin(), b.nodes.end(), same);
}

std::vector<int> EntriesBelow(const EntryTree& tree, int node) {
    std::vector<int> positions;
    if (node < 0) return positions;
    std::vector<int> open = {node};
    while (!open.empty()) {
        const TreeNode& next = tree.nodes[static_cast<std::size_t>(open.back())];
        open.pop_back();
        if (next.kind == NodeKind::kEntry) positions.push_back(next.position);
        open.insert(open.end(), next.children.rbegin(), next.children.rend());
    }
    return positions;
}

}  // namespace verbatix
