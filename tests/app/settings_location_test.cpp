#include "app/settings_location.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "app/command_line.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "store/settings_path.h"
#include "support/folder.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using test::Folder;
using test::WriteBytes;

// A world in which the paths beginning with one of `writable` can be written; tells what was done.
struct Disk {
    std::wstring writable;  // separated by "|"
    std::wstring done = {};
    bool plain = true;

    SettingsProbe Probe() {
        return {[this](const std::wstring& path, int secondsBack) {
                    done += Format(L"test %ls %d\n", path.c_str(), secondsBack);
                    for (const std::wstring_view prefix : Split(writable, L'|')) {
                        if (!prefix.empty() && path.starts_with(prefix)) return true;
                    }
                    return false;
                },
                [this](const std::wstring&) { return plain; },
                [this](const std::wstring& path) { done += L"create " + path + L"\n"; }};
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
        {L"C:\\Tools\\Verbatix.exe", L"", L"", L"APP | write APP"},
        {L"C:\\Tools\\V_p.exe", L"", L"C:", L"C:\\Tools\\Verbatix.ini requested active"},
        {L"C:\\V_PORT.EXE", L"", L"C:", L"C:\\Verbatix.ini requested active"},
        {L"C:\\x_p\\_pad.exe", L"", L"C:|D:", L"APP"},
        {L"C:\\Tools\\V_p.exe", L"", L"D:", L"APP requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\V_p.exe", L"", L"", L"APP requested | write C:\\Tools\\Verbatix.ini | write APP"},
        // In the temporary folder, written in another case, nothing stays beside the program.
        {L"C:\\USERS\\temp\\x\\V_p.exe", L"", L"C:|D:", L"APP requested"},
        {L"C:\\Users\\Temporary\\V_p.exe", L"", L"C:",
         L"C:\\Users\\Temporary\\Verbatix.ini requested active"},
        {L"\\\\server\\share\\V_p.exe", L"", L"\\\\", L"\\\\server\\share\\Verbatix.ini requested active"},
        // A named file is taken as it stands when the program folder can be written.
        {L"C:\\Tools\\Verbatix.exe", L"E:\\my\\list.INI", L"C:", L"E:\\my\\list.INI"},
        {L"C:\\Tools\\V_p.exe", L"x.ini", L"C:", L"x.ini requested"},
        {L"C:\\Users\\Temp\\V.exe", L"x.ini", L"C:", L"x.ini"},
        {L"C:\\Tools\\V_p.exe", L"x.ini", L"D:", L"APP requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\noextension", L"D:", L"APP | extension E:\\noextension"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\x.ini\\sub", L"D:", L"APP | extension E:\\x.ini\\sub"},
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
    const std::wstring deep = L"C:\\" + std::wstring(30000, L'd');
    EXPECT_EQ(Disk{L"C:"}.Decide({deep + L"\\V_p.exe", L"", deep, L""}),
              deep + L"\\Verbatix.ini requested active");
    EXPECT_EQ(Disk{L"C:"}.Decide({L"\\\\s\\V_p.exe", L"", L"", L""}),
              L"\\Verbatix\\Verbatix.ini requested | write \\\\s\\Verbatix.ini | write "
              L"\\Verbatix\\Verbatix.ini");
    Disk notPlain{.writable = L"C:", .plain = false};
    EXPECT_TRUE(notPlain.Decide({L"C:\\t\\V_p.exe", L"T:\\", L"C:\\R", L""}).starts_with(L"C:\\R\\"));
}

TEST(DecideSettingsPath, TouchesOnlyWhatItNeeds) {
    const wchar_t* const rows[][3] = {
        {L"C:\\t\\V_p.exe", L"", L"test C:\\t\\Verbatix.ini 0\ntest C:\\t\\Verbatix.ini 22\n"},
        {L"C:\\t\\V.exe", L"", L"create D:\\R\\Verbatix\ntest D:\\R\\Verbatix\\Verbatix.ini 22\n"},
        {L"C:\\t\\V.exe", L"E:\\x.ini", L"test C:\\t\\Verbatix.ini 0\n"},
    };
    for (const auto& row : rows) {
        Disk disk{L"C:|D:"};
        disk.Decide({row[0], L"T:\\", L"D:\\R", row[1]});
        EXPECT_EQ(disk.done, row[2]);
    }
}

TEST(WriteTest, LeavesAFreshStampAndWhatTheFileHeld) {
    const Folder folder;
    const std::wstring path = folder.File(L"new.ini");
    const auto stamp = [&] { return GetPrivateProfileIntW(L"Program", L"TestIni", -1, path.c_str()); };
    ASSERT_TRUE(WriteTest(path, 0));
    const UINT first = stamp();
    ASSERT_TRUE(WriteTest(path, 22));
    EXPECT_LT(stamp(), first);
    EXPECT_EQ(test::ReadBytes(path).substr(0, 4), std::string("\xff\xfe[\0", 4));

    WriteBytes(path, "[Other]\r\na=1\r\n");
    EXPECT_TRUE(WriteTest(path, 0));
    EXPECT_TRUE(test::ReadBytes(path).starts_with("[Other]\r\na=1\r\n"));
    WriteBytes(path, "\xef\xbb\xbf[Program]\r\na=1\r\n");
    EXPECT_TRUE(WriteTest(path, 0));
    EXPECT_TRUE(test::ReadBytes(path).starts_with(test::Utf16File(L"[Program]\r\na=1\r\n")));

    // Held open for reading only: even an administrator, whom no attribute stops, cannot write then.
    const UniqueFile reader(
        CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(reader);
    for (const std::wstring& bad : {path, folder.Path(), folder.File(L"missing\\x.ini"),
                                    folder.File(std::wstring(40000, L'n') + L".ini")}) {
        EXPECT_FALSE(WriteTest(bad, 0)) << bad.substr(0, 300);
    }
}

TEST(ReportWriteError, SpeaksOnceAndOpensThePage) {
    SetLanguageTexts({}, {});
    static std::wstring opened;
    openWebPage = [](const std::wstring& address) { opened += address; };
    test::MessageBoxAnswer box;
    ReportWriteError(L"C:\\locked\\Verbatix.ini");
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Caption() + L": " + box.Text(), L"Write Error: C:\\locked\\Verbatix.ini");
    ReportWriteError(L"C:\\other.ini");  // would stand until the test times out
    EXPECT_EQ(opened, L"https://verbatix.example/en/?seite=faq-Verbatix&faq=29");
    EXPECT_EQ(WriteErrorPage(true), L"https://verbatix.example/?seite=faq-Verbatix&faq=29");
}

TEST(ChooseSettingsPath, TakesTheApplicationDataFileOrAReadableNamedOne) {
    wchar_t appData[MAX_PATH];
    ASSERT_NE(GetEnvironmentVariableW(L"APPDATA", appData, MAX_PATH), 0U);
    startOptions.iniPathOverride = L"C:\\list.txt";
    test::MessageBoxAnswer box;
    EXPECT_EQ(ChooseSettingsPath(), 1);
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Caption() + L": " + box.Text(),
              L"Error: The File Extension must be *.ini:\nC:\\list.txt");
    EXPECT_EQ(LowerCase(settingsPath), LowerCase(appData + std::wstring(L"\\Verbatix\\Verbatix.ini")));
    EXPECT_GT(GetPrivateProfileIntW(L"Program", L"TestIni", 0, settingsPath.c_str()), 1000000U);

    const Folder folder;
    const std::wstring named = startOptions.iniPathOverride = folder.File(L"named.ini");
    WriteBytes(named, "\xef\xbb\xbf[Program]\r\nlistcmd_count=1\r\n");
    ChooseSettingsPath();
    DeleteFileW(test::HelperPath(L"Verbatix.ini").c_str());  // written by the test beside the program
    EXPECT_EQ(settingsPath, named);
    EXPECT_EQ(test::ReadBytes(named), test::Utf16File(L"[Program]\r\nlistcmd_count=1\r\n"));
}

}  // namespace
}  // namespace verbatix
