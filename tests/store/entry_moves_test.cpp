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
    const std::tuple<int, int, bool, const wchar_t*> cases[] = {{0, 3, true, L"bcdae"},
                                                                {4, 0, true, L"eabcd"},
                                                                {2, 2, false, L"abcde"},
                                                                {0, 5, false, L"abcde"},
                                                                {-1, 2, false, L"abcde"}};
    for (const auto& [from, to, moved, texts] : cases) {
        EntryList list;
        nextEntryNumber = 0;
        for (const wchar_t* text : {L"a", L"b", L"c", L"d", L"e"}) Add(list, text, 'Q', 7);
        EXPECT_EQ(MoveEntry(list, from, to), moved) << from << to;
        EXPECT_EQ(Texts(list), texts);
        uint32_t number = 0;
        for (const auto& [position, slot] : list) EXPECT_EQ(slot.current.number, number++);
        EXPECT_EQ(IsDirty(list.at(0)), texts[0] != L'a');
        // The way back leaves nothing to write.
        MoveEntry(list, to, from);
        for (const auto& [position, slot] : list) EXPECT_FALSE(IsDirty(slot));
    }
}

TEST(AlignOrders, TouchesOnlyTheHotkeysOwnAndOnlyWhereNeeded) {
    const std::pair<std::vector<int>, std::vector<int>> cases[] = {
        {{10, 5, 20, 3}, {10, 5, 20, 3}},  // Q: 10, 20 ascend already
        {{20, 5, 10, 3}, {0, 5, 2, 3}},    //
        {{10, 5, 10, 3}, {0, 5, 2, 3}}};   // equal ones are ordered by their labels
    for (const auto& [before, after] : cases) {
        EntryList list;
        for (std::size_t i = 0; i < 4; ++i) Add(list, L"t", i % 2 ? 'W' : 'Q', before[i]);
        AlignOrders(list, 'Q', 4);
        EXPECT_EQ(Orders(list), after);
        AlignOrders(list, 0, 4);
        AlignOrders(list, 'Q', 5);
        EXPECT_EQ(Orders(list), after);
    }
}

}  // namespace
}  // namespace verbatix::test
