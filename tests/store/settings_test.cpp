#include "store/settings.h"

#include <gtest/gtest.h>

#include <climits>

#include "store/ini_files.h"
#include "store/list_hotkeys.h"
#include "store/profile.h"

namespace verbatix {
namespace {

using test::ReadBytes;
using test::SettingsFolder;
using test::Utf16File;
using test::WriteBytes;

// Every option with its default, in the order in which the main dialog reads them.
const struct {
    const wchar_t* key;
    int value;
} kExpected[] = {
    {L"lng", 0},
    {L"disable_dark_theme", 0},
    {L"soft_paint", 1},
    {L"m_use_system_icons", 1},
    {L"m_set_focus", 0},
    {L"m_grouping", 1},
    {L"m_show_tree", 0},
    {L"tray_if_close", 1},
    {L"hide_if_close", 0},
    {L"start_tray", 0},
    {L"start_hiden", 0},
    {L"tray_if_minimize", 1},
    {L"topmost", 0},
    {L"use_time_format", 1},
    {L"use_date_format", 1},
    {L"restore_old_clipboard", 0},
    {L"use_menu_sort", 1},
    {L"use_ignore_case", 1},
    {L"show_menu_tooltip", 0},
    {L"m_use_menu_order", 1},
    {L"sort_col", -1},
    {L"SortDescending", 0},
    {L"use_backup_h", 0},
    {L"use_backup_d", 0},
    {L"use_autocomplete", 1},
    {L"hide_info", 0},
    {L"size", 0},
};

void LoadAll() {
    settings = {};
    LoadSettings(SettingGroup::kStart);
    LoadSettings();
}

TEST(Settings, TableIsComplete) {
    const auto table = SettingTable();
    ASSERT_EQ(table.size(), std::size(kExpected));
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_STREQ(table[i].key, kExpected[i].key);
        const std::wstring_view key = table[i].key;
        const bool isProduct = key == L"m_use_system_icons" || key == L"m_use_menu_order";
        EXPECT_STREQ(table[i].section, isProduct ? L"Verbatix" : L"Program");
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(table[i].value, table[j].value) << table[i].key;
    }
    EXPECT_EQ(table.size() * sizeof(int), sizeof(Settings)) << "a setting without a row";
}

TEST(Settings, MissingKeysKeepTheirDefaults) {
    const SettingsFolder folder;
    LoadAll();
    for (std::size_t i = 0; i < std::size(kExpected); ++i) {
        EXPECT_EQ(settings.*SettingTable()[i].value, kExpected[i].value) << kExpected[i].key;
    }
    EXPECT_EQ(ReadBytes(settingsPath), "") << "reading writes nothing";
    settings.language = 4;
    LoadSettings(SettingGroup::kStart);
    EXPECT_EQ(settings.language, 4) << "what the system's language chose";
}

TEST(Settings, EveryKeyComesBackFromItsOwnSection) {
    const SettingsFolder folder;
    int value = 100;
    settings = {};
    for (const SettingRow& row : SettingTable()) ChangeSetting(row.value, ++value);
    LoadAll();
    value = 100;
    for (const SettingRow& row : SettingTable()) {
        EXPECT_EQ(settings.*row.value, ++value) << row.key;
        EXPECT_EQ(ReadProfileNumber(row.section, row.key, 0), value);
    }
    settings = {};
}

TEST(Settings, HandEditedNumbers) {
    const SettingsFolder folder;
    WriteBytes(
        settingsPath,
        Utf16File(L"[Program]\r\ntopmost=on\r\nuse_menu_sort= 2 \r\nsort_col=\r\nTRAY_IF_CLOSE=\"0\"\r\n"
                  L"start_tray=99999999999\r\nsize=3px\r\nm_use_menu_order=0\r\n; m_grouping=0\r\n"
                  L"[Verbatix]\r\nm_use_system_icons=-1\r\n"));
    LoadAll();
    EXPECT_EQ(settings.topmost, 0);
    EXPECT_EQ(settings.useMenuSort, 2);
    EXPECT_EQ(settings.sortColumn, 0) << "a key without value is text that is no number";
    EXPECT_EQ(settings.trayIfClose, 0);
    EXPECT_EQ(settings.startTray, INT_MAX);
    EXPECT_EQ(settings.size, 3);
    EXPECT_EQ(settings.useMenuOrder, 1) << "read in the product's section only";
    EXPECT_EQ(settings.useSystemIcons, -1);
    EXPECT_EQ(settings.grouping, 1);
    settings = {};
}

TEST(Settings, CommandsFlipAndSetAndWriteAtOnce) {
    const SettingsFolder folder;
    settings = {};
    const struct {
        int command;
        const wchar_t* section;
        const wchar_t* key;
    } rows[] = {
        {2, L"Program", L"tray_if_close"},        {3, L"Program", L"start_tray"},
        {4, L"Program", L"start_hiden"},          {5, L"Program", L"tray_if_minimize"},
        {6, L"Program", L"hide_if_close"},        {1112, L"Program", L"use_date_format"},
        {1113, L"Program", L"use_time_format"},   {1115, L"Program", L"restore_old_clipboard"},
        {3000, L"Program", L"use_ignore_case"},   {3001, L"Program", L"show_menu_tooltip"},
        {3002, L"Verbatix", L"m_use_menu_order"},
    };
    for (const auto& row : rows) {
        const bool before = IsSettingChecked(row.command).value();
        EXPECT_TRUE(RunSettingCommand(row.command));
        EXPECT_EQ(ReadProfileNumber(row.section, row.key, -9), before ? 0 : 1) << row.key;
        EXPECT_EQ(IsSettingChecked(row.command), !before);
        EXPECT_TRUE(RunSettingCommand(row.command));
        EXPECT_EQ(ReadProfileNumber(row.section, row.key, -9), before ? 1 : 0) << row.key;
    }
    for (const int choice : {2, 0, 1}) {
        EXPECT_TRUE(RunSettingCommand(2000 + choice));
        EXPECT_EQ(ReadProgramNumber(L"use_menu_sort", -9), choice);
        for (const int other : {0, 1, 2}) EXPECT_EQ(IsSettingChecked(2000 + other), other == choice);
    }
    settings.topmost = 0;
    settings.startTray = -7;
    RunSettingCommand(3);
    EXPECT_EQ(settings.startTray, 0) << "all but 0 becomes 0";
    for (const int command : {0, 1, 7, 1116, 1999, 2003, 3003})
        EXPECT_FALSE(RunSettingCommand(command)) << command;
    settings = {};
}

TEST(Settings, AFailedWriteKeepsTheChange) {
    const SettingsFolder folder;
    settings = {};
    settingsPath = folder.Path();
    EXPECT_TRUE(RunSettingCommand(3));
    EXPECT_EQ(settings.startTray, 1);
    settings = {};
}

TEST(WindowPlace, RoundTripAndHostileValues) {
    const SettingsFolder folder;
    const WindowPlace place{-1200, 20, 300, 900, 3};
    EXPECT_EQ(FormatWindowPlace(place), L"-1200;20;300;900;3;x,y,w,h,SW");
    EXPECT_FALSE(LoadWindowPlace());
    SaveWindowPlace(place);
    EXPECT_EQ(LoadWindowPlace(), place);
    EXPECT_EQ(ParseWindowPlace(L"1;2;3;4;5"), (WindowPlace{1, 2, 3, 4, 5}));
    for (const wchar_t* value :
         {L"", L";;;;;", L"1;2;3;4", L"0;0;0;0;1;x,y,w,h,SW", L"9;0;3;4;1;", L"a;b;c;d;e;f",
          L"0;0;2147483647;5;1;", L"-2147483648;0;5;5;1;", L"1,2,3,4,5"}) {
        EXPECT_FALSE(ParseWindowPlace(value)) << value;
    }
}

TEST(DisabledHotkeysSetting, RoundTripInTheFile) {
    const SettingsFolder folder;
    EXPECT_TRUE(LoadDisabledHotkeys().empty());
    const DisabledHotkeys disabled = {{4, {{65, true}, {186, true}}}, {9, {{32, true}}}};
    EXPECT_TRUE(SaveDisabledHotkeys(disabled));
    EXPECT_EQ(LoadDisabledHotkeys(), disabled);
    settingsPath = folder.Path();
    EXPECT_FALSE(SaveDisabledHotkeys(disabled));
}

}  // namespace
}  // namespace verbatix
