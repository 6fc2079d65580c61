// The program's options: process-wide integers, read once at start, written at once whenever one changes.
// A failed write is not reported here; the value in memory stays changed and is written with whatever is
// written next. UI thread only.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace verbatix {

// Values as the program uses them, with what holds where the file says nothing. 0 or 1 unless noted.
struct Settings {
    int useSystemIcons = 1;
    int setFocus = 0;  // 1: the keyboard goes to the list after actions, not to the text
    int grouping = 1;
    int showTree = 0;
    int showUses = 0;  // the list has columns for when and how often entries were used
    int trayIfClose = 1;
    int hideIfClose = 0;
    int startTray = 0;
    int startHidden = 0;
    int trayIfMinimize = 1;
    int topmost = 0;
    int useTimeFormat = 1;
    int useDateFormat = 1;
    int restoreOldClipboard = 0;
    int useMenuSort = 1;  // 0, 1, 2
    int useIgnoreCase = 1;
    int showMenuTooltip = 0;
    int useMenuOrder = 1;
    int sortColumn = -1;  // -1 = unsorted
    int sortDescending = 0;
    int useBackupHourly = 0;
    int useBackupDaily = 0;
    int useAutocomplete = 1;
    int showPreview = 1;
    int listOnPercent = 1;  // typing "%" offers codes
    int size = 0;           // 0, 1, 2: of the texts in list, tree and editor
    int splitBeside = 0;    // the list's part of the room, in ten thousandths, beside the editor
    int splitAbove = 0;     // and above it; 0 = as it is by itself
    int hotkeyWidth = 0;    // of the list's columns, in pixels of a screen without scaling;
    int labelWidth = 0;     // 0 = a share of the list
    int hideInfo = 0;       // 1 once the notice about hiding has been shown
    int trayInfo = 0;       // 1 once the balloon at the tray icon has been shown
    int language = 0;       // set to the system's language before it is read
    int fixedWidth = 0;     // the text in a font whose letters are of one width
    int disableDarkTheme = 0;
    int softPaint = 1;  // the list is drawn in memory first
};

extern Settings settings;

enum class SettingGroup {
    kStart,  // read by app/ before there is a window
    kMain,   // read when the main dialog initialises
};

// One row drives loading, writing and the options menu.
struct SettingRow {
    const wchar_t* key;
    const wchar_t* section;
    int Settings::*value;
    SettingGroup group;
    int command;  // menu command that flips the value, or the first of those that set it; 0 = none
    int choices;  // number of values that as many commands in a row set, 0 = the command flips
};

// All rows, in the order in which they are read.
std::span<const SettingRow> SettingTable();

// Reads the rows of a group. A value that is missing stays as it is.
void LoadSettings(SettingGroup group = SettingGroup::kMain);

// Changes a value and writes it.
void ChangeSetting(int Settings::*value, int newValue);

// Whether an option that was changed could not be written yet.
bool HasUnwrittenSettings();

// Carries an options-menu command out: flips its value (0 becomes 1, all else 0) or sets it. False when no
// setting has that command.
bool RunSettingCommand(int command);

// Whether the menu shows a check mark at the command: its value is on, or is the one it sets. Nothing when
// no setting has that command.
std::optional<bool> IsSettingChecked(int command);

// Key, in section "Program", of the time of the last backup. Read when it is needed, with a default of the
// moment.
inline constexpr const wchar_t* kLastBackupKey = L"last_backup";

// Where the main window was: its edges, and a show command (1 = normal).
struct WindowPlace {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int show = 0;
    bool operator==(const WindowPlace&) const = default;
};

// The value of "WinRC": the five numbers with ";" between, and a label (which says width and height
// although right and bottom edge are stored) that belongs to the value.
std::wstring FormatWindowPlace(const WindowPlace& place);

// Nothing when the value has fewer than five numbers or describes no rectangle that could be on a desktop.
std::optional<WindowPlace> ParseWindowPlace(std::wstring_view value);

std::optional<WindowPlace> LoadWindowPlace();
void SaveWindowPlace(const WindowPlace& place);

}  // namespace verbatix
