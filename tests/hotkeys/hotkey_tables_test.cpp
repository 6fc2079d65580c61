#include "hotkeys/hotkey_tables.h"

#include <gtest/gtest.h>

#include <memory>

namespace verbatix {
namespace {

TEST(HotkeyTables, CountByKeyAndByHotkeyAndKeepTheLastText) {
    const auto tables = std::make_unique<HotkeyTables>();
    EXPECT_TRUE(AddHotkey(*tables, 'Q', 4, L"first"));
    EXPECT_TRUE(AddHotkey(*tables, 'Q', 9, L"mouse"));
    EXPECT_TRUE(AddHotkey(*tables, 'Q', 4, L"last"));
    EXPECT_FALSE(AddHotkey(*tables, 'Q', 4, L""));
    EXPECT_EQ(tables->anyModifier['Q'], 3U);
    EXPECT_EQ(tables->counts[4]['Q'], 2U);
    EXPECT_EQ(tables->counts[9]['Q'], 1U);
    EXPECT_EQ(tables->texts[4]['Q'], L"last");
    EXPECT_EQ(tables->texts[9]['Q'], L"mouse");

    ClearHotkeys(*tables);
    EXPECT_EQ(tables->anyModifier['Q'], 0U);
    EXPECT_EQ(tables->counts[4]['Q'], 0U);
    EXPECT_TRUE(tables->texts[4]['Q'].empty());
}

TEST(HotkeyTables, KeepToTheirBounds) {
    const auto tables = std::make_unique<HotkeyTables>();
    // An unknown modifier code is shown as left Windows, so it works as left Windows.
    for (const unsigned code : {10U, 11U, 0xffffffffU}) AddHotkey(*tables, 255, code, L"text");
    EXPECT_EQ(tables->counts[0][255], 3U);
    AddHotkey(*tables, 0x1234'5600 + 'A', 1, L"low byte");
    EXPECT_EQ(tables->texts[1]['A'], L"low byte");
    // An entry without hotkey has a text, but no event may find it.
    EXPECT_TRUE(AddHotkey(*tables, 0, 1, L"no key"));
    EXPECT_TRUE(AddHotkey(*tables, 0x100, 1, L"no key"));
    EXPECT_EQ(tables->anyModifier[0], 0U);
}

TEST(DisabledHotkeys, AreThoseWhoseFlagIsSet) {
    const DisabledHotkeys disabled = {{4, {{'A', true}, {'B', false}}}};
    EXPECT_TRUE(IsHotkeyDisabled(disabled, 4, 'A'));
    EXPECT_FALSE(IsHotkeyDisabled(disabled, 4, 'B'));
    EXPECT_FALSE(IsHotkeyDisabled(disabled, 4, 'C'));
    EXPECT_FALSE(IsHotkeyDisabled(disabled, 5, 'A'));
}

}  // namespace
}  // namespace verbatix
