// Starting the whole program: arguments, where the settings file lives, one copy a session, the tray icon.
#include <gtest/gtest.h>

#include <shellapi.h>
#include <shlobj.h>

#include "base/text.h"
#include "ids.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

constexpr int kSecondCopyExitCode = 45054;

// Asks the task bar through the one door there is: an icon that is not there cannot be changed.
bool HasTrayIcon(HWND frame) {
    NOTIFYICONDATAW data = {};
    data.cbSize = NOTIFYICONDATAW_V1_SIZE;
    data.hWnd = frame;
    data.uID = IDI_VERBATIX;
    return Shell_NotifyIconW(NIM_MODIFY, &data) != FALSE;
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
        {L"-BG", L"", false, true},
        {L"hide", L"", false, false},
        {L"HIDE", L"start_tray=0\r\n", false, false},
        {L"", L"start_tray=1\r\n", false, true},
        {L"", L"start_hiden=1\r\n", false, false},
        {L"-bg", L"start_hiden=1\r\n", false, false},
        {L"background", L"", true, true},
    };
    for (const auto& row : rows) {
        ProgramRun run;
        ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"x"}}, row.programLines)));
        ASSERT_TRUE(run.Start(row.arguments));
        const auto name =
            ::testing::PrintToString(row.arguments) + ::testing::PrintToString(row.programLines);
        if (row.visible) {
            EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(run.MainDialog()); })) << name;
        } else {
            Linger(300);
            EXPECT_FALSE(IsWindowVisible(run.MainDialog())) << name;
        }
        EXPECT_TRUE(WaitFor([&] { return HasTrayIcon(run.Frame()) == row.icon; })) << name;
        EXPECT_EQ(run.Exit(), 1) << name;
    }
}

TEST(Start, PutsTheIconBackWhenTheTaskBarRestarts) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({})));
    ASSERT_TRUE(run.Start(L"-bg"));
    const HWND frame = run.Frame();
    ASSERT_TRUE(WaitFor([&] { return HasTrayIcon(frame); }));
    NOTIFYICONDATAW data = {};
    data.cbSize = NOTIFYICONDATAW_V1_SIZE;
    data.hWnd = frame;
    data.uID = IDI_VERBATIX;
    ASSERT_TRUE(Shell_NotifyIconW(NIM_DELETE, &data));
    ASSERT_FALSE(HasTrayIcon(frame));
    PostMessageW(HWND_BROADCAST, RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    EXPECT_TRUE(WaitFor([&] { return HasTrayIcon(frame); }));
}

TEST(Start, RunsOneCopyOnly) {
    ProgramRun first;
    ASSERT_TRUE(first.WriteSettings(SettingsText({})));
    ASSERT_TRUE(first.Start(L"-bg"));
    const Target inFront;
    ProgramRun second;
    second.StartPlain(L"");
    EXPECT_EQ(second.Program().WaitForExit(), static_cast<DWORD>(kSecondCopyExitCode));
    EXPECT_TRUE(WaitFor([&] {
        return IsWindowVisible(first.MainDialog()) && GetForegroundWindow() == first.MainDialog();
    }));
    // The first copy is unharmed, and nothing of the second is left.
    EXPECT_EQ(first.Exit(), 1);
}

TEST(Start, SecondCopyWaitsForABusyFirstOne) {
    ProgramRun first;
    ASSERT_TRUE(first.WriteSettings(SettingsText({})));
    ASSERT_TRUE(first.Start(L"-bg"));
    // Busy for 1.5 s, as in the middle of a long execution.
    DWORD thread = GetWindowThreadProcessId(first.MainDialog(), nullptr);
    const UniqueKernelObject handle(OpenThread(THREAD_SUSPEND_RESUME, FALSE, thread));
    ASSERT_TRUE(handle);
    SuspendThread(handle.Get());
    ProgramRun second;
    second.StartPlain(L"");
    Linger(1500);
    ResumeThread(handle.Get());
    EXPECT_EQ(second.Program().WaitForExit(20000), static_cast<DWORD>(kSecondCopyExitCode));
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(first.MainDialog()); }));
}

TEST(Start, EndsWhenAnotherProgramAsksSo) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({})));
    ASSERT_TRUE(run.Start(L"-bg"));
    const UINT message = RegisterWindowMessageW(L"Verbatix");
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(run.Frame(), message, message, message, SMTO_BLOCK, 5000, &answer);
    EXPECT_EQ(answer, message);
    EXPECT_EQ(run.Program().WaitForExit(), 0U);
}

TEST(Start, FirstRunWritesACompleteList) {
    ProgramRun run;
    ASSERT_TRUE(run.Start(L"-bg"));
    const std::wstring file = run.SettingsFile();
    const std::string bytes = ReadBytes(file);
    EXPECT_EQ(bytes.substr(0, 2), "\xff\xfe");
    const int count = ToInt(ReadSetting(file, L"listcmd_count"));
    ASSERT_GE(count, 5);
    for (int number = 0; number < count; ++number) {
        wchar_t value[4096] = {};
        const std::wstring key = Format(L"text_%03d", number);
        GetPrivateProfileStringW(L"list_text", key.c_str(), L"", value, 4096, file.c_str());
        EXPECT_TRUE(std::wstring_view(value).ends_with(L"<E<N<D|")) << number;
        GetPrivateProfileStringW(L"list_order", key.c_str(), L"?", value, 4096, file.c_str());
        EXPECT_STRNE(value, L"?") << number;
    }
}

TEST(Start, FindsItsSettingsFile) {
    const struct {
        const wchar_t* programName;
        bool besideProgram;
    } rows[] = {
        {L"Verbatix_portable.exe", true},
        {L"tool_P.exe", true},
        {L"_pad.exe", false},
        {L"Verbatix.exe", false},
    };
    for (const auto& row : rows) {
        const std::wstring roaming = RoamingFile();
        DeleteFileW(roaming.c_str());
        ProgramRun run(row.programName);
        run.StartPlain(L"-bg");
        ASSERT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 15000));
        const std::wstring beside = run.Place().File(L"Verbatix.ini");
        EXPECT_EQ(!ReadSetting(beside, L"listcmd_count").empty(), row.besideProgram);
        EXPECT_EQ(!ReadSetting(roaming, L"listcmd_count").empty(), !row.besideProgram);
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

TEST(Start, TakesAQuotedPathWithBlanks) {
    ProgramRun run;
    CreateDirectoryW(run.Place().File(L"my texts").c_str(), nullptr);
    const std::wstring file = run.Place().File(L"my texts\\own.ini");
    run.StartPlain(L"-bg \"-ini:" + file + L"\"");
    ASSERT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 15000));
    EXPECT_FALSE(ReadSetting(file, L"listcmd_count").empty());
    EXPECT_EQ(run.Exit(), 1);
}

TEST(Start, ReportsAPathItCannotWriteAndRunsOn) {
    const Folder place;
    const std::wstring paths[] = {
        place.Path() + L"\\folder.ini",
        L"Q:\\missing\\drive.ini",
        place.Path() + L"\\" + std::wstring(300, L'x') + L".ini",
    };
    CreateDirectoryW(paths[0].c_str(), nullptr);
    for (const std::wstring& path : paths) {
        ProgramRun run;
        run.StartPlain(L"-bg \"-ini:" + path + L"\"");
        // The first run's list cannot be written either, which is said by name of the file.
        const HWND box = run.Program().WaitForVisibleWindow(L"#32770");
        ASSERT_TRUE(box) << ::testing::PrintToString(path);
        EXPECT_NE(WindowText(GetDlgItem(box, 0xFFFF)).find(path.substr(0, 200)), std::wstring::npos);
        // Every box there is, until the program runs.
        EXPECT_TRUE(WaitFor(
            [&] {
                const HWND dialog = run.Program().WaitForVisibleWindow(L"#32770", nullptr, 0);
                if (dialog && !GetDlgItem(dialog, IDC_LIST)) SendMessageW(dialog, WM_COMMAND, IDOK, 0);
                return run.MainDialog() != nullptr && !dialog;
            },
            15000));
        EXPECT_EQ(run.Exit(), 1);
    }
}

}  // namespace
}  // namespace verbatix::test
