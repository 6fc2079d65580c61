// Moving entries within the list.
#include "store/entry_moves.h"

#include <gtest/gtest.h>

namespace verbatix::test {
namespace {

void Add(EntryList& list, const wchar_t* text, unsigned key, int order) {
    AddEntry(list, text, text, key, 4, -1, order);
}

std::wstring Texts(const EntryList& list) {
    std::wstring texts;
    for (const auto& [position, slot] : list) texts += slot.current.text;
    return texts;
}

std::vector<int> Orders(const EntryList& list) {
    std::vector<int> orders;
    for (const auto& [position, slot] : list) orders.push_back(slot.current.order);
    return orders;
}

TEST(MoveEntry, ClosesUpAndKeepsTheNumbersInListOrder) {
    const struct {
        int from;
        int to;
        bool moved;
        const wchar_t* texts;
    } cases[] = {{0, 3, true, L"bcdae"},
                 {4, 0, true, L"eabcd"},
                 {2, 2, false, L"abcde"},
                 {0, 5, false, L"abcde"},
                 {-1, 2, false, L"abcde"}};
    for (const auto& row : cases) {
        EntryList list;
        nextEntryNumber = 0;
        for (const wchar_t* text : {L"a", L"b", L"c", L"d", L"e"}) Add(list, text, 'Q', 7);
        EXPECT_EQ(MoveEntry(list, row.from, row.to), row.moved) << row.from << row.to;
        EXPECT_EQ(Texts(list), row.texts);
        uint32_t number = 0;
        for (const auto& [position, slot] : list) EXPECT_EQ(slot.current.number, number++);
        EXPECT_EQ(IsDirty(list.at(0)), row.texts[0] != L'a');
        // The way back leaves nothing to write.
        MoveEntry(list, row.to, row.from);
        for (const auto& [position, slot] : list) EXPECT_FALSE(IsDirty(slot));
    }
}

TEST(AlignOrders, TouchesOnlyTheHotkeysOwnAndOnlyWhereNeeded) {
    const struct {
        std::vector<int> before;
        std::vector<int> after;
    } cases[] = {{{10, 5, 20, 3}, {10, 5, 20, 3}},  // Q: 10, 20 ascend already
                 {{20, 5, 10, 3}, {0, 5, 2, 3}},    //
                 {{10, 5, 10, 3}, {0, 5, 2, 3}}};   // equal ones are ordered by their labels
    for (const auto& row : cases) {
        EntryList list;
        for (std::size_t i = 0; i < 4; ++i) Add(list, L"t", i % 2 ? 'W' : 'Q', row.before[i]);
        AlignOrders(list, 'Q', 4);
        EXPECT_EQ(Orders(list), row.after);
        AlignOrders(list, 0, 4);
        AlignOrders(list, 'Q', 5);
        EXPECT_EQ(Orders(list), row.after);
    }
}

}  // namespace
}  // namespace verbatix::test
