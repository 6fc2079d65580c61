// Every number of the program's resources, commands and timers, by who sends them. Shared with the
// resource compiler, hence macros.
#ifndef VERBATIX_IDS_H
#define VERBATIX_IDS_H

// Resources
#define IDS_FRAME_CLASS 103
#define IDI_VERBATIX 107
#define IDR_FRAME 109
#define IDD_MAIN 148

// Controls of the main dialog
#define IDC_LIST 1071
#define IDC_TEXT 1072
#define IDC_FILTER 1080
#define IDC_LABEL 1081
#define IDC_MODIFIER 1082
#define IDC_KEY 1083
#define IDC_COUNTER 1084
#define IDC_CLASH 1085
#define IDC_INSERT 1086
#define IDC_FILTER_CAPTION 1087
#define IDC_LABEL_CAPTION 1088
#define IDC_MODIFIER_CAPTION 1089
#define IDC_KEY_CAPTION 1090
#define IDC_TEXT_CAPTION 1091
#define IDC_TREE 1092
#define IDC_LIST_CAPTION 1093
#define IDC_TREE_CAPTION 1094
#define IDC_KEEP_PATHS 1095
#define IDC_HOTKEY 1100
#define IDC_HOTKEY_CAPTION 1101
#define IDC_SPLITTER 1120
#define SPLITTER_CLASS L"VerbatixSplitter"
#define IDC_OFFER_LINK 1220

#define IDC_PREVIEW_CAPTION 1110
#define IDC_PREVIEW 1111
#define IDC_MEND_CODE 1112

// The list of codes to insert
#define IDD_CODES 180
#define IDC_CODE_SEARCH 1113
#define IDC_CODE_LIST 1114
#define IDC_CODE_SEARCH_CAPTION 1115
#define IDC_CODE_LIST_CAPTION 1116

// Buttons of the main dialog: their numbers are commands
#define CMD_NEW_ENTRY 1040
#define CMD_COPY_ENTRY 1049
#define CMD_DELETE_ENTRY 1050
#define CMD_TEST_ENTRY 1059

// Dialogs of the date and time codes
#define IDD_CALENDAR 171
#define IDD_TIME 172
#define IDC_CALENDAR 1201
#define IDC_HOURS 1202
#define IDC_MINUTES 1203

// The question for a group's name
#define IDD_GROUP 173
#define IDC_GROUP_CAPTION 1211
#define IDC_GROUP_NAME 1212

// The question what becomes of a text that is too long
#define IDD_LONG_TEXT 174
#define IDC_STATIC_TEXT 0xffff
#define IDC_WARNING 1230
#define IDC_CUT_OFF 1231
#define IDC_KEEP_IN_FILE 1232
#define IDC_DISCARD 1233

// The question for the hotkey of several entries
#define IDD_HOTKEY 182
#define IDC_ASKED_HOTKEY_CAPTION 1260
#define IDC_ASKED_HOTKEY 1261
#define IDC_ASKED_MODIFIER 1262
#define IDC_ASKED_KEY 1263
#define IDC_ASKED_ADVICE 1264
#define IDC_ASKED_MODIFIER_CAPTION 1265
#define IDC_ASKED_KEY_CAPTION 1266

// About
#define IDD_ABOUT 181
#define IDC_ABOUT_STATE 1250
#define IDC_ABOUT_FILE_CAPTION 1251
#define IDC_ABOUT_FILE 1252
#define IDC_ABOUT_COPY 1253

// Frame window
#define TIMER_FRAME 1000
#define CMD_FINISH_START 104
#define WM_TRAY_CALLBACK (0x8000 + 0x64)  // WM_APP + 100

// The tray icon's menu
#define CMD_TRAY_SHOW 40001
#define CMD_TRAY_PAUSE 40002
#define CMD_TRAY_EXIT 40003

#define CMD_TRAY_NEW 40004
#define CMD_TRAY_ENTRY_FIRST 42000    // and up: the entries used last
#define CMD_TRAY_HOUR 40090           // pauses the hotkeys for an hour
#define CMD_TRAY_PROGRAM 40091        // pauses them in the program that was in front
#define CMD_TRAY_PROGRAM_FIRST 42010  // and up: the programs in which they are paused

// Menu bar: what it sends carries a marker, so its numbers may be others' too
#define CMD_TRAY_IF_CLOSE 2
#define CMD_START_IN_TRAY 3
#define CMD_START_HIDDEN 4
#define CMD_TRAY_IF_MINIMIZE 5
#define CMD_HIDE_IF_CLOSE 6
#define CMD_HIDE_NOW 7
#define CMD_DATE_CODES 1112
#define CMD_TIME_CODES 1113
#define CMD_DATE_HELP 1114
#define CMD_RESTORE_CLIPBOARD 1115
#define CMD_OPEN_SETTINGS_FILE 1116
#define CMD_IMPORT_FILE 1117
#define CMD_IMPORT_EXCHANGE_FILE 1118
#define CMD_EXPORT_SELECTION 1119
#define CMD_EXPORT_ALL 1120
#define CMD_COPY_ALL_AS_TEXT 1121
#define CMD_WRITE_EXCHANGE_FILE 1122
#define CMD_COPY_AS_TEXT 1123
#define CMD_SUGGEST_WORDS 1124
#define CMD_TOPMOST 1014          // of the main window too
#define CMD_PROGRAM_PAGE 1018     // of the main window too
#define CMD_MENU_SORT_FIRST 2000  // and the two behind it: one an order of the paste menu
#define CMD_SUPPORT 2031          // of the main window too
#define CMD_IGNORE_CASE 3000
#define CMD_MENU_TIPS 3001
#define CMD_ORDER_NUMBERS 3002
#define CMD_START_WITH_WINDOWS 3003
#define CMD_NEVER_DARK 3004
#define CMD_SOFT_PAINT 3005
#define CMD_SET_FOCUS 3006
#define CMD_SIZE_FIRST 3010  // and the two behind it: one a size
#define CMD_BACKUP_HOURLY 4001
#define CMD_BACKUP_DAILY 4002
#define CMD_BACKUP_NOW 4003
#define CMD_BACKUP_FOLDER 4004
#define CMD_BACKUP_HELP 4005
#define CMD_RESTART_ELEVATED 12800
#define CMD_ELEVATED_PROMPT 12801
#define CMD_EXIT_MENU 12802
#define CMD_RESTART 12804
#define CMD_QUESTIONS 32794  // of the main window too
#define CMD_LOOK_FOR_UPDATES 44000
#define CMD_UNINSTALL 44003
#define CMD_SHOW_USES 40092
#define CMD_ONLY_UNUSED 40093
#define CMD_CLASHES 40094
#define CMD_SORT_FIRST 40110  // the list's own order, and the five behind it: one a column, in their order
#define CMD_SORT_REVERSED 40116
#define CMD_LANGUAGE_FIRST 50000  // and the number of the language
#define CMD_LANGUAGE_LAST 59999

// Main window
#define CMD_SEND_TO_TRAY 5
#define CMD_NEXT_VERSION 1051
#define CMD_NEXT_VERSION_TOO 32894
#define CMD_NOTHING 7778
#define CMD_NOTHING_TOO 11112
#define CMD_HIDE 32782
#define CMD_LANGUAGE_MENU 2022
#define CMD_UNSAVED_TEXT 40010  // posted to itself at start
#define CMD_LIST_DAMAGE 40016   // posted to itself at start
#define CMD_SAVE_REST 40017     // posted to itself when a save succeeds after one that failed
#define CMD_EXIT 32799
#define CMD_SHOW_TREE 32800
#define CMD_FOCUS_SPLITTER 40080
#define CMD_FIXED_WIDTH 40081
#define CMD_SYSTEM_ICONS 40082
#define CMD_GROUP_MENU 1073
#define CMD_MOVE_UP 32891
#define CMD_MOVE_DOWN 32893
#define CMD_EXPAND_ALL 40011
#define CMD_COLLAPSE_ALL 40012
#define CMD_SHOW_GROUPS 40013
#define CMD_SHOW_ENTRY 40030  // its position in lParam
#define CMD_NEW_GROUP 40014
#define CMD_NO_GROUP 40015
#define CMD_FIND 40051
#define CMD_FIND_NEXT 40052
#define CMD_FIND_PREVIOUS 40053
#define CMD_SAVE 40054
#define CMD_SHOW_PREVIEW 40070
#define CMD_LIST_ON_PERCENT 40071
#define CMD_UNDO 40040
#define CMD_REDO 40041
#define CMD_SELECT_ALL 40042
#define CMD_FIRST_MODIFIER 40990  // and the nine behind it: one a modifier, in its order
#define CMD_FIRST_GROUP 41000  // and up: the groups of a menu, in its order

#define CMD_GUIDE 40100
#define CMD_ABOUT 40101
#define CMD_DIAGNOSTICS 40102

// Posted to the main window by the hook and the executor
#define CMD_RENAME_ENTRY 32793
#define CMD_COPY_SLOT 32795
#define CMD_PASTE_SLOT 32796
#define CMD_SAVE_SLOT 32797
#define CMD_SHOW_PASTE_MENU 32798
#define CMD_RUN_ENTRY 40020
#define CMD_REINSTALL_HOOK 40021

// What the parts of the main window tell it, named after what has happened
#define WM_SELECTION_CHANGED (0x8000 + 0x65)  // posted: another entry, or none, is selected
#define WM_RENAMED (0x8000 + 0x66)            // posted: a name has been edited in place
#define WM_LANGUAGE_CHANGED (0x8000 + 0x67)   // sent: the texts are those of another language
#define WM_SEEN (0x8000 + 0x68)               // posted: the window stands on the screen for the first time
#define WM_KEYS_PRESSED (0x8000 + 0x70)       // posted by the hook to the hotkey field

// Timers of the main window; the one-shot ones are killed by their own handler first
#define TIMER_CPY_COPY 2022           // one shot, 200 ms
#define TIMER_CPY_LAUNCH 2023         // one shot, 200 ms
#define TIMER_EDITOR_UPDATE 2024      // one shot, 200 ms
#define TIMER_REINSTALL_HOOK 4001     // one shot, 12 s after start
#define TIMER_RESTORE_CLIPBOARD 4002  // one shot, 200 ms
#define TIMER_CLOCK_JUMP 12022        // every 100 ms
#define TIMER_DRAG_SCROLL 4010        // every 60 ms while an entry is dragged
#define TIMER_CELL_EDIT 40050         // one shot, the time of a double click
#define TIMER_LIST_RETRY 4011         // every second while the list cannot be read

#endif
