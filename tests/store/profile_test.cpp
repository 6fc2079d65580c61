#include "store/profile.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <climits>

#include "base/handle.h"
#include "store/ini_files.h"
#include "store/settings_file.h"

namespace verbatix {
namespace {

using test::FilesIn;
using test::ReadBytes;
using test::SettingsFolder;
using test::Utf16File;
using test::WriteBytes;

TEST(ProfileText, ANewFileHoldsEveryCharacter) {
    const SettingsFolder folder;
    const std::wstring values[] = {L"plain",   L"\x41f\x440\x438",    L"\x20ac", L"\xd83d\xde00", L"\xd83d",
                                   L"a=b;c|d", L"mid \"quotes\" here"};
    for (const std::wstring& value : values) {
        EXPECT_TRUE(WriteProfileText(L"S", L"key", value));
        EXPECT_EQ(ReadProfileText(L"S", L"key", 100), value);
    }
    EXPECT_TRUE(ReadBytes(settingsPath).starts_with("\xff\xfe"));
    EXPECT_EQ(FilesIn(folder.Path()).size(), 1u) << "nothing to keep of a new file";
}

TEST(ProfileText, AnEmptyFileIsBegunAsUtf16) {
    const SettingsFolder folder;
    WriteBytes(settingsPath, "");
    EXPECT_TRUE(WriteProfileText(L"S", L"key", L"\x416"));
    EXPECT_EQ(ReadBytes(settingsPath), Utf16File(L"[S]\r\nkey=\x416\r\n"));
}

TEST(ProfileText, AnAnsiFileStaysAnsiUntilACharacterNeedsMore) {
    const SettingsFolder folder;
    const std::string original = "[S]\r\nold=" + ToBytes(L"\xe4", CP_ACP) + "\r\n; a comment\r\n";
    WriteBytes(settingsPath, original);
    EXPECT_TRUE(WriteProfileText(L"S", L"key", L"plain"));
    const std::string stillAnsi = ReadBytes(settingsPath);
    EXPECT_TRUE(stillAnsi.starts_with("[S]")) << stillAnsi;
    EXPECT_EQ(FilesIn(folder.Path()).size(), 1u);

    EXPECT_TRUE(WriteProfileText(L"S", L"wide", L"\x4e2d\xd83d\xde00"));
    EXPECT_EQ(ReadProfileText(L"S", L"wide", 100), L"\x4e2d\xd83d\xde00");
    EXPECT_EQ(ReadProfileText(L"S", L"old", 100), L"\xe4");
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100), L"plain");
    EXPECT_NE(ReadBytes(settingsPath).find(Utf16File(L"; a comment").substr(2)), std::string::npos);
    const auto kept = FilesIn(folder.Path() + L"\\Backup");
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(ReadBytes(folder.Path() + L"\\Backup\\" + kept[0]), stillAnsi);

    EXPECT_TRUE(WriteProfileText(L"S", L"wide", L"\x4e2e"));
    EXPECT_EQ(FilesIn(folder.Path() + L"\\Backup").size(), 1u) << "rewritten once";
    EXPECT_EQ(FilesIn(folder.Path()).size(), 2u) << "no temporary file left";
}

TEST(PrepareSettingsFile, MakesUtf16OfWhatWindowsWouldMisread) {
    const std::string originals[] = {
        "\xef\xbb\xbf[S]\r\nkey=\xd0\x96\r\n",
        std::string("\xfe\xff\0[\0S\0]\0\r\0\n\0k\0e\0y\0=\x04\x16\0\r\0\n", 26),
        std::string("\xfe\xff\0[\0S\0]\0\r\0\n\0k\0e\0y\0=\x04\x16\0\r\0\n\0", 27),
    };
    for (const std::string& original : originals) {
        const SettingsFolder folder;
        WriteBytes(settingsPath, original);
        EXPECT_TRUE(PrepareSettingsFile(settingsPath));
        EXPECT_EQ(ReadBytes(settingsPath), Utf16File(L"[S]\r\nkey=\x416\r\n"));
        EXPECT_TRUE(WriteProfileText(L"S", L"next", L"plain"));
        EXPECT_EQ(ReadProfileText(L"S", L"key", 100), L"\x416");
        const auto kept = FilesIn(folder.Path() + L"\\Backup");
        ASSERT_EQ(kept.size(), 1u);
        EXPECT_EQ(ReadBytes(folder.Path() + L"\\Backup\\" + kept[0]), original);
    }
}

TEST(PrepareSettingsFile, NeverTakesUtf16ForAnsi) {
    const SettingsFolder folder;
    const std::string original = Utf16File(L"[S]\r\nkey=\x416\r\n");
    WriteBytes(settingsPath, original);
    {
        // As a virus scanner holds it that may delete it.
        const UniqueFile other(CreateFileW(settingsPath.c_str(), GENERIC_READ | DELETE,
                                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                           OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(other);
        EXPECT_TRUE(PrepareSettingsFile(settingsPath, L"\x4e2d"));
    }
    EXPECT_EQ(ReadBytes(settingsPath), original);
    const UniqueFile lock(
        CreateFileW(settingsPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(lock);
    EXPECT_FALSE(PrepareSettingsFile(settingsPath, L"\x4e2d"));
    EXPECT_FALSE(PrepareSettingsFile(settingsPath, L"plain"));
}

TEST(ReplaceSettingsFile, NeverDeletesTheOnlyCopy) {
    const SettingsFolder folder;
    const std::wstring copy = folder.File(L"copy.tmp");
    WriteBytes(copy, "only");
    EXPECT_FALSE(ReplaceSettingsFile(folder.File(L"gone") + L"\\Verbatix.ini", copy));
    EXPECT_EQ(ReadBytes(copy), "only");

    WriteBytes(settingsPath, "old");
    WriteBytes(copy, "new");
    EXPECT_TRUE(ReplaceSettingsFile(settingsPath, copy));
    EXPECT_EQ(ReadBytes(settingsPath), "new");
}

TEST(ProfileText, ARewriteThatCannotKeepTheOriginalIsRefused) {
    const SettingsFolder folder;
    const std::string original = "[S]\r\nkey=old\r\n";
    WriteBytes(settingsPath, original);
    WriteBytes(folder.File(L"Backup"), "a file where the folder should be");
    EXPECT_FALSE(WriteProfileText(L"S", L"key", L"\x4e2d"));
    EXPECT_EQ(ReadBytes(settingsPath), original);
    EXPECT_TRUE(WriteProfileText(L"S", L"key", L"new"));
    EXPECT_EQ(FilesIn(folder.Path()).size(), 2u);
}

TEST(ProfileText, NoValueBreaksTheFile) {
    const SettingsFolder folder;
    EXPECT_TRUE(WriteProfileText(L"S", L"before", L"1"));
    EXPECT_TRUE(WriteProfileText(L"S", L"key", std::wstring_view(L"a\r\n[T]\nb=2\0tail", 15)));
    EXPECT_TRUE(WriteProfileText(L"S", L"after", L"3"));
    EXPECT_EQ(ReadBytes(settingsPath), Utf16File(L"[S]\r\nbefore=1\r\nkey=a  [T] b=2\r\nafter=3\r\n"));
}

TEST(ProfileText, TheDefaultIsWhatTheCallerHolds) {
    const SettingsFolder folder;
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), L"old");
    EXPECT_TRUE(FilesIn(folder.Path()).empty()) << "reading creates nothing";
    WriteProfileText(L"S", L"key", L"value");
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), L"value");
    EXPECT_EQ(ReadProfileText(L"S", L"key", 4, L"old"), L"val");
    EXPECT_EQ(ReadProfileText(L"S", L"other", 100, L"old"), L"old");
    WriteProfileText(L"S", L"empty", L"");
    EXPECT_EQ(ReadProfileText(L"S", L"empty", 100, L"old"), L"");
}

TEST(ProfileText, WritesThatCannotSucceedSaySo) {
    const SettingsFolder folder;
    const std::wstring paths[] = {std::wstring(),
                                  L"Verbatix.ini",
                                  folder.Path(),
                                  L"Q:\\no\\drive.ini",
                                  folder.File(L"no folder") + L"\\x.ini",
                                  folder.File(std::wstring(300, L'x')),
                                  folder.File(L"bad|<>name?.ini"),
                                  std::wstring(L"\\\0x", 3)};
    for (const std::wstring& path : paths) {
        settingsPath = path;
        EXPECT_FALSE(WriteProfileText(L"S", L"key", L"value")) << path;
        EXPECT_FALSE(WriteProfileText(L"S", L"key", L"\x4e2d")) << path;
        EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), L"old") << path;
    }
    EXPECT_TRUE(FilesIn(folder.Path()).empty());
}

TEST(ProfileNumber, ReadsWhatHandsWrite) {
    const SettingsFolder folder;
    const struct {
        const wchar_t* text;
        int lowest;
        int highest;
        int value;
    } rows[] = {
        {L"12", -1, -1, 12},
        {L"0x12", -1, -1, 0},
        {L"on", -1, -1, 0},
        {L"-3x", -1, -1, -3},
        {L"99999999999", -1, -1, INT_MAX},
        {L"12", 0, 10, 10},
        {L"-12", 0, 10, 0},
        {L"5", 0, 10, 5},
        {L"12", -1, 10, 12},
        {L"-12", 0, -1, -12},
        {L"12", 10, 0, 10},
        {L"", 1, 10, 1},
        {L"\"7\"", -1, -1, 7},
    };
    for (const auto& row : rows) {
        WriteProfileText(L"S", L"n", row.text);
        EXPECT_EQ(ReadProfileNumber(L"S", L"n", 77, row.lowest, row.highest), row.value) << row.text;
    }
    EXPECT_EQ(ReadProfileNumber(L"S", L"missing", -77), -77);
    EXPECT_EQ(ReadProfileNumber(L"S", L"missing", 77, 0, 10), 10);
    EXPECT_TRUE(WriteProgramNumber(L"n", INT_MIN));
    EXPECT_EQ(ReadProgramNumber(L"n", 0), INT_MIN);
}

UniqueFile Lock(const std::wstring& path) {
    return UniqueFile(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
}

TEST(KeepReadable, WaitsForALockedFileOnly) {
    const SettingsFolder folder;
    ULONGLONG start = GetTickCount64();
    std::optional<UniqueFile> file = KeepReadable(settingsPath, 5000);
    EXPECT_TRUE(file && !*file) << "a missing file can be begun";
    EXPECT_FALSE(KeepReadable(folder.Path(), 5000)) << "a folder is in the way";
    EXPECT_LT(GetTickCount64() - start, 4000u) << "neither is waited for";
    WriteBytes(settingsPath, "x");
    const UniqueFile lock = Lock(settingsPath);
    start = GetTickCount64();
    EXPECT_FALSE(KeepReadable(settingsPath, 100));
    EXPECT_GE(GetTickCount64() - start, 100u);
}

TEST(KeepReadable, KeepsLocksAway) {
    const SettingsFolder folder;
    WriteBytes(settingsPath, "[S]\r\nkey=1\r\n");
    std::optional<UniqueFile> file = KeepReadable(settingsPath, 0);
    ASSERT_TRUE(file && *file);
    EXPECT_FALSE(Lock(settingsPath));
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100), L"1");
    file.reset();
    EXPECT_TRUE(Lock(settingsPath));
}

}  // namespace
}  // namespace verbatix
