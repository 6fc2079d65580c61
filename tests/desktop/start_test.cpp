// Starting the whole program: arguments, where the settings file lives, one copy a session, the tray icon.
#include <gtest/gtest.h>

#include <windows.h>

#include <shlobj.h>

#include "base/text.h"
#include "ids.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

std::wstring ReadSetting(const std::wstring& file, const wchar_t* key) {
    wchar_t value[256] = {};
    GetPrivateProfileStringW(L"Program", key, L"", value, 256, file.c_str());
    return value;
}

std::wstring RoamingFile() {
    wchar_t folder[MAX_PATH] = {};
    SHGetSpecialFolderPathW(nullptr, folder, CSIDL_APPDATA, FALSE);
    return std::wstring(folder) + L"\\Verbatix\\Verbatix.ini";
}

TEST(Start, KeepsTheWindowAwayAsToldAndTheIconToo) {
    const struct {
        const wchar_t* arguments;
        const wchar_t* programLines;
        bool icon;
    } rows[] = {
        {L"-bg", L"", true},
        {L"HIDE", L"start_tray=0\r\n", false},
        {L"", L"start_tray=1\r\n", true},
        {L"-bg", L"start_hiden=1\r\n", false},
    };
    for (const auto& row : rows) {
        ProgramRun run;
        ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"x"}}, row.programLines)));
        ASSERT_TRUE(run.Start(row.arguments));
        const auto name =
            ::testing::PrintToString(row.arguments) + ::testing::PrintToString(row.programLines);
        ASSERT_TRUE(run.IsThrough()) << name;
        EXPECT_TRUE(WaitFor([&] { return run.ChangeTrayIcon(NIM_MODIFY) == row.icon; })) << name;
        EXPECT_FALSE(IsWindowVisible(run.MainDialog())) << name;
        EXPECT_EQ(run.Exit(), 1) << name;
    }
}

TEST(Start, ItsIconComesBackAndASecondCopyWaitsForABusyFirstOneAndShowsIt) {
    ProgramRun first;
    ASSERT_TRUE(first.WriteSettings(SettingsText({})));
    ASSERT_TRUE(first.Start(L"-bg"));
    ASSERT_TRUE(WaitFor([&] { return first.ChangeTrayIcon(NIM_MODIFY); }));
    ASSERT_TRUE(first.ChangeTrayIcon(NIM_DELETE));
    ASSERT_FALSE(first.ChangeTrayIcon(NIM_MODIFY));
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(WaitFor([&] { return first.ChangeTrayIcon(NIM_MODIFY); }));
    const Target inFront;
    // Busy for a while, as in the middle of a long execution.
    const DWORD thread = GetWindowThreadProcessId(first.MainDialog(), nullptr);
    const UniqueKernelObject handle(OpenThread(THREAD_SUSPEND_RESUME, FALSE, thread));
    ASSERT_TRUE(handle);
    SuspendThread(handle.Get());
    ProgramRun second;
    second.StartPlain(L"");
    Linger(700);
    ResumeThread(handle.Get());
    EXPECT_EQ(second.Program().WaitForExit(20000), kSecondCopyExitCode);
    EXPECT_TRUE(WaitFor([&] {
        return IsWindowVisible(first.MainDialog()) && GetForegroundWindow() == first.MainDialog();
    }));
    EXPECT_TRUE(first.ChangeTrayIcon(NIM_MODIFY)) << "beside the window too";
    EXPECT_EQ(first.Exit(), 1) << "unharmed";
}

TEST(Start, FindsItsSettingsFileAndWritesACompleteList) {
    const struct {
        const wchar_t* programName;
        bool besideProgram;
    } rows[] = {{L"Verbatix_portable.exe", true}, {L"Verbatix.exe", false}};
    for (const auto& row : rows) {
        const std::wstring roaming = RoamingFile();
        // As on a machine that has never had a list: the generation behind and the backups count as one.
        Folder::RemoveTree(roaming.substr(0, roaming.rfind(L'\\')));
        ProgramRun run(row.programName);
        run.StartPlain(L"-bg");
        ASSERT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 15000));
        const std::wstring beside = run.Place().File(L"Verbatix.ini");
        const std::wstring& file = row.besideProgram ? beside : roaming;
        EXPECT_EQ(ReadSetting(row.besideProgram ? roaming : beside, L"listcmd_count"), L"");
        const std::string bytes = ReadBytes(file);
        EXPECT_TRUE(bytes.starts_with("\xff\xfe"));
        const int count = ToInt(ReadSetting(file, L"listcmd_count"));
        ASSERT_GE(count, 5);
        const std::string last = Utf16File(Format(L"text_%03d=", count - 1)).substr(2);
        EXPECT_NE(bytes.find(last), bytes.rfind(last)) << "its text and its order at least";
        EXPECT_EQ(run.Exit(), 1);
    }
}

TEST(Start, ReportsAPathItCannotUseAndRunsOn) {
    // The one is of another kind and leaves the file of every day, the other cannot be written.
    for (const auto& [name, message] :
         {std::pair{L"list.txt", L"The File Extension must be *.ini:\n"}, {L"missing\\list.ini", L""}}) {
        ProgramRun run;
        const std::wstring path = run.Place().File(name);
        run.StartPlain(L"-bg \"-ini:" + path + L"\"");
        const HWND first = run.Program().WaitForVisibleWindow(L"#32770");
        ASSERT_TRUE(first) << ::testing::PrintToString(path);
        const std::wstring said = WindowText(GetDlgItem(first, 0xFFFF));
        EXPECT_TRUE(said.starts_with(message) && said.ends_with(path)) << ::testing::PrintToString(said);
        // Every box there is, until the program runs.
        EXPECT_TRUE(WaitFor(
            [&] {
                const HWND dialog = run.Program().WaitForVisibleWindow(L"#32770", nullptr, 0);
                if (dialog && !GetDlgItem(dialog, IDC_LIST)) SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                return run.MainDialog() != nullptr && !dialog;
            },
            15000));
        // The first run's list is lost with the program, which is asked about.
        PostMessageW(run.MainDialog(), WM_COMMAND, CMD_EXIT, 0);
        EXPECT_TRUE(WaitFor(
            [&] {
                const HWND box = run.Program().WaitForVisibleWindow(L"#32770", nullptr, 0);
                if (box && !GetDlgItem(box, IDC_LIST)) PostMessageW(box, WM_COMMAND, IDYES, 0);
                return WaitForSingleObject(run.Program().Handle(), 0) == WAIT_OBJECT_0;
            },
            15000));
    }
}

}  // namespace
}  // namespace verbatix::test
