#include "store/settings.h"

#include <gtest/gtest.h>

#include <climits>

#include "ids.h"
#include "store/ini_files.h"
#include "store/list_hotkeys.h"
#include "store/profile.h"

namespace verbatix {
namespace {

using test::SettingsFolder;

void LoadAll() {
    settings = {};
    LoadSettings(SettingGroup::kStart);
    LoadSettings();
}

TEST(Settings, EveryKeyKeepsItsDefaultAndComesBackFromItsOwnSection) {
    const SettingsFolder folder;
    LoadAll();
    const Settings defaults;
    for (const SettingRow& row : SettingTable())
        EXPECT_EQ(settings.*row.value, defaults.*row.value) << row.key;
    EXPECT_EQ(test::ReadBytes(settingsPath), "") << "reading writes nothing";
    settings.language = 4;
    LoadSettings(SettingGroup::kStart);
    EXPECT_EQ(settings.language, 4) << "what the system's language chose";

    EXPECT_EQ(SettingTable().size() * sizeof(int), sizeof(Settings)) << "a setting without a row";
    int value = 100;
    for (const SettingRow& row : SettingTable()) ChangeSetting(row.value, ++value);
    LoadAll();
    value = 100;
    for (const SettingRow& row : SettingTable()) {
        EXPECT_EQ(settings.*row.value, ++value) << row.key;
        EXPECT_EQ(ReadProfileNumber(row.section, row.key, 0), value);
    }
    settings = {};
}

TEST(Settings, HandEditedNumbersAndForeignSections) {
    const SettingsFolder folder;
    test::WriteBytes(
        settingsPath,
        test::Utf16File(L"[Program]\r\nuse_menu_sort= 2 \r\nsort_col=\r\nTRAY_IF_CLOSE=\"0\"\r\n"
                        L"start_tray=99999999999\r\nsize=3px\r\nm_use_menu_order=0\r\n"));
    LoadAll();
    EXPECT_EQ(settings.useMenuSort, 2);
    EXPECT_EQ(settings.sortColumn, 0) << "a key without value is text that is no number";
    EXPECT_EQ(settings.trayIfClose, 0);
    EXPECT_EQ(settings.startTray, INT_MAX);
    EXPECT_EQ(settings.size, 3);
    EXPECT_EQ(settings.useMenuOrder, 1) << "read in the product's section only";
    settings = {};
}

TEST(Settings, CommandsFlipAndSetAndWriteAtOnce) {
    const SettingsFolder folder;
    settings = {};
    const std::pair<int, const wchar_t*> rows[] = {
        {2, L"tray_if_close"},
        {3, L"start_tray"},
        {4, L"start_hiden"},
        {1112, L"use_date_format"},
        {1115, L"restore_old_clipboard"},
        {3000, L"use_ignore_case"},
        {CMD_TOPMOST, L"topmost"},
        {CMD_SET_FOCUS, L"m_set_focus"},
        {CMD_SOFT_PAINT, L"soft_paint"},
    };
    for (const auto& [command, key] : rows) {
        const bool before = IsSettingChecked(command).value();
        for (const bool after : {!before, before}) {
            EXPECT_TRUE(RunSettingCommand(command));
            EXPECT_EQ(ReadProgramNumber(key, -9), after) << key;
            EXPECT_EQ(IsSettingChecked(command), after);
        }
    }
    for (const int choice : {2, 0, 1}) {
        EXPECT_TRUE(RunSettingCommand(2000 + choice));
        EXPECT_EQ(ReadProgramNumber(L"use_menu_sort", -9), choice);
        for (const int other : {0, 1, 2}) EXPECT_EQ(IsSettingChecked(2000 + other), other == choice);
    }
    for (const int command : {0, 1, 7, 1116, 1999, 2003, 3003})
        EXPECT_FALSE(RunSettingCommand(command)) << command;
    settings.startTray = -7;
    settingsPath = folder.Path();
    RunSettingCommand(3);
    EXPECT_EQ(settings.startTray, 0) << "all but 0 becomes 0, and a failed write keeps the change";
    settings = {};
}

TEST(Settings, WindowPlaceAndDisabledHotkeysComeBack) {
    const SettingsFolder folder;
    const WindowPlace place{-1200, 20, 300, 900, 3};
    EXPECT_EQ(FormatWindowPlace(place), L"-1200;20;300;900;3;x,y,w,h,SW");
    EXPECT_FALSE(LoadWindowPlace());
    SaveWindowPlace(place);
    EXPECT_EQ(LoadWindowPlace(), place);
    for (const wchar_t* value : {L"", L";;;;;", L"1;2;3;4", L"0;0;0;0;1;x,y,w,h,SW", L"a;b;c;d;e;f",
                                 L"0;0;2147483647;5;1;", L"-2147483648;0;5;5;1;", L"1,2,3,4,5"}) {
        EXPECT_FALSE(ParseWindowPlace(value)) << value;
    }
    EXPECT_TRUE(LoadDisabledHotkeys().empty());
    const DisabledHotkeys disabled = {{4, {{65, true}, {186, true}}}, {9, {{32, true}}}};
    EXPECT_TRUE(SaveDisabledHotkeys(disabled));
    EXPECT_EQ(LoadDisabledHotkeys(), disabled);
    settingsPath = folder.Path();
    EXPECT_FALSE(SaveDisabledHotkeys(disabled));
}

}  // namespace
}  // namespace verbatix
