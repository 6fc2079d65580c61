#include "store/settings.h"

#include <gtest/gtest.h>

#include "ids.h"
#include "store/ini_files.h"
#include "store/list_hotkeys.h"
#include "store/paused_programs.h"
#include "store/profile.h"

namespace verbatix::test {
namespace {

void LoadAll() {
    settings = {};
    LoadSettings(SettingGroup::kStart);
    LoadSettings();
}

struct Option {
    const wchar_t* key;
    int Settings::*value;
    int defaultValue;
    int command = 0;  // flips it
    bool ofProduct = false;
    bool isRead = true;  // with the main dialog's
};

// What files of users hold and what is so where they hold nothing.
constexpr Option kOptions[] = {
    {L"m_set_focus", &Settings::setFocus, 0, CMD_SET_FOCUS},
    {L"m_grouping", &Settings::grouping, 1, 40013},
    {L"m_show_tree", &Settings::showTree, 0, 32800},
    {L"show_uses", &Settings::showUses, 0, CMD_SHOW_USES},
    {L"tray_if_close", &Settings::trayIfClose, 1, 2},
    {L"hide_if_close", &Settings::hideIfClose, 0, 6},
    {L"start_tray", &Settings::startTray, 0, 3},
    {L"start_hiden", &Settings::startHidden, 0, 4},
    {L"tray_if_minimize", &Settings::trayIfMinimize, 1, 5},
    {L"topmost", &Settings::topmost, 0, CMD_TOPMOST},
    {L"use_time_format", &Settings::useTimeFormat, 1, 1113},
    {L"use_date_format", &Settings::useDateFormat, 1, 1112},
    {L"restore_old_clipboard", &Settings::restoreOldClipboard, 0, 1115},
    {L"use_menu_sort", &Settings::useMenuSort, 1},
    {L"use_ignore_case", &Settings::useIgnoreCase, 1, 3000},
    {L"show_menu_tooltip", &Settings::showMenuTooltip, 0, 3001},
    {L"sort_col", &Settings::sortColumn, -1},
    {L"SortDescending", &Settings::sortDescending, 0},
    {L"use_backup_h", &Settings::useBackupHourly, 0, 4001},
    {L"use_backup_d", &Settings::useBackupDaily, 0, 4002},
    {L"use_autocomplete", &Settings::useAutocomplete, 1, CMD_SUGGEST_WORDS},
    {L"size", &Settings::size, 0},
    {L"show_preview", &Settings::showPreview, 1, CMD_SHOW_PREVIEW},
    {L"list_on_percent", &Settings::listOnPercent, 1, CMD_LIST_ON_PERCENT},
    {L"fixed_width", &Settings::fixedWidth, 0, CMD_FIXED_WIDTH},
    {L"split_beside", &Settings::splitBeside, 0},
    {L"split_above", &Settings::splitAbove, 0},
    {L"col_hotkey", &Settings::hotkeyWidth, 0},
    {L"col_label", &Settings::labelWidth, 0},
    {L"hide_info", &Settings::hideInfo, 0},
    {L"tray_info", &Settings::trayInfo, 0},
    {L"m_use_system_icons", &Settings::useSystemIcons, 1, CMD_SYSTEM_ICONS, true},
    {L"m_use_menu_order", &Settings::useMenuOrder, 1, 3002, true},
    {L"lng", &Settings::language, 0, 0, false, false},
    {L"disable_dark_theme", &Settings::disableDarkTheme, 0, 3004, false, false},
    {L"soft_paint", &Settings::softPaint, 1, CMD_SOFT_PAINT, false, false},
};

TEST(Settings, EveryKeyHasItsDefaultAndComesBackFromItsOwnSection) {
    const SettingsFolder folder;
    LoadAll();
    for (const Option& option : kOptions)
        EXPECT_EQ(settings.*option.value, option.defaultValue) << option.key;
    EXPECT_EQ(ReadBytes(settingsPath), "") << "reading writes nothing";
    EXPECT_EQ(std::size(kOptions) * sizeof(int), sizeof(Settings));
    EXPECT_EQ(SettingTable().size(), std::size(kOptions));

    int value = 100;
    for (const Option& option : kOptions) ChangeSetting(option.value, ++value);
    for (const bool isMain : {true, false}) {
        settings = {};
        LoadSettings(isMain ? SettingGroup::kMain : SettingGroup::kStart);
        value = 100;
        for (const Option& option : kOptions) {
            EXPECT_EQ(ReadProfileNumber(option.ofProduct ? L"Verbatix" : L"Program", option.key, 0),
                      ++value);
            EXPECT_EQ(settings.*option.value, option.isRead == isMain ? value : option.defaultValue)
                << option.key;
        }
    }
    settings = {};
}

TEST(Settings, CommandsFlipAndSetAndWriteAtOnce) {
    const SettingsFolder folder;
    settings = {};
    for (const Option& option : kOptions) {
        if (option.command == 0) continue;
        const bool before = IsSettingChecked(option.command).value();
        EXPECT_EQ(before, option.defaultValue != 0) << option.key;
        for (const bool after : {!before, before}) {
            EXPECT_TRUE(RunSettingCommand(option.command));
            EXPECT_EQ(ReadProfileNumber(option.ofProduct ? L"Verbatix" : L"Program", option.key, -9),
                      after);
            EXPECT_EQ(settings.*option.value, after) << option.key;
            EXPECT_EQ(IsSettingChecked(option.command), after);
        }
    }
    for (const int choice : {2, 0, 1}) {
        EXPECT_TRUE(RunSettingCommand(2000 + choice));
        EXPECT_EQ(ReadProgramNumber(L"use_menu_sort", -9), choice);
        EXPECT_TRUE(RunSettingCommand(CMD_SIZE_FIRST + choice));
        EXPECT_EQ(ReadProgramNumber(L"size", -9), choice);
        for (const int other : {0, 1, 2}) {
            EXPECT_EQ(IsSettingChecked(2000 + other), other == choice);
            EXPECT_EQ(IsSettingChecked(CMD_SIZE_FIRST + other), other == choice);
        }
    }
    for (const int command : {0, 1, 7, 1116, 1999, 2003, 3003, CMD_SIZE_FIRST + 3}) {
        EXPECT_FALSE(RunSettingCommand(command)) << command;
        EXPECT_FALSE(IsSettingChecked(command)) << command;
    }
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
    EXPECT_EQ(ReadProgramText(L"WinRC", 100), FormatWindowPlace(place));
    EXPECT_TRUE(ParseWindowPlace(L"-100000;-100000;100000;100000;1"));
    for (const wchar_t* value : {L"", L";;;;;", L"1;2;3;4", L"0;0;0;0;1;x,y,w,h,SW", L"a;b;c;d;e;f",
                                 L"0;0;2147483647;5;1;", L"-2147483648;0;5;5;1;", L"1,2,3,4,5",
                                 L"-100001;0;5;5;1", L"0;0;5;100001;1", L"5;0;5;9;1", L"0;9;5;9;1"}) {
        EXPECT_FALSE(ParseWindowPlace(value)) << value;
    }
    EXPECT_TRUE(LoadDisabledHotkeys().empty());
    const DisabledHotkeys disabled = {{4, {{65, true}, {186, true}}}, {9, {{32, true}}}};
    EXPECT_TRUE(SaveDisabledHotkeys(disabled));
    EXPECT_EQ(LoadDisabledHotkeys(), disabled);
    EXPECT_EQ(ReadProgramText(L"m_disables_keys", 100), L"Ctrl+A|Ctrl+\xba|R-Mouse+Space|");
    settingsPath = folder.Path();
    EXPECT_FALSE(SaveDisabledHotkeys(disabled));
}

TEST(PausedPrograms, AreKeptByTheirNames) {
    const std::pair<const wchar_t*, std::vector<std::wstring>> rows[] = {
        {L"", {}},
        {L"notepad.exe", {L"notepad.exe"}},
        {L" A.exe |NOTEPAD.EXE|a.EXE||C:\\x.exe|say\"|m\u00fc & co.exe",
         {L"A.exe", L"NOTEPAD.EXE", L"m\u00fc & co.exe"}}};
    for (const auto& [value, programs] : rows) {
        EXPECT_EQ(ParseProgramNames(value), programs) << ::testing::PrintToString(value);
        EXPECT_EQ(ParseProgramNames(FormatProgramNames(programs)), programs);
    }
    ProgramNames programs;
    for (int i = 0; i < 60; ++i) ToggleProgram(programs, std::to_wstring(i) + L".exe");
    EXPECT_EQ(programs.size(), kMostProgramNames) << "a bound against hostile files";
    ToggleProgram(programs, L"7.EXE");
    EXPECT_FALSE(HasProgram(programs, L"7.exe"));
}

}  // namespace
}  // namespace verbatix::test
