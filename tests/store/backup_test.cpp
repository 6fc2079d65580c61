#include "store/backup.h"

#include <gtest/gtest.h>

#include <climits>

#include "store/ini_files.h"
#include "store/list_file.h"
#include "store/profile.h"
#include "store/settings.h"

namespace verbatix {
namespace {

using test::FilesIn;
using test::ReadBytes;
using test::SettingsFolder;
using test::WriteBytes;

class Backup : public testing::Test {
  protected:
    Backup() { settings = {}; }
    ~Backup() override { settings = {}; }

    std::wstring CopyFolder() const { return folder.Path() + L"\\Backup"; }
    std::size_t Copies() const { return FilesIn(CopyFolder()).size(); }
    // Copies are told apart by the second only.
    void RemoveCopies() const {
        for (const std::wstring& name : FilesIn(CopyFolder()))
            DeleteFileW((CopyFolder() + L"\\" + name).c_str());
    }
    // As if the last backup had been so long ago.
    static void SetBack(int seconds) {
        WriteProgramNumber(L"last_backup", ReadProgramNumber(L"last_backup", 0) - seconds);
    }
    static void Save() {
        EntryList list;
        SaveList(list, {}, false, true);
    }

    SettingsFolder folder;
};

TEST_F(Backup, ACopyOnDemandHoldsTheWholeFile) {
    WriteProgramText(L"topmost", L"1");
    BackupNow();
    BackupNow();
    EXPECT_EQ(backupFolder, CopyFolder());
    const auto names = FilesIn(CopyFolder());
    ASSERT_GE(names.size(), 1u);
    ASSERT_LE(names.size(), 2u) << "one, unless a second ended in between";
    EXPECT_EQ(ReadBytes(CopyFolder() + L"\\" + names.back()), ReadBytes(settingsPath));
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_TRUE(names.back().starts_with(BackupFileName(now).substr(0, 8))) << names.back();
    EXPECT_GT(ReadProgramNumber(L"last_backup", -1), 800000000);
}

TEST_F(Backup, NamesCarryTheTime) {
    EXPECT_EQ(BackupFileName({2026, 3, 5, 7, 4, 5, 6, 789}), L"2026-03-07_04-05-06_Verbatix.ini");
}

TEST_F(Backup, IsDueASecondAfterTheHourOrTheDay) {
    const struct {
        int elapsed;
        bool hourly;
        bool daily;
        bool isDue;
    } rows[] = {
        {3600, true, true, false},   {3601, true, false, true},    {3601, false, true, false},
        {86400, false, true, false}, {86401, false, true, true},   {86401, false, false, false},
        {-1, true, true, false},     {INT_MIN, true, true, false}, {INT_MAX, false, true, true},
    };
    for (const auto& row : rows)
        EXPECT_EQ(IsBackupDue(row.elapsed, row.hourly, row.daily), row.isDue) << row.elapsed;
}

TEST_F(Backup, NoneIsMadeBySavesBeforeTheFirstOnDemand) {
    settings.useBackupHourly = settings.useBackupDaily = 1;
    for (int i = 0; i < 3; ++i) Save();
    EXPECT_EQ(Copies(), 0u);
    for (const int now : {1, 24855, 24856, 845000001, 845000002, 845000003, INT_MAX - 1})
        EXPECT_GT(AssumedLastBackup(now), now);
}

TEST_F(Backup, SavesMakeOneWhenTheTimeHasCome) {
    BackupNow();
    RemoveCopies();
    SetBack(3590);
    settings.useBackupHourly = 1;
    Save();
    EXPECT_EQ(Copies(), 0u) << "not yet";
    SetBack(20);
    settings.useBackupHourly = 0;
    Save();
    EXPECT_EQ(Copies(), 0u) << "switched off";
    settings.useBackupDaily = 1;
    Save();
    EXPECT_EQ(Copies(), 0u) << "an hour is not a day";
    settings.useBackupHourly = 1;
    Save();
    EXPECT_EQ(Copies(), 1u);
    RemoveCopies();
    Save();
    EXPECT_EQ(Copies(), 0u) << "the time counts anew";
    SetBack(86410);
    settings.useBackupHourly = 0;
    Save();
    EXPECT_EQ(Copies(), 1u);
}

TEST_F(Backup, AFailedCopyWaitsForTheNextTime) {
    BackupNow();
    RemoveCopies();
    RemoveDirectoryW(CopyFolder().c_str());
    WriteBytes(CopyFolder(), "a file where the folder should be");
    SetBack(4000);
    settings.useBackupHourly = 1;
    Save();
    DeleteFileW(CopyFolder().c_str());
    Save();
    EXPECT_EQ(Copies(), 0u);
}

std::wstring shown;
std::wstring opened;

BackupClient Client() {
    shown.clear();
    opened.clear();
    BackupClient client;
    client.openFolder = [](const std::wstring& path) { opened = path; };
    client.showMessage = [](HWND, const wchar_t* text, const wchar_t* caption, UINT) WINAPI {
        shown += std::wstring(text) + L"|" + caption;
        return IDOK;
    };
    return client;
}

TEST_F(Backup, Commands) {
    const BackupClient client = Client();
    for (const int on : {1, 0}) {
        BackupCommand(1, client);
        EXPECT_EQ(ReadProgramNumber(L"use_backup_h", -1), on);
        EXPECT_EQ(settings.useBackupHourly, on);
        BackupCommand(2, client);
        EXPECT_EQ(ReadProgramNumber(L"use_backup_d", -1), on);
        EXPECT_EQ(settings.useBackupDaily, on);
    }
    EXPECT_EQ(Copies(), 0u);
    BackupCommand(4, client);
    EXPECT_EQ(opened, CopyFolder());
    BackupCommand(5, client);
    BackupCommand(0, client);
    EXPECT_EQ(Copies(), 0u);
    BackupCommand(3, client);
    EXPECT_EQ(Copies(), 1u);
    EXPECT_EQ(shown, L"");
}

TEST_F(Backup, WithoutAFolderEveryCommandSaysSo) {
    const std::wstring path = settingsPath;
    settingsPath = L"Verbatix.ini";
    for (int subCommand = 1; subCommand <= 4; ++subCommand) {
        BackupCommand(subCommand, Client());
        EXPECT_EQ(shown, L"Error 321|") << subCommand;
        EXPECT_EQ(opened, L"");
    }
    EXPECT_EQ(settings.useBackupHourly, 0);
    EXPECT_EQ(PrepareBackupFolder(), 0);
    settingsPath = path;
    EXPECT_EQ(PrepareBackupFolder(), 1);
    EXPECT_EQ(PrepareBackupFolder(), 1) << "a folder that is there is fine";
}

}  // namespace
}  // namespace verbatix
