// The main window of the running program: commands by number, the ways out, its place and its looks.
#include <functional>

#include "app/language_archive.h"
#include "base/access_letters.h"
#include "desktop/program_window.h"
#include "ui/window/menu_bar.h"

namespace verbatix::test {
namespace {

class MainDialog : public ProgramWindow {
  protected:
    void Start(const wchar_t* programLines) {
        ProgramWindow::Start({{L"Ctrl+Q", L"text q", L"Label/q"}, {L"Alt-Gr+F5", L"text f"}}, programLines);
        ASSERT_TRUE(Shows(true));
    }
    void Send(WPARAM id, LPARAM lParam) const { SendMessageW(dialog_, WM_COMMAND, id, lParam); }
};

TEST_F(MainDialog, TheMarkerTellsTheTablesApartAndOptionsTheWaysOut) {
    Start(L"tray_if_minimize=0\r\ntray_if_close=1\r\ntray_info=0\r\n");
    ASSERT_TRUE(ComesToFront());
    SendMessageW(dialog_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(IsWindowVisible(dialog_));
    EXPECT_FALSE(IsIconic(dialog_));
    Send(5, kMarker);
    EXPECT_EQ(ReadNumber(L"tray_if_minimize"), 1);
    EXPECT_TRUE(IsWindowVisible(dialog_));
    ASSERT_TRUE(WaitFor([&] { return run_.ChangeTrayIcon(NIM_MODIFY); }));
    SendMessageW(dialog_, WM_SYSCOMMAND, SC_MINIMIZE, 0);
    EXPECT_TRUE(Shows(false));
    EXPECT_FALSE(IsIconic(dialog_));
    EXPECT_TRUE(WaitFor([&] { return ReadNumber(L"tray_info") == 1; })) << "the first time with a balloon";
    ClickTray(WM_LBUTTONDOWN);
    ASSERT_TRUE(Shows(true));
    Send(5, 0);
    EXPECT_TRUE(Shows(false));
    EXPECT_EQ(ReadNumber(L"tray_if_minimize"), 1);
    // The rows of the options are tried one by one where their table is.
    for (const LPARAM marker : {LPARAM{0}, kMarker}) {
        const int before = ReadNumber(L"use_date_format");
        Send(1112, marker);
        EXPECT_EQ(ReadNumber(L"use_date_format") == before, marker == 0);
    }
    ClickTray(WM_LBUTTONDOWN);
    ASSERT_TRUE(Shows(true));
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Shows(false));
    Send(2, kMarker);
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_EQ(run_.Program().WaitForExit(), 1U);
    EXPECT_TRUE(FileHolds(L";x,y,w,h,SW"));
}

TEST_F(MainDialog, EveryMenuRowAndFieldHasALetterOfItsOwn) {
    Start(L"");
    const auto takeLetter = [](std::wstring& taken, const std::wstring& row) {
        const wchar_t letter = AccessLetter(row);
        EXPECT_TRUE(letter && taken.find(letter) == std::wstring::npos)
            << ::testing::PrintToString(row) << " beside " << ::testing::PrintToString(taken);
        taken += letter;
    };
    std::function<std::wstring(HMENU)> walk = [&](HMENU menu) {
        std::wstring taken;
        for (int row = 0; row < GetMenuItemCount(menu); ++row) {
            wchar_t text[200] = {};
            if (const HMENU submenu = GetSubMenu(menu, row)) walk(submenu);
            GetMenuStringW(menu, static_cast<UINT>(row), text, 200, MF_BYPOSITION);
            if (*text) takeLetter(taken, text);
        }
        return taken;
    };
    for (const WPARAM language : {0U, 1U}) {
        Send(CMD_LANGUAGE_FIRST + language, kMarker);
        // One like the program's own, which is not to be read from here.
        ASSERT_TRUE(LoadLanguageArchive(static_cast<int>(language)));
        const HMENU bar = CreateMenuBar();
        std::wstring taken = walk(bar);
        DestroyMenu(bar);
        EXPECT_EQ(taken.size(), 5U);
        // What the menu bar has opens no field: of the two Windows would take the field.
        for (HWND child = GetWindow(dialog_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            const std::wstring caption = WindowText(child);
            if (AccessLetter(caption) && GetDlgCtrlID(child) != IDC_TREE_CAPTION)
                takeLetter(taken, caption);
        }
    }
}

TEST_F(MainDialog, HidingTellsTheUserOnce) {
    Start(L"hide_if_close=1\r\nhide_info=0\r\n");
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    const HWND notice = run_.Program().WaitForVisibleWindow(L"#32770", L"Verbatix keeps running");
    ASSERT_TRUE(notice);
    SendMessageW(notice, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(Shows(false));
    EXPECT_EQ(ReadNumber(L"hide_info"), 1);
    // Shown by starting the program again, as a user would; then hidden without a word.
    ProgramRun second;
    second.StartPlain(L"");
    EXPECT_EQ(second.Program().WaitForExit(20000), kSecondCopyExitCode);
    ASSERT_TRUE(Shows(true));
    PostMessageW(dialog_, WM_CLOSE, 0, 0);
    EXPECT_TRUE(Shows(false));
}

TEST_F(MainDialog, ResizesItsListAndKeepsItsPlaceOnTheScreen) {
    Start(L"WinRC=40;50;840;650;1;x,y,w,h,SW\r\n");
    RECT place;
    GetWindowRect(dialog_, &place);
    const RECT stored = {40, 50, 840, 650};
    EXPECT_TRUE(EqualRect(&place, &stored));
    MoveWindow(dialog_, 100, 60, 900, 500, TRUE);
    RECT client;
    RECT list;
    GetClientRect(dialog_, &client);
    GetWindowRect(list_, &list);
    RECT text;
    GetWindowRect(Control(IDC_TEXT), &text);
    EXPECT_EQ(list.left < text.left, list.right < text.left) << "side by side, as wide as the window is";
    LRESULT columns = 0;
    for (const WPARAM column : {0U, 1U, 2U}) columns += SendMessageW(list_, LVM_GETCOLUMNWIDTH, column, 0);
    GetClientRect(list_, &list);
    EXPECT_EQ(columns, list.right);
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"WinRC=100;60;1000;560;1;x,y,w,h,SW"));
    // Maximised, and then not shown in a whole run.
    const wchar_t* const maximised = L"WinRC=100;60;1000;560;3;x,y,w,h,SW\r\n";
    ProgramWindow::Start({}, maximised, L"-bg");
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(maximised));
    // On a screen of another resolution, of which Windows tells on the way there: it is the size stored
    // there. A change that the user sees follows the resolution.
    ProgramWindow::Start({}, L"WinRC=40;50;840;650;1;x,y,w,h,SW\r\n", L"-bg");
    const auto width = [&] {
        GetWindowRect(dialog_, &place);
        return place.right - place.left;
    };
    SendMessageW(dialog_, WM_DPICHANGED, MAKEWPARAM(144, 144), 0);
    EXPECT_EQ(width(), 800);
    ClickTray(WM_LBUTTONDOWN);
    ASSERT_TRUE(Shows(true) && ComesToFront());
    EXPECT_EQ(width(), 800);
    PostMessageW(dialog_, WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
    EXPECT_TRUE(WaitFor([&] { return width() == 1067; })) << width();
    EXPECT_EQ(run_.Exit(), 1);
    // On a screen that is gone.
    Start(L"WinRC=9000;9000;9800;9600;1;x,y,w,h,SW\r\n");
    GetWindowRect(dialog_, &place);
    EXPECT_TRUE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL));
    EXPECT_GE(place.top, 0);
}

TEST_F(MainDialog, SplitterAndColumnsComeBack) {
    const auto listSize = [&](bool wide) {
        MoveWindow(dialog_, 20, 20, wide ? 1100 : 480, 600, TRUE);
        RECT list;
        GetWindowRect(list_, &list);
        return static_cast<int>(wide ? list.right - list.left : list.bottom - list.top);
    };
    const auto dragSplitter = [&](int x, int y) {
        const HWND bar = Control(IDC_SPLITTER);
        SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
        SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + x, 2 + y));
        SendMessageW(bar, WM_LBUTTONUP, 0, 0);
    };
    Start(L"");
    ASSERT_TRUE(ComesToFront());  // which gives the keyboard to the list
    int sizes[2];
    for (const bool wide : {false, true}) {
        const int before = listSize(wide);
        dragSplitter(30, 30);
        Send(CMD_FOCUS_SPLITTER, kMarker);
        EXPECT_TRUE(HasKeyboard(IDC_SPLITTER));
        PressKey(IDC_SPLITTER, wide ? VK_LEFT : VK_UP);
        PressKey(IDC_SPLITTER, VK_RETURN);
        EXPECT_TRUE(WaitFor([&] { return !HasKeyboard(IDC_SPLITTER); }));
        sizes[wide] = listSize(wide);
        EXPECT_LT(sizes[wide], before + 30);
        EXPECT_GT(sizes[wide], before);
    }
    SendMessageW(list_, LVM_SETCOLUMNWIDTH, 0, 77);
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"col_hotkey=77"));
    ASSERT_TRUE(run_.Start());
    FindControls();
    for (const bool wide : {false, true}) EXPECT_EQ(listSize(wide), sizes[wide]);
    EXPECT_EQ(SendMessageW(list_, LVM_GETCOLUMNWIDTH, 0, 0), 77);
    SendMessageW(Control(IDC_SPLITTER), WM_LBUTTONDBLCLK, 0, 0);
    EXPECT_LT(listSize(true), sizes[1]);
}

TEST_F(MainDialog, LooksAsItsMenuAndWindowsSayAndNoticesAClockThatJumps) {
    Start(L"size=77\r\nshow_uses=1\r\n");
    const auto rowsInSight = [&] { return SendMessageW(list_, LVM_GETCOUNTPERPAGE, 0, 0); };
    const auto isBuffered = [&] {
        return (SendMessageW(list_, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_DOUBLEBUFFER) != 0;
    };
    const auto isOnTop = [&] { return (GetWindowLongPtrW(dialog_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    const auto usesWidth = [&] { return SendMessageW(list_, LVM_GETCOLUMNWIDTH, 4, 0); };
    LRESULT before = rowsInSight() + 1;
    LRESULT narrower = 0;
    for (const WPARAM size : {0U, 1U, 2U}) {
        Send(CMD_SIZE_FIRST + size, kMarker);
        EXPECT_EQ(ReadNumber(L"size"), static_cast<int>(size));
        EXPECT_LT(rowsInSight(), before);
        before = rowsInSight();
        EXPECT_GT(usesWidth(), narrower);
        narrower = usesWidth();
    }
    Send(CMD_FIXED_WIDTH, kMarker);
    EXPECT_EQ(ReadNumber(L"fixed_width"), 1);
    const auto pictures = [&] { return SendMessageW(list_, LVM_GETIMAGELIST, LVSIL_SMALL, 0); };
    EXPECT_EQ(pictures(), SendMessageW(tree_, TVM_GETIMAGELIST, TVSIL_NORMAL, 0));
    const LRESULT ofWindows = pictures();
    Send(CMD_SYSTEM_ICONS, kMarker);
    EXPECT_TRUE(pictures() && pictures() != ofWindows);
    Send(CMD_SIZE_FIRST, kMarker);
    // On its way to a screen of twice the resolution, and with too little room there.
    const auto rowsBefore = rowsInSight();
    SendMessageW(dialog_, WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
    RECT work;
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    RECT place;
    GetWindowRect(dialog_, &place);
    EXPECT_LE(place.right - place.left, work.right - work.left);
    EXPECT_LE(place.bottom - place.top, work.bottom - work.top);
    EXPECT_LT(rowsInSight(), rowsBefore);
    EXPECT_EQ(usesWidth(), 110);
    SendMessageW(dialog_, WM_DPICHANGED, MAKEWPARAM(96, 96), 0);
    EXPECT_EQ(usesWidth(), 55);

    for (const bool on : {false, true}) {
        Send(CMD_SOFT_PAINT, kMarker);
        EXPECT_EQ(isBuffered(), on);
        Send(CMD_TOPMOST, on ? kMarker : 0);
        EXPECT_EQ(isOnTop(), !on);
    }

    constexpr const wchar_t* kKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    const auto setLight = [&](DWORD light) {
        RegSetKeyValueW(HKEY_CURRENT_USER, kKey, L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
        SendMessageW(dialog_, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"ImmersiveColorSet"));
    };
    const auto isDark = [&] {
        return GetGValue(static_cast<COLORREF>(SendMessageW(list_, LVM_GETBKCOLOR, 0, 0))) < 128;
    };
    // What stands on the screen, all over the window: nothing light but letters and pictures is left.
    struct Part {
        const char* name;
        HWND window;
        POINT dot;
    };
    const HWND bar = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    const Part parts[] = {{"list", list_, {60, 150}},
                          {"title", FindWindowExW(list_, nullptr, WC_HEADERW, nullptr), {60, 3}},
                          {"button", Control(CMD_NEW_ENTRY), {6, 6}},
                          {"hotkey", Control(IDC_KEY), {4, 4}},
                          {"text", Control(IDC_TEXT), {60, 60}},
                          {"dialog", dialog_, {2, 60}},
                          {"status bar", bar, {200, 4}},
                          {"menu bar", dialog_, {300, -8}}};
    const auto brightParts = [&] {
        std::string bright;
        for (const Part& part : parts) {
            POINT dot = part.dot;
            ClientToScreen(part.window, &dot);
            const HDC screen = GetDC(nullptr);
            if (GetGValue(GetPixel(screen, dot.x, dot.y)) >= 100) bright += std::string(part.name) + ' ';
            ReleaseDC(nullptr, screen);
        }
        return bright;
    };
    EXPECT_FALSE(isDark());
    setLight(0);
    EXPECT_TRUE(isDark());
    ShowWindow(dialog_, SW_SHOW);
    SetForegroundWindow(dialog_);
    EXPECT_TRUE(WaitFor([&] { return brightParts().empty(); })) << brightParts();
    Send(3004, kMarker);
    EXPECT_EQ(ReadNumber(L"disable_dark_theme"), 1);
    EXPECT_FALSE(isDark());
    Send(3004, kMarker);
    EXPECT_TRUE(isDark());
    setLight(1);
    EXPECT_FALSE(isDark());
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kKey, L"AppsUseLightTheme");

    // Held up for three seconds the program sees the clock jump, as after sleep.
    const UniqueKernelObject thread(
        OpenThread(THREAD_SUSPEND_RESUME, FALSE, GetWindowThreadProcessId(dialog_, nullptr)));
    SuspendThread(thread.Get());
    Linger(3200);
    ResumeThread(thread.Get());
    const HWND status = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    ASSERT_TRUE(status);
    EXPECT_TRUE(WaitFor([&] { return LOWORD(SendMessageW(status, SB_GETTEXTLENGTHW, 3, 0)) == 7; }));
    // What the status bar offers grows with it.
    Send(CMD_DELETE_ENTRY, kMarker);
    const auto linkHeight = [&] {
        RECT link;
        GetWindowRect(GetDlgItem(status, IDC_OFFER_LINK), &link);
        return link.bottom - link.top;
    };
    const LONG heightBefore = linkHeight();
    SendMessageW(dialog_, WM_DPICHANGED, MAKEWPARAM(192, 192), 0);
    EXPECT_GT(linkHeight(), heightBefore);
}

}  // namespace
}  // namespace verbatix::test
