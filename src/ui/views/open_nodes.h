// Which hotkeys and groups of the tree stand open. They are kept by hotkey and path, so that one outlives
// the trees that it is in. Pure.
#pragma once

#include <set>
#include <string>

#include "ui/views/tree_rows.h"

namespace verbatix {

struct OpenNodes {
    std::set<std::wstring> keys;
};

bool IsOpen(const OpenNodes& open, const TreeNode& node);
void SetOpen(OpenNodes& open, const TreeNode& node, bool on);

// All of a tree that have something in them.
void SetAllOpen(OpenNodes& open, const EntryTree& tree);

// A group has a new path, or a hotkey is another one: it stands open, or not, under that one, and so does
// what is in it.
void RenameOpen(OpenNodes& open, const TreeNode& node, const TreeNode& renamed);

}  // namespace verbatix
