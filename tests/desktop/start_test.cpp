// Starting the whole program: arguments, where the settings file lives, one copy a session, the tray icon.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include "base/text.h"
#include "ids.h"
#include "store/ini_files.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

constexpr DWORD kSecondCopyExitCode = 45054;

// As the program does it, so that the task bar takes it for the program's word.
bool ChangeIcon(DWORD message, HWND frame) {
    NOTIFYICONDATAW data = {};
    data.cbSize = NOTIFYICONDATAW_V1_SIZE;
    data.hWnd = frame;
    data.uID = IDI_VERBATIX;
    return Shell_NotifyIconW(message, &data) != FALSE;
}

// Asks the task bar through the one door there is: an icon that is not there cannot be changed.
bool HasTrayIcon(HWND frame) {
    return ChangeIcon(NIM_MODIFY, frame);
}

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

TEST(Start, ShowsTheWindowUnlessToldOtherwise) {
    const struct {
        const wchar_t* arguments;
        const wchar_t* programLines;
        bool visible;
        bool icon;
    } rows[] = {
        {L"", L"", true, true},
        {L"-bg", L"", false, true},
        {L"HIDE", L"start_tray=0\r\n", false, false},
        {L"", L"start_tray=1\r\n", false, true},
        {L"-bg", L"start_hiden=1\r\n", false, false},
    };
    for (const auto& row : rows) {
        ProgramRun run;
        ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"x"}}, row.programLines)));
        ASSERT_TRUE(run.Start(row.arguments));
        const auto name =
            ::testing::PrintToString(row.arguments) + ::testing::PrintToString(row.programLines);
        EXPECT_TRUE(WaitFor([&] { return HasTrayIcon(run.Frame()) == row.icon; })) << name;
        EXPECT_TRUE(WaitFor([&] { return (IsWindowVisible(run.MainDialog()) != 0) == row.visible; }))
            << name;
        EXPECT_EQ(run.Exit(), 1) << name;
    }
}

TEST(Start, PutsTheIconBackWhenTheTaskBarRestarts) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({})));
    ASSERT_TRUE(run.Start(L"-bg"));
    const HWND frame = run.Frame();
    ASSERT_TRUE(WaitFor([&] { return HasTrayIcon(frame); }));
    ASSERT_TRUE(ChangeIcon(NIM_DELETE, frame));
    ASSERT_FALSE(HasTrayIcon(frame));
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(WaitFor([&] { return HasTrayIcon(frame); }));
}

TEST(Start, ASecondCopyWaitsForABusyFirstOneAndShowsIt) {
    ProgramRun first;
    ASSERT_TRUE(first.WriteSettings(SettingsText({})));
    ASSERT_TRUE(first.Start(L"-bg"));
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
    EXPECT_EQ(first.Exit(), 1) << "unharmed";
}

TEST(Start, FirstRunWritesACompleteList) {
    ProgramRun run;
    ASSERT_TRUE(run.Start(L"-bg"));
    const std::wstring file = run.SettingsFile();
    const std::string bytes = ReadBytes(file);
    EXPECT_TRUE(bytes.starts_with("\xff\xfe"));
    const int count = ToInt(ReadSetting(file, L"listcmd_count"));
    ASSERT_GE(count, 5);
    const std::string last = Utf16File(Format(L"text_%03d=", count - 1)).substr(2);
    EXPECT_NE(bytes.find(last), bytes.rfind(last)) << "its text and its order at least";
}

TEST(Start, FindsItsSettingsFile) {
    const struct {
        const wchar_t* programName;
        bool besideProgram;
    } rows[] = {
        {L"Verbatix_portable.exe", true},
        {L"Verbatix.exe", false},
    };
    for (const auto& row : rows) {
        const std::wstring roaming = RoamingFile();
        // All of them, or there has been a list.
        for (const wchar_t* ending : {L"", L".bak"}) DeleteFileW((roaming + ending).c_str());
        const std::wstring backups = BackupFolderOf(roaming);
        for (const std::wstring& name : FilesIn(backups)) DeleteFileW((backups + L"\\" + name).c_str());
        ProgramRun run(row.programName);
        run.StartPlain(L"-bg");
        ASSERT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 15000));
        const std::wstring beside = run.Place().File(L"Verbatix.ini");
        EXPECT_EQ(!ReadSetting(beside, L"listcmd_count").empty(), row.besideProgram);
        EXPECT_EQ(!ReadSetting(roaming, L"listcmd_count").empty(), !row.besideProgram);
        EXPECT_EQ(run.Exit(), 1);
    }
}

TEST(Start, NoFileKeepsTheProgramFromStarting) {
    const std::wstring list = SettingsText({{L"Ctrl+Q", L"kept"}});
    std::string noise(4000, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * i >> 7);
    const std::pair<std::string, int> files[] = {
        {noise, -1},
        {Utf16File(list.substr(0, list.size() / 2)), -1},
        {Utf16File(list + L"listcmd_count=7\r\n"), 1},
        {Utf16File(
             L"[Program]\r\nlistcmd_count=300000000\r\n[list_text]\r\ntext_000=Ctrl+Q=kept<E<N<D|\r\n"),
         1},
    };
    for (const auto& [bytes, entries] : files) {
        ProgramRun run;
        ASSERT_TRUE(WriteBytes(run.SettingsFile(), bytes));
        ASSERT_TRUE(run.Start(L"-bg")) << ::testing::PrintToString(bytes);
        const auto rows = SendMessageW(GetDlgItem(run.MainDialog(), IDC_LIST), LVM_GETITEMCOUNT, 0, 0);
        EXPECT_TRUE(entries < 0 || rows == entries) << rows;
        EXPECT_EQ(run.Exit(), 1);
    }
}

TEST(Start, RefusesASettingsFileOfAnotherKind) {
    ProgramRun run;
    run.StartPlain(L"-bg \"-ini:" + run.Place().File(L"list.txt") + L"\"");
    const HWND box = run.Program().WaitForVisibleWindow(L"#32770", L"Error");
    ASSERT_TRUE(box);
    const std::wstring said = WindowText(GetDlgItem(box, 0xFFFF));
    EXPECT_EQ(said, L"The File Extension must be *.ini:\n" + run.Place().File(L"list.txt"));
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 15000));
    EXPECT_EQ(run.Exit(), 1);
}

TEST(Start, ReportsAPathItCannotWriteAndRunsOn) {
    const Folder place;
    const std::wstring paths[] = {
        place.File(L"folder.ini"),
        L"Q:\\missing\\drive.ini",
        place.File(std::wstring(300, L'x') + L".ini"),
    };
    CreateDirectoryW(paths[0].c_str(), nullptr);
    for (const std::wstring& path : paths) {
        ProgramRun run;
        run.StartPlain(L"-bg \"-ini:" + path + L"\"");
        // The first run's list cannot be written either, which is said by name of the file.
        const HWND first = run.Program().WaitForVisibleWindow(L"#32770");
        ASSERT_TRUE(first) << ::testing::PrintToString(path);
        EXPECT_NE(WindowText(GetDlgItem(first, 0xFFFF)).find(path.substr(0, 200)), std::wstring::npos);
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
        EXPECT_TRUE(WaitFor([&] {
            const HWND box = run.Program().WaitForVisibleWindow(L"#32770", nullptr, 0);
            if (box && !GetDlgItem(box, IDC_LIST)) PostMessageW(box, WM_COMMAND, IDYES, 0);
            return WaitForSingleObject(run.Program().Handle(), 0) == WAIT_OBJECT_0;
        }));
    }
}

}  // namespace
}  // namespace verbatix::test
