// Which rows the list shows, and in which order.
#include "ui/views/list_rows.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "ui/views/clashes.h"
#include "ui/views/entry_kind.h"

namespace verbatix::test {
namespace {

class ListRows : public ::testing::Test {
  protected:
    void SetUp() override {
        SetLanguageTexts({}, {{36, L"Ctrl + Alt"}, {38, L"Ctrl"}});
        const std::tuple<const wchar_t*, const wchar_t*, unsigned, unsigned> rows[] = {
            {L"zebra", L"b", 'Q', 4}, {L"\x00c4pfel", L"B", 'A', 2}, {L"", L"", 'X', 4},
            {L"Birne", L"a", 0, 4},   {L"apfel", L"C", 'B', 4},
        };
        for (const auto& [text, label, key, modifier] : rows)
            AddEntry(list_, text, label, key, modifier, -1, 0);
    }

    EntryList list_;
};

TEST_F(ListRows, AreFilteredByHotkeyLabelAndTextAndSortedInTheUsersLanguage) {
    const std::pair<ListOrder, std::vector<int>> cases[] = {
        {{L""}, {0, 1, 3, 4}},
        {{L"PFEL"}, {1, 4}},
        {{L"PFEL", false}, {}},
        {{L"\x00e4"}, {1}},
        {{L"b", false}, {0}},
        {{L"Ctrl"}, {0, 1, 4}},
        // Words in any order, each anywhere in one of the three.
        {{L" q  ZEB b"}, {0}},
        {{L"zebra c"}, {0}},
        {{L"zebra pfel"}, {}},
        {{L"a alt ctrl"}, {1}},
        {{L"ctrl+alt+a"}, {1}},
        // The pinned entry stays, but not a deleted one.
        {{L"zebra", true, -1, false, 3}, {0, 3}},
        {{L"zebra", true, -1, false, 2}, {0}},
        // "b" and "B" are equal without case and stay as in the list, descending too.
        {{L"", true, 0, false}, {3, 1, 4, 0}},
        {{L"", true, 1, false}, {3, 0, 1, 4}},
        {{L"", true, 1, true}, {4, 0, 1, 3}},
        {{L"", true, 3, true}, {0, 1, 3, 4}},
    };
    for (const auto& [order, rows] : cases)
        EXPECT_EQ(ShownRows(list_, order), rows)
            << ::testing::PrintToString(order.filter) << order.sortColumn << order.pinned;
    EXPECT_EQ(CountEntries(list_), 4U);
}

TEST_F(ListRows, TypedLettersFindTheNextSuchName) {
    const std::vector<int> rows = {0, 1, 3, 4};
    const std::tuple<int, const wchar_t*, int> cases[] = {
        {0, L"b", 0},  {1, L"B", 1},  {2, L"b", 0},    {0, L"c", 3},
        {0, L"x", -1}, {-1, L"a", 2}, {99, L"bb", -1},
    };
    for (const auto& [from, typed, row] : cases)
        EXPECT_EQ(FindRow(list_, rows, from, typed), row) << from << ::testing::PrintToString(typed);
    list_.at(3).current.label[0] = 0;
    EXPECT_EQ(FindRow(list_, rows, 0, L"bir"), 2) << "what has no label goes by its text";
}

TEST_F(ListRows, SortsByUseWithTheUnusedAtOneEnd) {
    ListOrder order;
    order.usesOf = [](const ListEntry& entry) {
        return entry.keyCode == 'Q' ? Uses{9, 300} : entry.keyCode == 'A' ? Uses{10, 200} : Uses{};
    };
    const std::tuple<int, bool, std::vector<int>> cases[] = {{kUsesColumn, false, {3, 4, 0, 1}},
                                                             {kUsesColumn, true, {1, 0, 3, 4}},
                                                             {kLastUsedColumn, true, {0, 1, 3, 4}}};
    for (const auto& [column, descending, rows] : cases) {
        order.sortColumn = column;
        order.descending = descending;
        EXPECT_EQ(ShownRows(list_, order), rows) << column << descending;
    }
}

TEST(Clashes, WhatSharesSomethingStandsTogether) {
    EntryList list;
    const std::tuple<const wchar_t*, unsigned, unsigned> rows[] = {
        {L"one", 'Q', 4}, {L"alone", 'X', 4}, {L"twin", 'A', 4}, {L"no key", 0, 4}, {L"two", 'Q', 4},
        {L"", 'Q', 4},    {L"Twin", 'B', 4},  {L"twin", 'C', 4}, {L"two", 0, 5},    {L"q too", 'Q', 5}};
    for (const auto& [text, key, modifier] : rows) AddEntry(list, text, L"label", key, modifier, -1, 0);
    const std::vector<ClashRow> expected = {{0, kSharesHotkey},
                                            {4, kSharesHotkey | kSharesText},
                                            {8, kSharesText | kLacksHotkey},
                                            {2, kSharesText},
                                            {7, kSharesText},
                                            {3, kLacksHotkey}};
    EXPECT_EQ(FindClashes(list), expected);
    // The codes that the hook takes for one hotkey.
    list.clear();
    AddEntry(list, L"a", L"", 200, 0, -1, 0);
    AddEntry(list, L"b", L"", 0x12c8, 77, -1, 0);
    EXPECT_EQ(FindClashes(list).size(), 2U);
    EXPECT_TRUE(FindClashes({}).empty());
}

TEST(EntryKinds, ATextTellsWhatItIs) {
    const std::pair<const wchar_t*, EntryKind> rows[] = {
        {L"", EntryKind::kText},
        {L"run a mile", EntryKind::kText},
        {L"pastehtml:<b>x</b>", EntryKind::kText},
        {L"run:calc", EntryKind::kCommand},
        {L"replace:\na=>b", EntryKind::kCommand},
        {L"copy_slot:1", EntryKind::kCommand},
        {L"sys:MonitorOff", EntryKind::kCommand},
        {L"sys:NoSuchImg", EntryKind::kCommand},
        {L"sys:ClipboardImgCliper", EntryKind::kPicture},
        {L"img:C:\\a.png", EntryKind::kPicture},
        {L"charmap:a,b", EntryKind::kCharacters},
        {L" charmap:a", EntryKind::kText},
    };
    for (const auto& [text, kind] : rows) EXPECT_EQ(KindOfEntry(text), kind) << text;
}

}  // namespace
}  // namespace verbatix::test
