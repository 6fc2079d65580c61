#include "store/backup.h"

#include <gtest/gtest.h>

#include <climits>

#include "store/ini_files.h"
#include "store/list_file.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"

namespace verbatix::test {
namespace {

class Backup : public testing::Test {
  protected:
    Backup() { settings = {}; }
    ~Backup() override { settings = {}; }

    std::wstring CopyFolder() const { return folder.File(L"Backup"); }
    // How many copies there are now. They are told apart by the second only, so they are removed.
    std::size_t TakeCopies() const {
        const auto names = FilesIn(CopyFolder());
        for (const std::wstring& name : names) DeleteFileW((CopyFolder() + L"\\" + name).c_str());
        return names.size();
    }
    // A save as if the last backup had been so much longer ago; the copies it made.
    std::size_t SaveAfter(int seconds, bool hourly, bool daily) {
        if (seconds) WriteProgramNumber(L"last_backup", ReadProgramNumber(L"last_backup", 0) - seconds);
        settings.useBackupHourly = hourly;
        settings.useBackupDaily = daily;
        EntryList list;
        SaveList(list, {}, false, true);
        return TakeCopies();
    }

    SettingsFolder folder;
};

TEST_F(Backup, ACopyOnDemandHoldsTheWholeFileAndCarriesTheTime) {
    WriteProgramText(L"topmost", L"1");
    BackupNow();
    EXPECT_EQ(backupFolder, CopyFolder());
    const auto names = FilesIn(CopyFolder());
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(ReadBytes(CopyFolder() + L"\\" + names[0]), ReadBytes(settingsPath));
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_TRUE(names[0].starts_with(BackupFileName(now).substr(0, 8))) << names[0];
    EXPECT_EQ(BackupFileName({2026, 3, 5, 7, 4, 5, 6, 789}), L"2026-03-07_04-05-06_Verbatix.ini");
    EXPECT_GT(ReadProgramNumber(L"last_backup", -1), 800000000);
}

TEST_F(Backup, SavesMakeOneWhenTheTimeHasCome) {
    for (int i = 0; i < 3; ++i) EXPECT_EQ(SaveAfter(0, true, true), 0u) << "before the first on demand";
    for (const int now : {1, 24855, 24856, 845000001, 845000002, INT_MAX - 1}) {
        EXPECT_GT(AssumedLastBackup(now), now);
    }
    BackupNow();
    TakeCopies();
    EXPECT_EQ(SaveAfter(3590, true, false), 0u) << "not yet";
    EXPECT_EQ(SaveAfter(20, false, false), 0u) << "switched off";
    EXPECT_EQ(SaveAfter(0, false, true), 0u) << "an hour is not a day";
    EXPECT_EQ(SaveAfter(0, true, true), 1u);
    EXPECT_EQ(SaveAfter(0, true, true), 0u) << "the time counts anew";
    EXPECT_EQ(SaveAfter(86410, false, true), 1u);
    // A failed copy waits for the next time.
    RemoveDirectoryW(CopyFolder().c_str());
    WriteBytes(CopyFolder(), "a file where the folder should be");
    SaveAfter(4000, true, false);
    DeleteFileW(CopyFolder().c_str());
    EXPECT_EQ(SaveAfter(0, true, false), 0u);

    const std::tuple<int, bool, bool, bool> rows[] = {
        {3600, true, true, false},  {3601, true, false, true}, {86400, false, true, false},
        {86401, false, true, true}, {-1, true, true, false},   {INT_MIN, true, true, false},
    };
    for (const auto& [elapsed, hourly, daily, isDue] : rows)
        EXPECT_EQ(IsBackupDue(elapsed, hourly, daily), isDue) << elapsed;
}

TEST_F(Backup, CommandsSwitchCopyAndOpenOrSayThatThereIsNoFolder) {
    static std::wstring told;
    BackupClient client;
    client.openFolder = [](const std::wstring& path) { told += L"opened " + path; };
    client.tellCopy = [](const std::wstring& path) { told += L"|" + path; };
    client.showMessage = [](HWND, const wchar_t* text, const wchar_t* caption, UINT) WINAPI {
        told += std::wstring(text) + L"|" + caption;
        return IDOK;
    };
    for (const int on : {1, 0}) {
        for (const int subCommand : {1, 2}) BackupCommand(subCommand, client);
        EXPECT_EQ(ReadProgramNumber(L"use_backup_h", -1), on);
        EXPECT_EQ(ReadProgramNumber(L"use_backup_d", -1), on);
        EXPECT_EQ(settings.useBackupHourly + settings.useBackupDaily, 2 * on);
    }
    for (const int subCommand : {4, 5, 0}) BackupCommand(subCommand, client);
    EXPECT_EQ(TakeCopies(), 0u);
    BackupCommand(3, client);
    const auto names = FilesIn(CopyFolder());
    EXPECT_EQ(TakeCopies(), 1u);
    EXPECT_EQ(told, L"opened " + CopyFolder() + L"|" + CopyFolder() + L"\\" + names.at(0));

    const std::wstring path = std::exchange(settingsPath, L"Verbatix.ini");
    for (int subCommand = 1; subCommand <= 4; ++subCommand) {
        told.clear();
        BackupCommand(subCommand, client);
        EXPECT_EQ(told, L"Error 321|") << subCommand;
    }
    EXPECT_EQ(settings.useBackupHourly, 0);
    EXPECT_EQ(PrepareBackupFolder(), 0);
    settingsPath = path;
    EXPECT_EQ(PrepareBackupFolder(), 1) << "a folder that is there is fine";
}

}  // namespace
}  // namespace verbatix::test
