#include "clipboard/shell_id_list.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace verbatix {
namespace {

std::string Number(std::uint32_t value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// A list of items with these contents.
std::string List(const std::vector<std::string>& items) {
    std::string list;
    for (const std::string& item : items) {
        const auto size = static_cast<std::uint16_t>(item.size() + 2);
        list.append(reinterpret_cast<const char*>(&size), sizeof size).append(item);
    }
    return list + std::string(2, '\0');
}

// A block whose first list is the parent.
std::string Block(const std::vector<std::string>& lists) {
    std::string block = Number(static_cast<std::uint32_t>(lists.size()) - 1);
    std::string data;
    for (const std::string& list : lists) {
        block += Number(static_cast<std::uint32_t>(4 * (lists.size() + 1) + data.size()));
        data += list;
    }
    return block + data;
}

TEST(ReadShellIdLists, YieldsTheListsAndNothingBehindThem) {
    const std::string parent = List({"drive", "folder"}), one = List({"one"}), two = List({"sub", "two"});
    const auto lists = ReadShellIdLists(Block({parent, one, two, List({})}) + "padding");
    ASSERT_TRUE(lists);
    EXPECT_EQ(lists->parent, parent);
    EXPECT_EQ(lists->items, (std::vector<std::string>{one, two, List({})}));

    const auto noItems = ReadShellIdLists(Block({parent}));
    ASSERT_TRUE(noItems);
    EXPECT_TRUE(noItems->items.empty());
}

TEST(ReadShellIdLists, YieldsNothingForAHostileBlock) {
    const std::string good = Block({List({"folder"}), List({"one"}), List({"two"})});
    const auto with = [&](std::size_t number, std::uint32_t value) {
        std::string block = good;
        return block.replace(number * 4, 4, Number(value));
    };
    const auto withoutEnd = [&](std::size_t bytes) { return good.substr(0, good.size() - bytes); };
    ASSERT_TRUE(ReadShellIdLists(good));
    const std::pair<const char*, std::string> rows[] = {
        {"empty", ""},
        {"a count alone", Number(0)},
        {"half a number", good.substr(0, 7)},
        {"offsets only", good.substr(0, 16)},
        {"count of 4 billion", with(0, 0xFFFFFFFF)},
        {"count whose offsets wrap around", with(0, 0x3FFFFFFF)},
        {"count beyond the block", with(0, 30)},
        {"count that takes lists for offsets", with(0, 3)},
        {"parent at the header", with(1, 0)},
        {"item inside the offsets", with(2, 12)},
        {"item at the end", with(2, static_cast<std::uint32_t>(good.size()))},
        {"item beyond the end", with(3, 0x7FFFFFFF)},
        {"item at 4 billion", with(3, 0xFFFFFFFF)},
        {"item on the last byte", with(3, static_cast<std::uint32_t>(good.size()) - 1)},
        {"no terminator", withoutEnd(2)},
        {"half a terminator", withoutEnd(1)},
        {"cut inside an item", withoutEnd(4)},
        {"an item of one byte", Block({List({}), std::string("\1\0\0\0", 4)})},
        {"an item longer than the block", Block({List({}), std::string("\xff\xff\0\0", 4)})},
    };
    for (const auto& [what, block] : rows) EXPECT_FALSE(ReadShellIdLists(block)) << what;
}

TEST(ReadShellIdLists, DoesNotCopyOneListOverAndOver) {
    // 100,000 items that all name one list of 60,000 bytes would be 6 GB of copies.
    constexpr std::uint32_t kItems = 100000;
    const std::uint32_t list = 4 * (kItems + 2);
    std::string block = Number(kItems);
    for (std::uint32_t index = 0; index <= kItems; ++index) block += Number(list);
    EXPECT_FALSE(ReadShellIdLists(block + List({std::string(60000, 'x')})));
    // No path is a megabyte long.
    EXPECT_FALSE(ReadShellIdLists(Block({List(std::vector(20, std::string(60000, 'x')))})));
}

}  // namespace
}  // namespace verbatix
