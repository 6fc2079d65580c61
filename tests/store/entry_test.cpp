#include "store/entry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace verbatix {
namespace {

TEST(AddEntry, NumbersInOrderCutsLongTextsAndLeavesTheEntryClean) {
    EntryList list;
    const uint32_t first = nextEntryNumber;
    EXPECT_EQ(AddEntry(list, L"same", L"label", 65, 4, -1, 7), first);
    EXPECT_EQ(AddEntry(list, std::wstring(9000, L't'), std::wstring(300, L'l'), 0, 4, 99, -7), first + 1);
    ASSERT_EQ(list.size(), 2u);
    const ListEntry& entry = list.at(1).current;
    EXPECT_EQ(entry.number, first + 1);
    EXPECT_EQ(entry.order, -7);
    EXPECT_EQ(entry.modifier, 4u);
    EXPECT_EQ(entry.groupRef, 0u);
    EXPECT_EQ(entry.kind, -1);
    EXPECT_EQ(std::wstring_view(entry.text, 4104), std::wstring(4095, L't') + std::wstring(9, L'\0'));
    EXPECT_EQ(std::wstring_view(entry.label, 264), std::wstring(255, L'l') + std::wstring(9, L'\0'));
    for (const auto& [position, slot] : list) EXPECT_FALSE(IsDirty(slot));

    EXPECT_FALSE(FirstBlankPosition(list));
    AddEntry(list, L"", L"label", 0, 0, -1, 0);
    EXPECT_FALSE(FirstBlankPosition(list));
    AddEntry(list, L"", L"", 65, 4, -1, 0);
    EXPECT_EQ(FirstBlankPosition(list), 3) << "found for reuse";
}

TEST(AddEntry, KeyIsOneSignedByte) {
    const std::pair<unsigned, uint32_t> rows[] = {
        {0, 0}, {127, 127}, {0x80, 0xffffff80}, {0xba, 0xffffffba}, {0xff, 0xffffffff}, {0x416, 0x16}};
    EntryList list;
    for (const auto& [given, stored] : rows) {
        AddEntry(list, L"x", L"", given, 0, -1, 0);
        EXPECT_EQ(list.rbegin()->second.current.keyCode, stored) << given;
    }
}

TEST(UpdateEntry, TakesTheEditorsFieldsOnlyAndAnyChangeMakesItDirty) {
    EntryList list;
    AddEntry(list, L"old", L"label", 65, 0, -1, 5);
    void (*const changes[])(ListEntry&) = {[](ListEntry& entry) { entry.text[3] = L'x'; },
                                           [](ListEntry& entry) { entry.label[4] = L'\0'; },
                                           [](ListEntry& entry) { entry.kind = 3; }};
    for (const auto change : changes) {
        const auto slot = std::make_unique<EntrySlot>(list.at(0));
        EXPECT_FALSE(IsDirty(*slot));
        change(slot->current);
        EXPECT_TRUE(IsDirty(*slot));
    }
    ListEntry& entry = list.at(0).current;
    entry.kind = list.at(0).saved.kind = 2;
    const auto edited = std::make_unique<ListEntry>(entry);
    edited->order = 77;
    edited->number = 88;
    edited->keyCode = 66;
    edited->modifier = 3;
    EXPECT_TRUE(UpdateEntry(list, 0, *edited));
    EXPECT_EQ(entry.order, 5);
    EXPECT_NE(entry.number, 88u);
    EXPECT_EQ(entry.keyCode, 66u);
    EXPECT_EQ(entry.modifier, 3u);
    EXPECT_EQ(entry.kind, 2) << "the text did not change";
    edited->text[0] = L'O';
    EXPECT_TRUE(UpdateEntry(list, 0, *edited));
    EXPECT_EQ(entry.kind, -1);
    EXPECT_STREQ(entry.text, L"Old");
    EXPECT_FALSE(UpdateEntry(list, 1, *edited));
}

TEST(EditorText, IsStoredOnOneLine) {
    const wchar_t* const rows[][2] = {{L"", L"???Text"},
                                      {L"a\r\nb\n", L"a\\nb\\n"},
                                      {L"\r\n\n\r\n", L"\\n\\n\\n"},
                                      {L"a\rb", L"a\rb"},
                                      {L" ", L" "}};
    for (const auto& row : rows) EXPECT_EQ(StoredFromEditorText(row[0]), row[1]);
    EXPECT_EQ(EditorFromStoredText(L"a\\nb\\n"), L"a\r\nb\r\n");
    EXPECT_TRUE(StoredFromEditorText(std::wstring(4000, L'x')));
    EXPECT_FALSE(StoredFromEditorText(std::wstring(4001, L'x')));
}

}  // namespace
}  // namespace verbatix
