// What the editor's fields mean, and what the Insert menu offers.
#include "ui/editor/editor_fields.h"

#include <gtest/gtest.h>

#include <set>

#include "app/language_archive.h"
#include "hotkeys/hotkey_names.h"
#include "store/entry_syntax.h"
#include "ui/editor/code_catalogue.h"

namespace verbatix::test {
namespace {

TEST(KeyFromInput, TakesAnyCaseAndRefusesWhatIsNoKey) {
    const std::pair<const wchar_t*, std::optional<unsigned>> rows[] = {
        {L"", 0},
        {L"Q", 'Q'},
        {L" q ", 'Q'},
        {L"f5", VK_F5},
        {L"F12", VK_F12},
        {L"NUM_+", VK_ADD},
        {L"space", VK_SPACE},
        {L"[", 0xFFFFFFDB},
        {L"\x00e4", 0xFFFFFFC4},
        {L"=", {}},
        {L"\x4e2d", {}},
        // What only begins like a key, or is the code of another one.
        {L"Hyper", {}},
        {L"F13", {}},
        {L"Deleted", {}},
        {L"NUM_X", {}},
        {L"%", {}},
        {L"\\", {}},
    };
    for (const auto& [input, key] : rows)
        EXPECT_EQ(KeyFromInput(input), key) << ::testing::PrintToString(input);
}

TEST(KeyFromInput, EveryOfferedKeySurvivesTheFile) {
    for (const std::wstring& name : OfferedKeyNames()) {
        ListEntry entry = {};
        entry.modifier = 4;
        entry.keyCode = KeyFromInput(name).value();
        EXPECT_EQ(FormatKeyName(entry.keyCode), name);
        const std::optional<StoredEntry> read = ReadEntryValue(FormatStoredValue(entry));
        ASSERT_TRUE(read) << ::testing::PrintToString(name);
        EXPECT_EQ(read->key & 0xff, entry.keyCode & 0xff) << ::testing::PrintToString(name);
    }
}

TEST(IsStorableKey, RefusesWhatTheFileCannotHold) {
    for (const unsigned key :
         {0, int{'='}, VK_RETURN, VK_BACK, VK_PAUSE, VK_APPS, VK_LWIN, VK_RMENU, VK_LSHIFT}) {
        EXPECT_FALSE(IsStorableKey(key)) << key;
    }
}

// A token without a word of explanation is one that was added to a table and forgotten in the menu.
TEST(CodeItems, ExplainsEveryTokenInBothLanguages) {
    for (const int language : {0, 1}) {
        ASSERT_TRUE(LoadLanguageArchive(language));
        std::set<int> groups;
        int before = 0;
        for (const CodeItem& item : CodeItems()) {
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
