#include "store/backup.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <optional>

#include "store/file_commit.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"
#include "store/text_file.h"

namespace verbatix {

std::wstring backupFolder;

namespace {

// One second more than an hour and a day.
constexpr int kHourlySeconds = 3601;
constexpr int kDailySeconds = 86401;

// Seconds of local time since the year 2000, which 32 bits hold until 2068.
int LocalSeconds(const SYSTEMTIME& time) {
    constexpr SYSTEMTIME kBegin = {2000, 1, 6, 1, 0, 0, 0, 0};
    constexpr std::int64_t kTicksPerSecond = 10'000'000;
    const auto ticks = [](const SYSTEMTIME& of) {
        FILETIME file = {};
        SystemTimeToFileTime(&of, &file);
        return static_cast<std::int64_t>(file.dwHighDateTime) << 32 | file.dwLowDateTime;
    };
    return static_cast<int>((ticks(time) - ticks(kBegin)) / kTicksPerSecond);
}

SYSTEMTIME LocalTime() {
    SYSTEMTIME time;
    GetLocalTime(&time);
    return time;
}

void Flip(int Settings::*value) {
    ChangeSetting(value, settings.*value == 0 ? 1 : 0);
}

}  // namespace

int PrepareBackupFolder() {
    const std::wstring folder = BackupFolderOf(settingsPath);
    if (folder.empty()) return 0;
    backupFolder = folder;
    CreateDirectoryW(backupFolder.c_str(), nullptr);
    return 1;
}

static std::wstring PathOfCopy(const SYSTEMTIME& time) {
    return backupFolder + L"\\" + BackupFileName(time);
}

static bool CopyUnder(const SYSTEMTIME& time) {
    constexpr std::int64_t kLargestFile = 64LL << 20;
    // A backup cut short would look like one.
    const std::optional<std::string> bytes = ReadWholeFile(settingsPath, kLargestFile);
    return bytes && CommitFile(PathOfCopy(time), *bytes) == ERROR_SUCCESS;
}

std::wstring BackupNow() {
    if (!PrepareBackupFolder()) return {};
    const SYSTEMTIME now = LocalTime();
    // Noted first: the copy then says itself when it was made, and a copy that fails is not tried again at
    // every save.
    WriteProgramNumber(kLastBackupKey, LocalSeconds(now));
    return CopyUnder(now) ? PathOfCopy(now) : std::wstring();
}

bool CopyToBackupFolder() {
    return PrepareBackupFolder() && CopyUnder(LocalTime());
}

void CheckTimedBackup() {
    if (!settings.useBackupHourly && !settings.useBackupDaily) return;
    const int now = LocalSeconds(LocalTime());
    const int last = ReadProgramNumber(kLastBackupKey, AssumedLastBackup(now));
    // Any number may stand in the file: the difference is taken without signs, which wraps.
    const auto elapsed = static_cast<int>(static_cast<unsigned>(now) - static_cast<unsigned>(last));
    if (IsBackupDue(elapsed, settings.useBackupHourly != 0, settings.useBackupDaily != 0)) BackupNow();
}

void BackupCommand(int subCommand, const BackupClient& client) {
    if (!PrepareBackupFolder()) {
        if (client.showMessage) client.showMessage(client.window, L"Error 321", L"", MB_OK);
        return;
    }
    switch (subCommand) {
        case 1: return Flip(&Settings::useBackupHourly);
        case 2: return Flip(&Settings::useBackupDaily);
        case 3: {
            const std::wstring copy = BackupNow();
            if (client.tellCopy) client.tellCopy(copy);
            return;
        }
        case 4:
            if (client.openFolder) client.openFolder(backupFolder);
            return;
        default: return;
    }
}

bool IsBackupDue(int elapsed, bool hourly, bool daily) {
    return (hourly && elapsed >= kHourlySeconds) || (daily && elapsed >= kDailySeconds);
}

int AssumedLastBackup(int now) {
    // So far ahead that nothing is due. Held at the limit of 32 bits: the product would wrap and lie in the
    // past every other second.
    constexpr std::int64_t kFarAhead = 86400;
    return static_cast<int>(std::min<std::int64_t>(now * kFarAhead, INT_MAX));
}

}  // namespace verbatix
