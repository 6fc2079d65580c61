// Copies of the settings file in the folder "Backup" beside it: on demand, and at a save once an hour or a
// day where the user switched that on. A copy that fails is not reported. UI thread only.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Where the copies go; empty before PrepareBackupFolder has succeeded.
extern std::wstring backupFolder;

// Builds backupFolder from settingsPath and makes the folder. 1, or 0 when settingsPath has no backslash.
int PrepareBackupFolder();

// Copies the settings file to the backup folder, under the time to the second: of two copies within a
// second the later one is kept. The time is noted in "last_backup" even when the copying fails. The path of
// the copy, empty when there is none.
std::wstring BackupNow();

// The copy alone, without a note of the time: before something that changes a lot. False when it failed.
bool CopyToBackupFolder();

// Makes a copy when one is due by the options and "last_backup". While nothing is noted there none ever is:
// the first one is made on demand.
void CheckTimedBackup();

// What a command needs from above.
struct BackupClient {
    HWND window = nullptr;  // owns the message box
    void (*openFolder)(const std::wstring& folder) = nullptr;
    void (*tellCopy)(const std::wstring& path) = nullptr;  // of a copy made on demand; empty: it failed
    int(WINAPI* showMessage)(HWND owner, const wchar_t* text, const wchar_t* caption,
                             UINT flags) = MessageBoxW;
};

// 1 and 2 switch the copies of every hour and every day, 3 makes one now, 4 opens the folder. Other numbers
// do nothing; when there can be no folder, none does anything but say so.
void BackupCommand(int subCommand, const BackupClient& client);

// --- pure ---

// Whether a copy is due so many seconds after the last one.
bool IsBackupDue(int elapsed, bool hourly, bool daily);

// What stands in for the time of the last backup where none is noted.
int AssumedLastBackup(int now);

}  // namespace verbatix
