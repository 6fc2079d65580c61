#include "store/backup.h"

#include <gtest/gtest.h>

#include "store/ini_files.h"
#include "store/list_file.h"
#include "store/profile.h"
#include "store/settings.h"

namespace verbatix {
namespace {

using test::FilesIn;
using test::ReadBytes;

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

    test::SettingsFolder folder;
};

TEST_F(Backup, ACopyOnDemandHoldsTheWholeFileAndCarriesTheTime) {
    WriteProgramText(L"topmost", L"1");
    BackupNow();
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
    test::WriteBytes(CopyFolder(), "a file where the folder should be");
    SaveAfter(4000, true, false);
    DeleteFileW(CopyFolder().c_str());
    EXPECT_EQ(SaveAfter(0, true, false), 0u);
}

}  // namespace
}  // namespace verbatix
