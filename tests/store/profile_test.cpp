#include "store/profile.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "base/handle.h"
#include "store/ini_files.h"
#include "store/profile_section.h"
#include "store/settings_commit.h"
#include "store/settings_file.h"

namespace verbatix::test {
namespace {

TEST(ProfileText, HoldsEveryCharacterAndNoValueBreaksTheFile) {
    const SettingsFolder folder;
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), L"old");
    EXPECT_TRUE(FilesIn(folder.Path()).empty()) << "reading creates nothing";
    for (const wchar_t* value : {L"plain", L"\x41f\x440\x438", L"\x20ac", L"\xd83d\xde00", L"\xd83d",
                                 L"a=b;c|d", L"mid \"quotes\" here", L""}) {
        EXPECT_TRUE(WriteProfileText(L"S", L"key", value));
        EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), value);
    }
    EXPECT_EQ(ReadProfileText(L"S", L"other", 100, L"old"), L"old");
    EXPECT_EQ(FilesIn(folder.Path()).size(), 1u) << "no temporary one";
    WriteBytes(settingsPath, Utf16File(L"[S]\r\n"));
    EXPECT_TRUE(WriteProfileText(L"S", L"key", std::wstring_view(L"\x416\r\n[T]\nb=2\0tail", 15)));
    EXPECT_TRUE(WriteProfileText(L"S", L"after", L"3"));
    EXPECT_EQ(ReadBytes(settingsPath), Utf16File(L"[S]\r\nkey=\x416  [T] b=2\r\nafter=3\r\n"));
    EXPECT_EQ(ReadProfileText(L"S", L"key", 4), L"\x416  ") << "cut, then without blanks at its end";
}

TEST(ProfileText, AnAnsiFileStaysAnsiUntilACharacterNeedsMore) {
    const SettingsFolder folder;
    WriteBytes(settingsPath, "[S]\r\nold=" + ToBytes(L"\xe4", CP_ACP) + "\r\n; a comment\r\n");
    EXPECT_TRUE(WriteProfileText(L"S", L"key", L"plain"));
    const std::string stillAnsi = ReadBytes(settingsPath);
    EXPECT_TRUE(stillAnsi.starts_with("[S]")) << stillAnsi;

    for (const wchar_t* wide : {L"\x4e2d\xd83d\xde00", L"\x4e2e"}) {
        EXPECT_TRUE(WriteProfileText(L"S", L"wide", wide));
        EXPECT_EQ(ReadProfileText(L"S", L"wide", 100), wide);
        EXPECT_EQ(ReadProfileText(L"S", L"old", 100), L"\xe4");
        EXPECT_NE(ReadBytes(settingsPath).find(Utf16File(L"; a comment").substr(2)), std::string::npos);
        EXPECT_EQ(folder.Kept(), stillAnsi) << "rewritten once";
    }
    EXPECT_EQ(FilesIn(folder.Path()).size(), 3u) << "the backups, the generation, no temporary file";
}

TEST(SettingsFile, BecomesUtf16WhereWindowsWouldMisreadIt) {
    const std::string bigEndian("\xfe\xff\0[\0S\0]\0\r\0\n\0k\0e\0y\0=\x04\x16\0\r\0\n", 26);
    for (const std::string& original :
         {std::string("\xef\xbb\xbf[S]\r\nkey=\xd0\x96\r\n"), bigEndian, bigEndian + '\0'}) {
        const SettingsFolder folder;
        WriteBytes(settingsPath, original);
        EXPECT_TRUE(PrepareSettingsFile());
        EXPECT_EQ(ReadBytes(settingsPath), Utf16File(L"[S]\r\nkey=\x416\r\n"));
        EXPECT_EQ(folder.Kept(), original);
    }
}

TEST(ProfileText, WritesThatCannotSucceedSaySoAndReadsFindNothing) {
    const SettingsFolder folder;
    for (const std::wstring& path :
         {std::wstring(), std::wstring(L"Verbatix.ini"), folder.Path(), std::wstring(L"Q:\\no\\drive.ini"),
          folder.File(std::wstring(300, L'x')), folder.File(L"bad|<>name?.ini"),
          std::wstring(L"\\\0x", 3)}) {
        settingsPath = path;
        EXPECT_FALSE(WriteProfileText(L"S", L"key", L"value")) << path;
        EXPECT_FALSE(WriteProfileText(L"S", L"key", L"\x4e2d")) << path;
        EXPECT_EQ(ReadProfileText(L"S", L"key", 100, L"old"), L"old") << path;
        ProfileSection section = ReadSection(path, L"S");
        EXPECT_EQ(SectionText(section, L"key", 16, L"old"), L"old") << path;
        EXPECT_EQ(SectionNumber(section, L"key", -1), -1) << path;
        EXPECT_TRUE(SectionKeys(section).empty()) << path;
    }
    EXPECT_TRUE(FilesIn(folder.Path()).empty());
}

TEST(KeepReadable, WaitsForALockedFileOnlyAndKeepsLocksAway) {
    const SettingsFolder folder;
    ULONGLONG start = GetTickCount64();
    std::optional<UniqueFile> file = KeepReadable(settingsPath, 60000);
    EXPECT_TRUE(file && !*file) << "a missing file can be begun";
    EXPECT_FALSE(KeepReadable(folder.Path(), 60000)) << "a folder is in the way";
    EXPECT_LT(GetTickCount64() - start, 30000u) << "neither is waited for";
    WriteBytes(settingsPath, "[S]\r\nkey=1\r\n");
    UniqueFile lock = OpenShared(settingsPath, 0);
    start = GetTickCount64();
    EXPECT_FALSE(KeepReadable(settingsPath, 100));
    EXPECT_GE(GetTickCount64() - start, 100u);
    lock.Reset();
    file = KeepReadable(settingsPath, 0);
    ASSERT_TRUE(file && *file);
    EXPECT_FALSE(OpenShared(settingsPath, 0));
    EXPECT_EQ(ReadProfileText(L"S", L"key", 100), L"1");
    file.reset();
    EXPECT_TRUE(OpenShared(settingsPath, 0));
}

}  // namespace
}  // namespace verbatix::test
