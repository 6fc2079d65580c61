#include "store/settings_commit.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>

#include "store/file_commit.h"
#include "store/ini_files.h"
#include "store/list_file.h"
#include "store/profile.h"
#include "store/settings.h"

namespace verbatix::test {
namespace {

std::wstring noticed;

class SettingsCommit : public testing::Test {
  protected:
    SettingsCommit() {
        noticed.clear();
        storeNotices = {[] { noticed += L"written."; },
                        [](DWORD error) { noticed += Format(L"%lu.", error); },
                        [](const std::wstring& copy) { noticed += L"kept " + copy + L"."; }};
        Write(L"[Program]\r\nlistcmd_count=1\r\n[list_text]\r\ntext_000=Ctrl+A=a<E<N<D|\r\n");
    }
    ~SettingsCommit() override { storeNotices = {}; }

    static void Write(const std::wstring& text) { WriteBytes(settingsPath, Utf16File(text)); }
    static std::wstring Text() {
        const std::string bytes = ReadBytes(settingsPath);
        return {reinterpret_cast<const wchar_t*>(bytes.data()) + 1, bytes.size() / 2 - 1};
    }
    std::string Generation() const { return ReadBytes(settingsPath + L".bak"); }

    const SettingsFolder folder_;
};

// The number of times that the file at settingsPath has been another one.
int Commits(const auto& action) {
    int commits = 0;
    static int* counter;
    counter = &commits;
    storeNotices.written = [] { ++*counter; };
    action();
    return commits;
}

TEST_F(SettingsCommit, IsOneForAllThatAnActionWrites) {
    EntryList list;
    for (int i = 0; i < 40; ++i) AddEntry(list, L"text", L"label", 65, 4, -1, i);
    EXPECT_EQ(Commits([&] { SaveList(list, {}, false, false); }), 1);
    EXPECT_EQ(Commits([&] {
                  const SettingsBatch action;
                  const SettingsBatch partOfIt;
                  WriteProgramNumber(L"topmost", 1);
                  WriteProgramText(L"WinRC", L"1;2");
                  SaveList(list, {}, false, false);
              }),
              1);
    EXPECT_EQ(ReadProgramText(L"WinRC", 100), L"1;2");
    EXPECT_EQ(Commits([] {
                  const SettingsBatch action;
                  WriteProgramNumber(L"topmost", 7);
                  WriteProgramNumber(L"size", 2);
                  EXPECT_EQ(ReadProgramNumber(L"topmost", 0), 1);
              }),
              1);
    EXPECT_EQ(ReadProgramNumber(L"topmost", 0) + ReadProgramNumber(L"size", 0), 9);
}

TEST_F(SettingsCommit, KeepsTheGenerationBeforeAndWritesNextTimeWhatCouldNotBeWritten) {
    std::string before = ReadBytes(settingsPath);
    for (const int value : {2, 3}) {
        EXPECT_TRUE(WriteProgramNumber(L"topmost", value));
        EXPECT_EQ(Generation(), before);
    }
    noticed.clear();
    before = ReadBytes(settingsPath);
    UniqueFile lock = OpenShared(settingsPath, FILE_SHARE_READ);
    EXPECT_FALSE(WriteProgramNumber(L"topmost", 1));
    EXPECT_EQ(noticed, Format(L"%d.", ERROR_SHARING_VIOLATION));
    EXPECT_FALSE(WriteProgramNumber(L"size", 1));
    EXPECT_FALSE(WriteProgramNumber(L"size", 2));
    EXPECT_EQ(ReadBytes(settingsPath), before);
    EXPECT_TRUE(HasUnwrittenSettings());
    EXPECT_EQ(FilesIn(folder_.Path()).size(), 2u) << "no temporary file left";
    lock.Reset();
    noticed.clear();
    EntryList list;
    SaveList(list, {}, false, true);
    EXPECT_EQ(noticed, L"written.");
    EXPECT_FALSE(HasUnwrittenSettings());
    EXPECT_EQ(ReadProgramNumber(L"topmost", 0), 1);
    EXPECT_EQ(ReadProgramNumber(L"size", 0), 2);
}

TEST_F(SettingsCommit, OverwritesOnlyWhereTheFolderTakesNoFilesAndAfterACopy) {
    const std::string before = ReadBytes(settingsPath);
    // A folder of that name refuses the file as a denied folder would.
    CreateDirectoryW((settingsPath + L".new").c_str(), nullptr);
    EXPECT_TRUE(WriteProgramNumber(L"topmost", 1));
    EXPECT_EQ(ReadProgramNumber(L"topmost", 0), 1);
    EXPECT_EQ(folder_.Kept(), before);
    RemoveDirectoryW((settingsPath + L".new").c_str());

    SetFileAttributesW(settingsPath.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string readOnly = ReadBytes(settingsPath);
    EXPECT_FALSE(WriteProgramNumber(L"topmost", 2));
    EXPECT_EQ(ReadBytes(settingsPath), readOnly);
}

TEST_F(SettingsCommit, KeepsWhatOthersHavePutIntoTheFile) {
    const std::wstring list = L"[list_text]\r\ntext_000=Ctrl+A=a<E<N<D|\r\n";
    const std::wstring otherList = L"[list_text]\r\ntext_000=Ctrl+A=theirs<E<N<D|\r\n; theirs\r\n";
    const struct {
        const wchar_t* what;
        std::wstring found;
        std::wstring after;  // size=2 is written
        bool isKept;
    } rows[] = {
        {L"options and foreign lines",
         L"; theirs\r\n[Program]\r\nlistcmd_count=1\r\ntopmost=5\r\n[x]\r\ny=1\r\n" + list,
         L"; theirs\r\n[Program]\r\nlistcmd_count=1\r\ntopmost=5\r\nsize=2\r\n[x]\r\ny=1\r\n" + list,
         false},
        {L"another list", L"[Program]\r\nlistcmd_count=1\r\nz=5\r\n" + otherList,
         L"[Program]\r\nlistcmd_count=1\r\nz=5\r\nsize=2\r\n" + list + L"; theirs\r\n", true},
        {L"begun anew", L"[Program]\r\nWinRC=9\r\n",
         L"[Program]\r\nlistcmd_count=1\r\ntopmost=1\r\nlast_backup=7\r\nWinRC=9\r\nsize=2\r\n" + list,
         false},
        {L"emptied", L"",
         L"[Program]\r\nlistcmd_count=1\r\ntopmost=1\r\nlast_backup=7\r\nsize=2\r\n" + list, false},
    };
    for (const auto& row : rows) {
        const SettingsFolder folder;
        Write(L"[Program]\r\nlistcmd_count=1\r\n" + list);
        WriteProgramNumber(L"topmost", 1);
        WriteProgramNumber(L"last_backup", 7);
        noticed.clear();
        Write(row.found);
        EXPECT_TRUE(WriteProgramNumber(L"size", 2));
        EXPECT_EQ(Text(), row.after) << row.what;
        const auto names = FilesIn(folder.File(L"Backup"));
        ASSERT_EQ(names.size(), row.isKept ? 1u : 0u) << row.what;
        if (!row.isKept) continue;
        const std::wstring copy = folder.File(L"Backup\\" + names[0]);
        EXPECT_EQ(ReadBytes(copy), Utf16File(row.found));
        EXPECT_EQ(noticed, L"kept " + copy + L".written.");
    }
    const SettingsFolder folder;
    WriteProgramNumber(L"topmost", 1);
    const std::wstring before = Text();
    DeleteFileW(settingsPath.c_str());
    EXPECT_TRUE(IsSettingsFileLost());
    WriteProgramNumber(L"topmost", 1);
    EXPECT_EQ(Text(), before) << "gone and written whole again";
}

TEST_F(SettingsCommit, FilesAreComparedNotTheirNames) {
    const std::wstring other = folder_.File(L"other.ini");
    WriteBytes(other, ReadBytes(settingsPath));
    std::wstring slashes = settingsPath;
    std::replace(slashes.begin(), slashes.end(), L'\\', L'/');
    EXPECT_TRUE(IsSameFile(settingsPath, slashes));
    CreateDirectoryW(folder_.File(L"x").c_str(), nullptr);
    EXPECT_TRUE(IsSameFile(settingsPath, folder_.File(L"x\\..\\VERBATIX.ini")));
    EXPECT_FALSE(IsSameFile(settingsPath, other));
    EXPECT_FALSE(IsSameFile(settingsPath, folder_.File(L"missing.ini")));
}

}  // namespace
}  // namespace verbatix::test
