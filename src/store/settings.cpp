#include "store/settings.h"

#include <algorithm>

#include "base/product.h"
#include "base/text.h"
#include "ids.h"
#include "store/profile.h"
#include "store/profile_section.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"

namespace verbatix {

Settings settings;

namespace {

constexpr const wchar_t* kProductSection = kProductName;
constexpr const wchar_t* kWindowPlaceKey = L"WinRC";
constexpr std::size_t kWindowPlaceSize = 1024;
// Farther from the origin no desktop reaches.
constexpr int kFarthestEdge = 100000;

constexpr auto kStart = SettingGroup::kStart;
constexpr auto kMain = SettingGroup::kMain;

constexpr SettingRow kTable[] = {
    {L"lng", kProgramSection, &Settings::language, kStart, 0, 0},
    {L"disable_dark_theme", kProgramSection, &Settings::disableDarkTheme, kStart, CMD_NEVER_DARK, 0},
    {L"soft_paint", kProgramSection, &Settings::softPaint, kStart, CMD_SOFT_PAINT, 0},
    {L"m_use_system_icons", kProductSection, &Settings::useSystemIcons, kMain, CMD_SYSTEM_ICONS, 0},
    {L"m_set_focus", kProgramSection, &Settings::setFocus, kMain, CMD_SET_FOCUS, 0},
    {L"m_grouping", kProgramSection, &Settings::grouping, kMain, CMD_SHOW_GROUPS, 0},
    {L"m_show_tree", kProgramSection, &Settings::showTree, kMain, CMD_SHOW_TREE, 0},
    {L"show_uses", kProgramSection, &Settings::showUses, kMain, CMD_SHOW_USES, 0},
    {L"tray_if_close", kProgramSection, &Settings::trayIfClose, kMain, CMD_TRAY_IF_CLOSE, 0},
    {L"hide_if_close", kProgramSection, &Settings::hideIfClose, kMain, CMD_HIDE_IF_CLOSE, 0},
    {L"start_tray", kProgramSection, &Settings::startTray, kMain, CMD_START_IN_TRAY, 0},
    {L"start_hiden", kProgramSection, &Settings::startHidden, kMain, CMD_START_HIDDEN, 0},
    {L"tray_if_minimize", kProgramSection, &Settings::trayIfMinimize, kMain, CMD_TRAY_IF_MINIMIZE, 0},
    {L"topmost", kProgramSection, &Settings::topmost, kMain, CMD_TOPMOST, 0},
    {L"use_time_format", kProgramSection, &Settings::useTimeFormat, kMain, CMD_TIME_CODES, 0},
    {L"use_date_format", kProgramSection, &Settings::useDateFormat, kMain, CMD_DATE_CODES, 0},
    {L"restore_old_clipboard", kProgramSection, &Settings::restoreOldClipboard, kMain,
     CMD_RESTORE_CLIPBOARD, 0},
    {L"use_menu_sort", kProgramSection, &Settings::useMenuSort, kMain, CMD_MENU_SORT_FIRST, 3},
    {L"use_ignore_case", kProgramSection, &Settings::useIgnoreCase, kMain, CMD_IGNORE_CASE, 0},
    {L"show_menu_tooltip", kProgramSection, &Settings::showMenuTooltip, kMain, CMD_MENU_TIPS, 0},
    {L"m_use_menu_order", kProductSection, &Settings::useMenuOrder, kMain, CMD_ORDER_NUMBERS, 0},
    {L"sort_col", kProgramSection, &Settings::sortColumn, kMain, 0, 0},
    {L"SortDescending", kProgramSection, &Settings::sortDescending, kMain, 0, 0},
    {L"use_backup_h", kProgramSection, &Settings::useBackupHourly, kMain, CMD_BACKUP_HOURLY, 0},
    {L"use_backup_d", kProgramSection, &Settings::useBackupDaily, kMain, CMD_BACKUP_DAILY, 0},
    {L"use_autocomplete", kProgramSection, &Settings::useAutocomplete, kMain, CMD_SUGGEST_WORDS, 0},
    {L"show_preview", kProgramSection, &Settings::showPreview, kMain, CMD_SHOW_PREVIEW, 0},
    {L"list_on_percent", kProgramSection, &Settings::listOnPercent, kMain, CMD_LIST_ON_PERCENT, 0},
    {L"hide_info", kProgramSection, &Settings::hideInfo, kMain, 0, 0},
    {L"tray_info", kProgramSection, &Settings::trayInfo, kMain, 0, 0},
    {L"size", kProgramSection, &Settings::size, kMain, CMD_SIZE_FIRST, 3},
    {L"fixed_width", kProgramSection, &Settings::fixedWidth, kMain, CMD_FIXED_WIDTH, 0},
    {L"split_beside", kProgramSection, &Settings::splitBeside, kMain, 0, 0},
    {L"split_above", kProgramSection, &Settings::splitAbove, kMain, 0, 0},
    {L"col_hotkey", kProgramSection, &Settings::hotkeyWidth, kMain, 0, 0},
    {L"col_label", kProgramSection, &Settings::labelWidth, kMain, 0, 0},
};

const SettingRow* RowOfCommand(int command) {
    for (const SettingRow& row : kTable) {
        const int commands = std::max(row.choices, 1);
        if (row.command != 0 && command >= row.command && command < row.command + commands) return &row;
    }
    return nullptr;
}

}  // namespace

std::span<const SettingRow> SettingTable() {
    return kTable;
}

void LoadSettings(SettingGroup group) {
    ProfileSection program = ReadSection(settingsPath, kProgramSection);
    ProfileSection product = ReadSection(settingsPath, kProductSection);
    for (const SettingRow& row : kTable) {
        if (row.group != group) continue;
        int& value = settings.*row.value;
        value = SectionNumber(row.section == kProductSection ? product : program, row.key, value);
    }
}

void ChangeSetting(int Settings::*value, int newValue) {
    settings.*value = newValue;
    for (const SettingRow& row : kTable) {
        if (row.value == value) WriteProfileNumber(row.section, row.key, newValue);
    }
}

bool HasUnwrittenSettings() {
    return HasWaitingSettings([](const IniValue& value) {
        return std::any_of(std::begin(kTable), std::end(kTable),
                           [&](const SettingRow& row) { return value.key == row.key; });
    });
}

bool RunSettingCommand(int command) {
    const SettingRow* row = RowOfCommand(command);
    if (!row) return false;
    const int flipped = settings.*row->value == 0 ? 1 : 0;
    ChangeSetting(row->value, row->choices > 0 ? command - row->command : flipped);
    return true;
}

std::optional<bool> IsSettingChecked(int command) {
    const SettingRow* row = RowOfCommand(command);
    if (!row) return std::nullopt;
    const int value = settings.*row->value;
    return row->choices > 0 ? value == command - row->command : value != 0;
}

std::wstring FormatWindowPlace(const WindowPlace& place) {
    return Format(L"%d;%d;%d;%d;%d;x,y,w,h,SW", place.left, place.top, place.right, place.bottom,
                  place.show);
}

std::optional<WindowPlace> ParseWindowPlace(std::wstring_view value) {
    const std::vector<std::wstring_view> pieces = Split(value, L';');
    if (pieces.size() < 5) return std::nullopt;
    const WindowPlace place{ToInt(pieces[0]), ToInt(pieces[1]), ToInt(pieces[2]), ToInt(pieces[3]),
                            ToInt(pieces[4])};
    for (const int edge : {place.left, place.top, place.right, place.bottom}) {
        if (edge < -kFarthestEdge || edge > kFarthestEdge) return std::nullopt;
    }
    if (place.right <= place.left || place.bottom <= place.top) return std::nullopt;
    return place;
}

std::optional<WindowPlace> LoadWindowPlace() {
    return ParseWindowPlace(ReadProgramText(kWindowPlaceKey, kWindowPlaceSize));
}

void SaveWindowPlace(const WindowPlace& place) {
    WriteProgramText(kWindowPlaceKey, FormatWindowPlace(place));
}

}  // namespace verbatix
