// One entry and the list of them: fields, the line that stands in a file, and moves within the list.
#include "store/entry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "store/entry_moves.h"
#include "store/entry_syntax.h"
#include "store/entry_uses.h"
#include "store/export_text.h"

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

TEST(EntryUses, GoWithTheEntryWhateverBecomesOfIt) {
    constexpr UseKey a = 1, b = 2, c = 3, d = 4;
    const Uses five = {5, 50};
    const Uses two = {2, 90};
    const struct {
        EditedKeys edited;
        UseBook expected;
    } rows[] = {
        {{{a, c}}, {{a, five}, {b, two}, {c, five}}},         // edited
        {{{a, b}, {b, a}}, {{a, five}, {b, two}}},            // changed places
        {{{a, b}, {b, c}, {c, a}}, {{a, five}, {b, two}}},    // all moved by one
        {{{a, a}, {b, d}}, {{a, five}, {b, two}, {d, two}}},  // renamed, edited
        {{{a, b}}, {{a, five}, {b, {5, 90}}}},                // made equal to another
        {{{d, c}}, {{a, five}, {b, two}}},                    // never used
    };
    for (const auto& [edited, expected] : rows) {
        UseBook book = {{a, five}, {b, two}};
        CarryUses(book, edited);
        EXPECT_EQ(book, expected) << edited[0].first << edited[0].second << edited.size();
        // A save that fails tells of the same edit again.
        CarryUses(book, edited);
        EXPECT_EQ(book, expected) << "again";
    }
    EXPECT_NE(UseKeyOf('Q', 4, L"text"), UseKeyOf('Q', 5, L"text"));
    EXPECT_NE(UseKeyOf('Q', 4, L"text"), UseKeyOf('W', 4, L"text"));
    EXPECT_EQ(UseKeyOf(0xffffff00 + 200, 12, L"text"), UseKeyOf(200, 0, L"text")) << "as the hook has it";
    EXPECT_EQ(UseKeyOf('Q', 4, L"text"), 0xdd52bea1b0ef3bafU) << "files depend on it";
}

TEST(EntryUses, AreReadBackAndNothingElseIs) {
    UseBook book;
    for (const std::int64_t now : {100, 200}) CountUse(book, 0xabc, now);
    CountUse(book, 0xffffffffffffffff, 1'795'000'000);
    CountUse(book, 7, 5);
    const std::string bytes = FormatUses(book, {0xabc, 0xffffffffffffffff, 8});
    const UseBook kept = {{0xabc, {2, 200}}, {0xffffffffffffffff, {1, 1'795'000'000}}};
    EXPECT_EQ(ParseUses(bytes), kept) << bytes;
    const std::pair<std::string, UseBook> rows[] = {
        {"", {}},
        {"a 1 2", {{10, {1, 2}}}},
        {"a 1 2\na 3 4\r\n", {{10, {3, 4}}}},
        {"a 4294967295 2\n", {{10, {999'999'999, 2}}}},
        {"11112222333344445 1 2\n; 1 1 1\n\n 1 1 1\ng 1 1\n1 x 1\n1 0 1\n1 1\n1 1 -5\n1 -1 1\n1 "
         "99999999999 1"
         "\n1 1 999999999999999\n1,1,1\n" +
             std::string(9, '\0'),
         {}},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(ParseUses(text), expected) << text;
}

TEST(EntryValue, ReadsWhatTheFileHolds) {
    const std::tuple<const wchar_t*, unsigned, unsigned, const wchar_t*> rows[] = {
        {L"Ctrl+C=a=b<E<N<D|", 4, 67, L"a=b"},
        {L"Ctrl-Alt+NUM_+=x", 2, 107, L"x"},
        {L"L-Mouse+Space=  x  <E<N<D|", 7, 32, L"  x  "},
        {L"L-Win+A=<E<N<D|<E<N<D|", 0, 65, L"<E<N<D|"},
        {L"L-Win+A=a<E<N<D|b", 0, 65, L"a<E<N<D|b"},
        {L"L-Win+A=x<E<N<D", 0, 65, L"x<E<N<D"},
        {L"L-Win+Unknown=x", 0, L'U', L"x"},
    };
    for (const auto& [value, modifier, key, text] : rows) {
        const std::optional<StoredEntry> entry = ReadEntryValue(value);
        ASSERT_TRUE(entry) << value;
        EXPECT_EQ(entry->modifier, modifier) << value;
        EXPECT_EQ(entry->key, key) << value;
        EXPECT_EQ(entry->text, text) << value;
    }
    for (const wchar_t* value : {L"", L"<E<N<D|", L"Shift+A=x", L"Ctrl-Shift+A=x", L" Ctrl+A=x",
                                 L"Ctrl A=x", L"Ctrl", L"Ctrl+A"}) {
        EXPECT_FALSE(ReadEntryValue(value)) << value;
    }
    EXPECT_EQ(ReadEntryValue(L"Alt+A=" + std::wstring(100000, L'x'))->text.size(), 4095u - 6);
}

TEST(EntryValue, ACutMarkerIsNotText) {
    constexpr std::size_t kRead = kTextLimit - 1;
    for (std::size_t kept = 0; kept <= kEndMarker.size(); ++kept) {
        const std::wstring text(kRead - 6 - kept, L'x');
        const std::wstring value = L"Alt+A=" + text + std::wstring(kEndMarker);
        EXPECT_EQ(ReadEntryValue(value.substr(0, kRead))->text, text) << kept;
        EXPECT_EQ(ReadEntryValue(value)->text, text) << kept;
    }
    const std::wstring shorter = std::wstring(kRead - 9, L'x') + L"<E";
    EXPECT_EQ(ReadEntryValue(L"Alt+A=" + shorter)->text, shorter) << "was not cut";
}

TEST(EntryKey, HasThreeDigitsAndMore) {
    EXPECT_EQ(EntryNumberOfKey(L"TEXT_012"), 12u);
    EXPECT_EQ(EntryNumberOfKey(L"text_999999999"), 999999999u);
    for (const wchar_t* key :
         {L"", L"text_7", L"text_0007", L"text_-01", L"text_1000000000", L"text_4294967296"}) {
        EXPECT_FALSE(EntryNumberOfKey(key)) << key;
    }
}

TEST(Export, ReadsOrdinaryAndHostileTextsInKeyOrder) {
    const auto shown = [](std::wstring_view text) {
        std::wstring result;
        for (const EntryTexts& entry : ParseExport(text)) {
            result += L"(" + entry.value + L"," + entry.label + L"," + entry.order + L")";
        }
        return result;
    };
    const wchar_t* const rows[][2] = {
        {L"[list_text]\r\ntext_000=Ctrl+A=a  \r\ntext_001=Alt+B=b=c\r\n"
         L"[list_label]\r\ntext_000= label\r\n[list_order]\r\ntext_001=7\r\n",
         L"(Ctrl+A=a  , label,)(Alt+B=b=c,,7)"},
        {L"[list_text]\ntext_1000=d\ntext_999=c\ntext_10000=e\ntext_002=a", L"(a,,)(c,,)(d,,)(e,,)"},
        {L"[list_text]=x\ntext_000=a", L"(a,,)"},
        {L"[list_text", L""},
        {L"[list_label]\ntext_000=x", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(shown(row[0]), row[1]);
    const auto entries = ParseExport(L"[List_Text]\ntext_001=b\nnothing\n=\ntext_000=a\ntext_000=twice");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[1].value + entries[2].value, L"ab");
}

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
}  // namespace verbatix
