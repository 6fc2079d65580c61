// What the editor's fields mean, and what the Insert menu offers.
#include "ui/editor_fields.h"

#include <gtest/gtest.h>

#include <set>

#include "app/language_archive.h"
#include "hotkeys/hotkey_names.h"
#include "store/entry_syntax.h"
#include "ui/insert_menu.h"

namespace verbatix::test {
namespace {

TEST(KeyFromInput, TakesAnyCaseAndRefusesWhatIsNoKey) {
    const struct {
        const wchar_t* input;
        unsigned key;
    } rows[] = {
        {L"", 0},
        {L"  ", 0},
        {L"Q", 'Q'},
        {L"q", 'Q'},
        {L" q ", 'Q'},
        {L"7", '7'},
        {L"f5", VK_F5},
        {L"F12", VK_F12},
        {L"num_7", VK_NUMPAD7},
        {L"NUM_+", VK_ADD},
        {L"space", VK_SPACE},
        {L"tab", VK_TAB},
        {L"esc", VK_ESCAPE},
        {L"left", VK_LEFT},
        {L"DEL", VK_DELETE},
        {L"[", 0xFFFFFFDB},
        {L"\x00e4", 0xFFFFFFC4},
        {L"=", 0},
        {L"\x4e2d", 0},
        {L"\x0416", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(KeyFromInput(row.input), row.key) << ::testing::PrintToString(row.input);
}

TEST(KeyFromInput, EveryOfferedKeySurvivesTheFile) {
    for (const std::wstring& name : OfferedKeyNames()) {
        ListEntry entry = {};
        entry.modifier = 4;
        entry.keyCode = KeyFromInput(name);
        EXPECT_EQ(FormatKeyName(entry.keyCode), name);
        const std::optional<StoredEntry> read = ReadEntryValue(FormatStoredValue(entry));
        ASSERT_TRUE(read) << ::testing::PrintToString(name);
        EXPECT_EQ(read->key & 0xff, entry.keyCode & 0xff) << ::testing::PrintToString(name);
    }
}

TEST(EditedEntry, TakesEveryFieldAndKeepsTheRest) {
    ListEntry old = {};
    old.number = 7;
    old.order = -3;
    const auto entry = EditedEntry(old, {L"one\r\ntwo\nthree", std::wstring(300, L'l'), L"f3", 9});
    ASSERT_TRUE(entry);
    EXPECT_STREQ(entry->text, L"one\\ntwo\\nthree");
    EXPECT_EQ(std::wstring(entry->label), std::wstring(255, L'l'));
    EXPECT_EQ(entry->keyCode, static_cast<unsigned>(VK_F3));
    EXPECT_EQ(entry->modifier, 9U);
    EXPECT_EQ(entry->number, 7U);
    EXPECT_EQ(entry->order, -3);
    EXPECT_STREQ(EditedEntry(old, {})->text, L"???Text");
    EXPECT_TRUE(EditedEntry(old, {std::wstring(4000, L'x'), {}, {}}));
    EXPECT_FALSE(EditedEntry(old, {std::wstring(4001, L'x'), {}, {}}));
}

TEST(FindClash, NamesTheOtherEntryOnTheHotkey) {
    EntryList list;
    AddEntry(list, L"a", L"", 'Q', 4, -1, 0);
    AddEntry(list, L"b", L"", 'Q', 4, -1, 0);
    AddEntry(list, L"", L"", 'W', 4, -1, 0);
    AddEntry(list, L"c", L"", 0, 4, -1, 0);
    AddEntry(list, L"d", L"", 'E', 77, -1, 0);  // a modifier that does not exist counts as 0
    EXPECT_EQ(FindClash(list, 0, 'Q', 4), 1);
    EXPECT_EQ(FindClash(list, 1, 'Q', 4), 0);
    EXPECT_EQ(FindClash(list, 0, 'Q', 5), std::nullopt);
    EXPECT_EQ(FindClash(list, 0, 'W', 4), std::nullopt);
    EXPECT_EQ(FindClash(list, 0, 0, 4), std::nullopt);
    EXPECT_EQ(FindClash(list, 0, 'E', 0), 4);
}

// A token without a word of explanation is one that was added to a table and forgotten in the menu.
TEST(InsertItems, ExplainsEveryTokenInBothLanguages) {
    for (const int language : {0, 1}) {
        ASSERT_TRUE(LoadLanguageArchive(language));
        SYSTEMTIME now = {};
        GetLocalTime(&now);
        std::set<int> groups;
        int before = 0;
        for (const InsertItem& item : InsertItems(now)) {
            EXPECT_FALSE(item.token.empty());
            EXPECT_FALSE(item.meaning.empty()) << language << ::testing::PrintToString(item.token);
            EXPECT_EQ(groups.insert(item.group).second, item.group != before) << item.group;
            before = item.group;
        }
        EXPECT_EQ(groups.size(), 8U);
    }
}

}  // namespace
}  // namespace verbatix::test
