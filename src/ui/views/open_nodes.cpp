#include "ui/views/open_nodes.h"

#include <utility>

#include "base/text.h"

namespace verbatix {

static std::wstring KeyOf(const TreeNode& node) {
    return Format(L"%u+%u/", node.modifier, node.key) + node.path;
}

bool IsOpen(const OpenNodes& open, const TreeNode& node) {
    return open.keys.count(KeyOf(node)) != 0;
}

void SetOpen(OpenNodes& open, const TreeNode& node, bool on) {
    if (on) {
        open.keys.insert(KeyOf(node));
    } else {
        open.keys.erase(KeyOf(node));
    }
}

void SetAllOpen(OpenNodes& open, const EntryTree& tree) {
    for (const TreeNode& node : tree.nodes) {
        if (!node.children.empty()) SetOpen(open, node, true);
    }
}

void RenameOpen(OpenNodes& open, const TreeNode& node, const TreeNode& renamed) {
    const std::wstring before = KeyOf(node);
    const bool isWhole = before.ends_with(L'/');  // a hotkey's
    std::set<std::wstring> keys;
    for (const std::wstring& key : open.keys) {
        const bool below = key.starts_with(before) &&
                           (isWhole || key.size() == before.size() || key[before.size()] == L'/');
        keys.insert(below ? KeyOf(renamed) + key.substr(before.size()) : key);
    }
    open.keys = std::move(keys);
}

}  // namespace verbatix
