// The main window of the running program: commands by number, the ways out, the list.
#include <gtest/gtest.h>

#include <commctrl.h>

#include "ids.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

constexpr LPARAM kMarker = 0xAFFE0000;

int ReadSetting(const ProgramRun& run, const wchar_t* section, const wchar_t* key) {
    return static_cast<int>(GetPrivateProfileIntW(section, key, -7, run.SettingsFile().c_str()));
}

class MainDialog : public ::testing::Test {
  protected:
    void Start(const wchar_t* programLines, const wchar_t* arguments = L"") {
        ASSERT_TRUE(run_.WriteSettings(
            SettingsText({{L"Ctrl+Q", L"text q", L"Label/q"}, {L"Alt-Gr+F5", L"text f"}}, programLines)));
        ASSERT_TRUE(run_.Start(arguments));
        dialog_ = run_.MainDialog();
    }
    bool Visible() const { return IsWindowVisible(dialog_) != FALSE; }
    bool Becomes(bool visible) const {
        return WaitFor([&] { return Visible() == visible; });
    }
    void Send(WPARAM id, LPARAM lParam) const {
        DWORD_PTR answer = 0;
        ASSERT_TRUE(SendMessageTimeoutW(dialog_, WM_COMMAND, id, lParam, SMTO_ABORTIFHUNG, 5000, &answer));
    }

    ProgramRun run_;
    HWND dialog_ = nullptr;
};

TEST_F(MainDialog, TogglesAreWrittenAtOnce) {
    Start(L"");
    const struct {
        WPARAM id;
        const wchar_t* section;
        const wchar_t* key;
        int initial;
    } rows[] = {
        {2, L"Program", L"tray_if_close", 1},        {3, L"Program", L"start_tray", 0},
        {4, L"Program", L"start_hiden", 0},          {5, L"Program", L"tray_if_minimize", 1},
        {6, L"Program", L"hide_if_close", 0},        {1112, L"Program", L"use_date_format", 1},
        {1113, L"Program", L"use_time_format", 1},   {1115, L"Program", L"restore_old_clipboard", 0},
        {3000, L"Program", L"use_ignore_case", 1},   {3001, L"Program", L"show_menu_tooltip", 0},
        {3002, L"Verbatix", L"m_use_menu_order", 1}, {4001, L"Program", L"use_backup_h", 0},
        {4002, L"Program", L"use_backup_d", 0},
    };
    for (const auto& row : rows) {
        Send(row.id, kMarker);
        EXPECT_EQ(ReadSetting(run_, row.section, row.key), 1 - row.initial) << row.id;
        Send(row.id, kMarker);
        EXPECT_EQ(ReadSetting(run_, row.section, row.key), row.initial) << row.id;
    }
    for (const int mode : {2, 0, 1}) {
        Send(static_cast<WPARAM>(2000 + mode), kMarker);
        EXPECT_EQ(ReadSetting(run_, L"Program", L"use_menu_sort"), mode);
    }
}

TEST_F(MainDialog, ABackupIsMadeOnDemand) {
    Start(L"");
    Send(4003, kMarker);
    const std::wstring file = run_.SettingsFile();
    const std::wstring folder = file.substr(0, file.rfind(L'\\')) + L"\\Backup";
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"\\*_Verbatix.ini").c_str(), &found);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);
    EXPECT_EQ(ReadBytes(folder + L"\\" + found.cFileName), ReadBytes(file));
}

TEST_F(MainDialog, TheMarkerTellsTheTablesApart) {
    Start(L"");
    ASSERT_TRUE(Becomes(true));
    Send(5, kMarker);
    EXPECT_EQ(ReadSetting(run_, L"Program", L"tray_if_minimize"), 0);
    EXPECT_TRUE(Visible());
    Send(5, 0);
    EXPECT_EQ(ReadSetting(run_, L"Program", L"tray_if_minimize"), 0);
    EXPECT_TRUE(Becomes(false));
}

TEST_F(MainDialog, ClosingGoesToTheTray) {
    Start(L"tray_if_close=1\r\n");
    ASSERT_TRUE(Becomes(true));
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Becomes(false));
    EXPECT_FALSE(run_.Program().WaitForExit(300));
}

TEST_F(MainDialog, ClosingEndsTheProgramWithoutOptions) {
    Start(L"tray_if_close=0\r\n");
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_EQ(run_.Program().WaitForExit(), 1U);
    wchar_t place[100] = {};
    GetPrivateProfileStringW(L"Program", L"WinRC", L"", place, 100, run_.SettingsFile().c_str());
    EXPECT_TRUE(std::wstring_view(place).ends_with(L";x,y,w,h,SW")) << ::testing::PrintToString(place);
}

TEST_F(MainDialog, HidingTellsTheUserOnce) {
    Start(L"hide_if_close=1\r\nhide_info=0\r\n");
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    const HWND notice = run_.Program().WaitForVisibleWindow(L"#32770", L"Verbatix keeps running");
    ASSERT_TRUE(notice);
    SendMessageW(notice, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(Becomes(false));
    EXPECT_EQ(ReadSetting(run_, L"Program", L"hide_info"), 1);
    // Shown by starting the program again, as a user would; then hidden without a word.
    ProgramRun second;
    second.StartPlain(L"");
    ASSERT_TRUE(Becomes(true));
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Becomes(false));
}

TEST_F(MainDialog, MinimisingGoesToTheTrayOrDoesNothing) {
    Start(L"tray_if_minimize=0\r\n");
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == dialog_; }));
    SendMessageW(dialog_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(Visible());
    EXPECT_FALSE(IsIconic(dialog_));
    Send(5, kMarker);
    SendMessageW(dialog_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(Becomes(false));
    EXPECT_FALSE(IsIconic(dialog_));
}

TEST_F(MainDialog, ExitsByEitherCommand) {
    for (const auto& [id, lParam] : {std::pair<WPARAM, LPARAM>{CMD_EXIT, 0}, {12802, kMarker}}) {
        MainDialog::TearDown();
        ProgramRun run;
        ASSERT_TRUE(run.WriteSettings(SettingsText({})));
        ASSERT_TRUE(run.Start(L"-bg"));
        PostMessageW(run.MainDialog(), WM_COMMAND, id, lParam);
        EXPECT_EQ(run.Program().WaitForExit(), 1U) << id;
    }
}

TEST_F(MainDialog, ResizesItsListAndKeepsItsPlace) {
    Start(L"WinRC=40;50;840;650;1;x,y,w,h,SW\r\n");
    ASSERT_TRUE(Becomes(true));
    RECT place;
    GetWindowRect(dialog_, &place);
    EXPECT_EQ(place.left, 40);
    EXPECT_EQ(place.top, 50);
    EXPECT_EQ(place.right, 840);
    EXPECT_EQ(place.bottom, 650);
    MoveWindow(dialog_, 100, 60, 900, 500, TRUE);
    RECT client;
    RECT list;
    GetClientRect(dialog_, &client);
    GetWindowRect(GetDlgItem(dialog_, IDC_LIST), &list);
    EXPECT_GT(list.right - list.left, client.right - 40);
    EXPECT_LT(list.right - list.left, client.right);
    EXPECT_GT(list.bottom - list.top, client.bottom / 4);
    EXPECT_LT(list.bottom - list.top, client.bottom / 2);
    EXPECT_EQ(run_.Exit(), 1);
    wchar_t stored[100] = {};
    GetPrivateProfileStringW(L"Program", L"WinRC", L"", stored, 100, run_.SettingsFile().c_str());
    EXPECT_STREQ(stored, L"100;60;1000;560;1;x,y,w,h,SW");
}

TEST_F(MainDialog, ComesBackOntoTheScreen) {
    Start(L"WinRC=9000;9000;9800;9600;1;x,y,w,h,SW\r\n");
    ASSERT_TRUE(Becomes(true));
    RECT place;
    GetWindowRect(dialog_, &place);
    EXPECT_TRUE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL));
    EXPECT_GE(place.top, 0);
}

TEST_F(MainDialog, TheWindowMenuChangesHowItLooks) {
    Start(L"size=77\r\n");
    const HWND list = GetDlgItem(dialog_, IDC_LIST);
    const auto rowsInSight = [&] { return SendMessageW(list, LVM_GETCOUNTPERPAGE, 0, 0); };
    const auto isBuffered = [&] {
        return (SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_DOUBLEBUFFER) != 0;
    };
    const auto isOnTop = [&] { return (GetWindowLongPtrW(dialog_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    LRESULT before = rowsInSight() + 1;
    for (const WPARAM size : {0U, 1U, 2U}) {
        Send(CMD_SIZE_FIRST + size, kMarker);
        EXPECT_EQ(ReadSetting(run_, L"Program", L"size"), static_cast<int>(size));
        EXPECT_LT(rowsInSight(), before);
        before = rowsInSight();
    }
    for (const bool on : {false, true}) {
        Send(CMD_SOFT_PAINT, kMarker);
        EXPECT_EQ(isBuffered(), on);
        Send(CMD_TOPMOST, on ? kMarker : 0);
        EXPECT_EQ(isOnTop(), !on);
    }
}

TEST_F(MainDialog, FollowsTheDarkModeOfWindowsUnlessForbidden) {
    constexpr const wchar_t* kKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    const auto setLight = [&](DWORD light) {
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
        SendMessageW(dialog_, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    };
    const auto isDark = [&] {
        const auto back =
            static_cast<COLORREF>(SendMessageW(GetDlgItem(dialog_, IDC_LIST), LVM_GETBKCOLOR, 0, 0));
        return GetGValue(back) < 128;
    };
    Start(L"");
    EXPECT_FALSE(isDark());
    setLight(0);
    EXPECT_TRUE(isDark());
    Send(3004, kMarker);
    EXPECT_EQ(ReadSetting(run_, L"Program", L"disable_dark_theme"), 1);
    EXPECT_FALSE(isDark());
    Send(3004, kMarker);
    EXPECT_TRUE(isDark());
    setLight(1);
    EXPECT_FALSE(isDark());
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, L"AppsUseLightTheme");
}

TEST_F(MainDialog, NoticesAClockThatJumps) {
    Start(L"");
    // Held up for three seconds the program sees the clock jump, as after sleep.
    const UniqueKernelObject thread(
        OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(dialog_, nullptr)));
    SuspendThread(thread.Get());
    Linger(4200);
    ResumeThread(thread.Get());
    const HWND status = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    ASSERT_TRUE(status);
    EXPECT_TRUE(WaitFor([&] { return LOWORD(SendMessageW(status, SB_GETTEXTLENGTHW, 3, 0)) == 7; }));
}

}  // namespace
}  // namespace verbatix::test
