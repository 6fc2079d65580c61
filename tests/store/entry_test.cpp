#include "store/entry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace verbatix {
namespace {

TEST(AddEntry, GivesPositionsAndNumbersInOrderAndLeavesTheEntryClean) {
    EntryList list;
    const uint32_t first = nextEntryNumber;
    EXPECT_EQ(AddEntry(list, L"same", L"label", 65, 4, -1, 7), first);
    EXPECT_EQ(AddEntry(list, L"same", L"label", 65, 4, 99, -7), first + 1);
    ASSERT_EQ(list.size(), 2u);
    const ListEntry& entry = list.at(1).current;
    EXPECT_STREQ(entry.text, L"same");
    EXPECT_STREQ(entry.label, L"label");
    EXPECT_EQ(entry.number, first + 1);
    EXPECT_EQ(entry.order, -7);
    EXPECT_EQ(entry.modifier, 4u);
    EXPECT_EQ(entry.groupRef, 0u);
    EXPECT_EQ(entry.kind, -1);
    EXPECT_FALSE(IsDirty(list.at(0)));
    EXPECT_FALSE(IsDirty(list.at(1)));
    EXPECT_EQ(nextEntryNumber, first + 2);
}

TEST(AddEntry, KeyIsOneSignedByte) {
    const struct {
        unsigned given;
        uint32_t stored;
    } rows[] = {
        {0, 0},
        {65, 65},
        {96, 96},
        {97, 97},    // "a" is number pad 1
        {122, 122},  // "z" is F11
        {123, 123},
        {124, 124},
        {127, 127},
        {0xba, 0xffffffba},
        {0x80, 0xffffff80},
        {0xff, 0xffffffff},
        {0xe4, 0xffffffe4},  // a lower-case letter by its low byte, but U+FFE4 is none
        {0x416, 0x16},
    };
    EntryList list;
    for (const auto& row : rows) {
        AddEntry(list, L"x", L"", row.given, 0, -1, 0);
        EXPECT_EQ(list.rbegin()->second.current.keyCode, row.stored) << row.given;
    }
}

TEST(AddEntry, CutsLongTextsAndKeepsTheRestZero) {
    EntryList list;
    AddEntry(list, std::wstring(9000, L't'), std::wstring(300, L'l'), 0, 0, -1, 0);
    const ListEntry& entry = list.at(0).current;
    EXPECT_EQ(std::wcslen(entry.text), 4095u);
    EXPECT_EQ(std::wcslen(entry.label), 255u);
    for (const wchar_t c : std::wstring_view(entry.text, 4104).substr(4095)) EXPECT_EQ(c, L'\0');
    for (const wchar_t c : std::wstring_view(entry.label, 264).substr(255)) EXPECT_EQ(c, L'\0');
}

TEST(EntrySlot, AnyByteMakesItDirty) {
    EntryList list;
    AddEntry(list, L"text", L"label", 65, 0, -1, 0);
    const auto clean = std::make_unique<EntrySlot>(list.at(0));
    const auto dirtyAfter = [&](auto change) {
        const auto slot = std::make_unique<EntrySlot>(*clean);
        change(slot->current);
        return IsDirty(*slot);
    };
    EXPECT_TRUE(dirtyAfter([](ListEntry& entry) { entry.text[4103] = L'x'; }));
    EXPECT_TRUE(dirtyAfter([](ListEntry& entry) { entry.label[263] = L'x'; }));
    EXPECT_TRUE(dirtyAfter([](ListEntry& entry) { entry.kind = 3; }));
    EXPECT_FALSE(dirtyAfter([](ListEntry& entry) { entry.text[0] = L't'; }));
}

TEST(UpdateEntry, TakesTheEditorsFieldsOnly) {
    EntryList list;
    AddEntry(list, L"old", L"label", 65, 0, -1, 5);
    list.at(0).current.kind = list.at(0).saved.kind = 2;
    const auto edited = std::make_unique<ListEntry>(list.at(0).current);
    edited->order = 77;
    edited->number = 88;
    edited->keyCode = 66;
    edited->modifier = 3;
    EXPECT_TRUE(UpdateEntry(list, 0, *edited));
    EXPECT_EQ(list.at(0).current.order, 5);
    EXPECT_NE(list.at(0).current.number, 88u);
    EXPECT_EQ(list.at(0).current.keyCode, 66u);
    EXPECT_EQ(list.at(0).current.modifier, 3u);
    EXPECT_EQ(list.at(0).current.kind, 2) << "the text did not change";
    edited->text[0] = L'O';
    EXPECT_TRUE(UpdateEntry(list, 0, *edited));
    EXPECT_EQ(list.at(0).current.kind, -1);
    EXPECT_TRUE(IsDirty(list.at(0)));
    EXPECT_FALSE(UpdateEntry(list, 1, *edited));
}

TEST(EditorText, IsStoredOnOneLine) {
    const struct {
        const wchar_t* editor;
        const wchar_t* stored;
    } rows[] = {
        {L"", L"???Text"},  {L"a\r\nb", L"a\\nb"}, {L"a\nb\n", L"a\\nb\\n"}, {L"\r\n\n\r\n", L"\\n\\n\\n"},
        {L"a\rb", L"a\rb"}, {L" ", L" "},
    };
    for (const auto& row : rows) EXPECT_EQ(StoredFromEditorText(row.editor), row.stored);
    EXPECT_EQ(EditorFromStoredText(L"a\\nb\\n"), L"a\r\nb\r\n");
    EXPECT_TRUE(StoredFromEditorText(std::wstring(4000, L'x')));
    EXPECT_FALSE(StoredFromEditorText(std::wstring(4001, L'x')));
}

TEST(BlankEntry, IsFoundForReuse) {
    EntryList list;
    AddEntry(list, L"a", L"", 0, 0, -1, 0);
    AddEntry(list, L"", L"label", 0, 0, -1, 0);
    EXPECT_FALSE(FirstBlankPosition(list));
    AddEntry(list, L"", L"", 65, 4, -1, 0);
    EXPECT_EQ(FirstBlankPosition(list), 2);
}

}  // namespace
}  // namespace verbatix
