#include "clipboard/shell_id_list.h"

#include <cstdint>
#include <cstring>

namespace verbatix {

// The deepest path Windows knows has 32,767 characters; its names in two encodings and the attributes of
// each folder stay well below this.
constexpr std::size_t kLongestList = 0x80000;

// The number at that offset of the block, which must hold it.
template <typename Number>
static Number NumberAt(std::string_view block, std::size_t offset) {
    Number number;
    std::memcpy(&number, block.data() + offset, sizeof number);
    return number;
}

// The list that begins at that offset, with its terminator; empty when it does not end inside the block.
static std::string_view ListAt(std::string_view block, std::size_t offset) {
    for (std::size_t at = offset; at + sizeof(std::uint16_t) <= block.size();) {
        const std::size_t size = NumberAt<std::uint16_t>(block, at);
        if (size == 0) {
            const std::size_t length = at + sizeof(std::uint16_t) - offset;
            return length <= kLongestList ? block.substr(offset, length) : std::string_view();
        }
        // An item holds at least its own size.
        if (size < sizeof(std::uint16_t)) return {};
        at += size;
    }
    return {};
}

std::optional<ShellIdLists> ReadShellIdLists(std::string_view block) {
    constexpr std::size_t kNumber = sizeof(std::uint32_t);
    if (block.size() < 2 * kNumber) return std::nullopt;
    const std::size_t count = NumberAt<std::uint32_t>(block, 0);
    if (count > block.size() / kNumber - 2) return std::nullopt;
    const std::size_t behindOffsets = (count + 2) * kNumber;
    ShellIdLists lists;
    lists.items.reserve(count);
    std::size_t total = 0;
    for (std::size_t index = 0; index <= count; ++index) {
        const std::size_t offset = NumberAt<std::uint32_t>(block, (index + 1) * kNumber);
        if (offset < behindOffsets || offset >= block.size()) return std::nullopt;
        const std::string_view list = ListAt(block, offset);
        total += list.size();
        if (list.empty() || total > block.size()) return std::nullopt;
        if (index == 0) {
            lists.parent = list;
        } else {
            lists.items.emplace_back(list);
        }
    }
    return lists;
}

}  // namespace verbatix
