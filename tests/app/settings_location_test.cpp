#include "app/settings_location.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "app/command_line.h"
#include "base/handle.h"
#include "base/text.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"
#include "support/folder.h"
#include "support/message_box.h"

namespace verbatix::test {
namespace {

// A world in which the paths beginning with one of `writable` can be written.
struct Disk {
    std::wstring writable;  // separated by "|"
    bool plain = true;

    SettingsProbe Probe() {
        return {[this](const std::wstring& path, int) {
                    for (const std::wstring_view prefix : Split(writable, L'|')) {
                        if (!prefix.empty() && path.starts_with(prefix)) return true;
                    }
                    return false;
                },
                [this](const std::wstring&) { return plain; }, [](const std::wstring&) {}};
    }
    std::wstring Decide(const SettingsFacts& facts) {
        const SettingsChoice choice = DecideSettingsPath(facts, Probe());
        std::wstring text = choice.path + (choice.portableRequested ? L" requested" : L"") +
                            (choice.portableActive ? L" active" : L"");
        for (const auto& [kind, path] : choice.messages) {
            text += (kind == StartMessage::kWriteError ? L" | write " : L" | extension ") + path;
        }
        return text;
    }
};

TEST(DecideSettingsPath, ChoosesTheFileOfThisRun) {
    // APP stands for the file in the application-data folder.
    const struct {
        const wchar_t *module, *ini, *writable, *choice;
    } rows[] = {
        {L"C:\\Tools\\Verbatix.exe", L"", L"C:|D:", L"APP"},
        {L"C:\\Tools\\V_p.exe", L"", L"C:", L"C:\\Tools\\Verbatix.ini requested active"},
        {L"C:\\V_PORT.EXE", L"", L"C:", L"C:\\Verbatix.ini requested active"},
        {L"C:\\Tools\\V_p.exe", L"", L"D:", L"APP requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\V_p.exe", L"", L"", L"APP requested | write C:\\Tools\\Verbatix.ini | write APP"},
        // In the temporary folder, written in another case, nothing stays beside the program.
        {L"C:\\USERS\\temp\\x\\V_p.exe", L"", L"C:|D:", L"APP requested"},
        {L"\\\\server\\share\\V_p.exe", L"", L"\\\\", L"\\\\server\\share\\Verbatix.ini requested active"},
        // A named file is taken as it stands when the program folder can be written.
        {L"C:\\Tools\\Verbatix.exe", L"E:\\my\\list.INI", L"C:", L"E:\\my\\list.INI"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\noextension", L"D:", L"APP | extension E:\\noextension"},
        {L"C:\\Tools\\V_p.exe", L"E:\\x.txt", L"C:",
         L"C:\\Tools\\Verbatix.ini requested active | extension E:\\x.txt"},
        {L"C:\\Tools\\Verbatix.exe", L"ini", L"C:|D:", L"APP"},  // three characters name nothing
        {L"", L"", L"D:", L"APP"},
    };
    for (const auto& row : rows) {
        std::wstring choice = row.choice;
        ReplaceAll(choice, L"APP", L"D:\\Roaming\\Verbatix\\Verbatix.ini");
        EXPECT_EQ(Disk{row.writable}.Decide({row.module, L"C:\\Users\\Temp\\", L"D:\\Roaming", row.ini}),
                  choice)
            << row.module << L" " << row.ini;
    }
    Disk notPlain{.writable = L"C:", .plain = false};
    EXPECT_TRUE(notPlain.Decide({L"C:\\t\\V_p.exe", L"T:\\", L"C:\\R", L""}).starts_with(L"C:\\R\\"));
}

TEST(WriteTest, LeavesAFreshStampAndWhatTheFileHeld) {
    const Folder folder;
    const std::wstring path = folder.File(L"new.ini");
    const auto stamp = [&] { return GetPrivateProfileIntW(L"Program", L"TestIni", -1, path.c_str()); };
    ASSERT_TRUE(WriteTest(path, 0));
    const UINT first = stamp();
    ASSERT_TRUE(WriteTest(path, 22));
    EXPECT_LT(stamp(), first);
    EXPECT_EQ(ReadBytes(path).substr(0, 4), std::string("\xff\xfe[\0", 4));

    WriteBytes(path, "[Other]\r\na=1\r\n");
    EXPECT_TRUE(WriteTest(path, 0));
    EXPECT_TRUE(ReadBytes(path).starts_with("[Other]\r\na=1\r\n"));

    for (const std::wstring& bad : {folder.Path(), folder.File(L"missing\\x.ini"),
                                    folder.File(std::wstring(40000, L'n') + L".ini")}) {
        EXPECT_FALSE(WriteTest(bad, 0)) << bad.substr(0, 300);
    }

    // Another program holds it: waited for, and the right file even where that takes too long.
    UniqueFile reader(
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(WriteTest(path, 44));
    EXPECT_GE(GetTickCount64() - start, 2000u);
    const UINT before = stamp();
    reader.Reset();
    EXPECT_TRUE(PrepareSettingsFile());
    EXPECT_EQ(stamp(), before);
    EXPECT_TRUE(WriteProgramNumber(L"topmost", 1));
    EXPECT_LT(stamp(), before) << "written with the next value";
}

std::wstring openedPage;

TEST(ChooseSettingsPath, TellsOnceOfAProgramFolderThatCannotBeWritten) {
    const std::wstring beside = HelperPath(L"Verbatix.ini");
    CreateDirectoryW(beside.c_str(), nullptr);  // in the way of the file
    startOptions.iniPathOverride = L"C:\\list.ini";
    openWebPage = [](const std::wstring& address) { openedPage += address; };
    MessageBoxAnswer first;
    EXPECT_EQ(ChooseSettingsPath(), 1);
    RemoveDirectoryW(beside.c_str());
    ASSERT_TRUE(first.Seen());
    EXPECT_EQ(first.Caption() + L": " + first.Text(), L"Write Error: " + beside);
    EXPECT_TRUE(settingsPath.ends_with(L"\\Verbatix\\Verbatix.ini")) << settingsPath;
    MessageBoxAnswer second;
    ReportWriteError(settingsPath);
    EXPECT_FALSE(second.Seen());
    EXPECT_EQ(openedPage, WriteErrorPage(false));
}

TEST(ChooseSettingsPath, MakesANamedFileAFullPathOnce) {
    const std::wstring folder = HelperPath(L"");
    ASSERT_TRUE(SetCurrentDirectoryW(folder.c_str()));
    for (const wchar_t* named : {L"named.ini", L"./x/../named.INI", L"x/../named.ini"}) {
        startOptions.iniPathOverride = named;
        EXPECT_EQ(ChooseSettingsPath(), 1);
        EXPECT_TRUE(EqualsIgnoreCase(settingsPath, folder + L"named.ini")) << settingsPath;
        EXPECT_EQ(startOptions.iniPathOverride, settingsPath) << "so the next start finds it from anywhere";
    }
    for (const wchar_t* name : {L"named.ini", L"named.ini.bak", L"Verbatix.ini", L"Verbatix.ini.bak"})
        DeleteFileW((folder + name).c_str());
}

}  // namespace
}  // namespace verbatix::test
