// The data of the clipboard format "Shell IDList Array": a count, the byte offset of the parent folder's
// item-id list, as many offsets of the items' lists (all 32 bits, little endian), and the lists. A list is
// a row of items that begin with their own size in 16 bits; a size of 0 ends it.
// A pure function over bytes that may come from anybody.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// Copies of the lists, each with its terminator and nothing behind it.
struct ShellIdLists {
    std::string parent;
    std::vector<std::string> items;
};

// Nothing unless every offset lies behind the offsets and inside the block, every list ends inside the
// block, the lists together are not longer than the block (so that none is used over and over), and
// parent and item are of a length that a path can have.
std::optional<ShellIdLists> ReadShellIdLists(std::string_view block);

}  // namespace verbatix
