// The icon in the notification area, by the messages that the shell sends for it.
#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

class Tray : public ProgramWindow {
  protected:
    // Opens the icon's menu and chooses the row, the first one being 1, the last one -1.
    void Choose(int row) const {
        ClickTray(WM_RBUTTONDOWN);
        ASSERT_TRUE(MenuIsOpen(true) && ComesToFront());
        // The bench takes a modifier that the hook once saw down for held until the thread gets its
        // release, and Enter with Ctrl chooses nothing.
        LetKeyUp(VK_LCONTROL);
        for (int i = 0; i < std::abs(row); ++i) PlayStroke({}, row > 0 ? VK_DOWN : VK_UP);
        PlayStroke({}, VK_RETURN);
        ASSERT_TRUE(MenuIsOpen(false));
    }
    // The same with the target in front, and noticed there.
    void ChooseOver(const Target& target, int row) const {
        ASSERT_TRUE(target.Activate());
        SendMessageW(dialog_, WM_TIMER, TIMER_CLOCK_JUMP, 0);
        Choose(row);
    }
    void Press(const Target& target, std::initializer_list<BYTE> held, BYTE key) const {
        ASSERT_TRUE(target.Activate() && SettlesInFront(target.Window()));
        PlayStroke(held, key);
    }
    // Where the icons are on the task bar, as it looks now: the icon's picture is in another program.
    static std::vector<COLORREF> Picture() {
        constexpr int kSide = 40;
        RECT bar = {};
        GetWindowRect(FindWindowW(L"Shell_TrayWnd", nullptr), &bar);
        const HDC screen = GetDC(nullptr);
        std::vector<COLORREF> pixels;
        for (int place = 0; place < kSide * kSide; ++place)
            pixels.push_back(GetPixel(screen, static_cast<int>(bar.right) - 1 - place % kSide,
                                      static_cast<int>(bar.bottom) - 1 - place / kSide));
        ReleaseDC(nullptr, screen);
        return pixels;
    }
};

constexpr int kShow = 1;
constexpr int kNew = 2;
constexpr int kFirstUsed = 3;
constexpr int kPause = 3;  // and those below: where no entry was used yet
constexpr int kHour = 4;
constexpr int kProgram = 5;
constexpr int kExit = -1;

TEST_F(Tray, ItsMenuPausesShowsAddsAndEnds) {
    Start({{L"Ctrl-Alt+W", L"text w"}}, L"", L"-bg");
    Choose(kPause);
    SendMessageW(dialog_, WM_TIMER, TIMER_REINSTALL_HOOK, 0);
    for (const bool paused : {true, false}) {
        if (!paused) Choose(kPause);
        const Target target;
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        if (paused) Linger(500);
        EXPECT_TRUE(WaitFor([&] { return target.Text() == (paused ? L"" : L"text w"); }))
            << run_.Diagnostics();
        if (!paused) break;
        // The hotkey field works all the same, and they stay paused.
        Choose(kShow);
        ASSERT_TRUE(Shows(true) && SettlesInFront(dialog_));
        SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_HOTKEY)), TRUE);
        ASSERT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
        HoldAndLetGo({VK_LCONTROL, 'W'}, {'W', VK_LCONTROL});
        EXPECT_TRUE(FileGets(L"Ctrl+W=text w"));
        HoldAndLetGo({VK_LCONTROL, VK_LMENU, 'W'}, {'W', VK_LMENU, VK_LCONTROL});
        EXPECT_TRUE(FileGets(L"Ctrl-Alt+W=text w"));
        ASSERT_TRUE(target.Activate() && SettlesInFront(target.Window()));
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        Linger(500);
        EXPECT_EQ(target.Text(), L"");
    }
    SendMessageW(dialog_, WM_COMMAND, 5, 0);
    ASSERT_TRUE(Shows(false)) << "into the tray";
    Choose(kShow);
    EXPECT_TRUE(Shows(true));
    SendMessageW(dialog_, WM_COMMAND, 5, 0);
    ASSERT_TRUE(Shows(false));
    ClickTray(WM_LBUTTONDOWN);
    EXPECT_TRUE(Shows(true) && ComesToFront());
    Choose(kNew);
    EXPECT_TRUE(FileGets(L"listcmd_count=2"));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    Choose(kExit);
    EXPECT_EQ(run_.Program().WaitForExit(), 1U);
}

TEST_F(Tray, APauseIsSeenAndKeepsHotkeysFromOneProgramOrAll) {
    // Whoever gets Ctrl+X cuts what is selected.
    Start({{L"Ctrl+X", L"text x"}}, L"", L"-bg");
    const Target target;
    const auto pressBecomes = [&](std::wstring_view text) {
        target.SetText(L"ab");
        SendMessageW(target.Edit(), EM_SETSEL, 0, -1);
        Press(target, {VK_LCONTROL}, 'X');
        return WaitFor([&] { return target.Text() == text; });
    };
    SendMessageW(dialog_, WM_TIMER, TIMER_CLOCK_JUMP, 0);
    // The icon that is blue: until the task bar has drawn it there is none.
    std::vector<COLORREF> active;
    const auto isBlue = [](COLORREF pixel) { return GetBValue(pixel) > GetRValue(pixel) + 100; };
    ASSERT_TRUE(WaitFor([&] {
        active = Picture();
        return std::count_if(active.begin(), active.end(), isBlue) > 30 && Picture() == active;
    }));
    // But for the soft edge, which the task bar may draw over the one before.
    const auto isActive = [&] {
        const std::vector<COLORREF> now = Picture();
        int different = 0;
        for (std::size_t i = 0; i < now.size(); ++i) different += now[i] != active[i];
        return different < 30;
    };
    ChooseOver(target, kHour);
    EXPECT_TRUE(WaitFor([&] { return !isActive(); }));
    EXPECT_TRUE(pressBecomes(L"")) << target.Text();
    ChooseOver(target, kHour);
    EXPECT_TRUE(WaitFor(isActive));
    ChooseOver(target, kProgram);
    EXPECT_TRUE(FileGets(L"[paused_programs]\r\nprograms=target_window.exe"));
    EXPECT_TRUE(pressBecomes(L"")) << target.Text();
    EXPECT_TRUE(WaitFor([&] { return !isActive(); }));
    ChooseOver(target, kProgram);
    EXPECT_TRUE(WaitFor([&] { return !FileHolds(L"target_window"); }));
    EXPECT_TRUE(pressBecomes(L"text x")) << target.Text();
    EXPECT_TRUE(WaitFor(isActive));
    EXPECT_EQ(run_.Exit(), 1);
}

TEST_F(Tray, UsesAreCountedApartFromTheListAndTheLastOnesOffered) {
    Start({{L"Ctrl-Alt+W", L"text w"}, {L"Ctrl-Alt+Q", L"text q"}, {L"Ctrl-Alt+E", L"text e"}},
          L"show_uses=1\r\n", L"-bg");
    const std::wstring before = File();
    const auto uses = [&] { return ReadBytes(run_.SettingsFile() + L".uses"); };
    const Target target;
    Press(target, {VK_LCONTROL, VK_LMENU}, 'W');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text w"; }));
    ChooseOver(target, kFirstUsed);
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text wtext w"; })) << target.Text();
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_NE(uses().find(" 2 "), std::string::npos) << uses();
    const auto listOf = [](const std::wstring& file) { return file.substr(file.find(L"[list_text]")); };
    EXPECT_EQ(listOf(File()), listOf(before));
    // After a restart the count goes on, and the sorted column shows it.
    ASSERT_TRUE(run_.Start());
    FindControls();
    Menu(CMD_ONLY_UNUSED);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2; }) && Becomes(IDC_TEXT, L"text q"));
    // What was used while nobody saw the list is not in it when the window comes back.
    SendMessageW(dialog_, WM_COMMAND, CMD_SEND_TO_TRAY, 0);
    Press(target, {VK_LCONTROL, VK_LMENU}, 'E');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text wtext wtext e"; })) << target.Text();
    SendMessageW(dialog_, WM_TIMER, TIMER_CLOCK_JUMP, 0);
    ClickTray(WM_LBUTTONDOWN);
    EXPECT_TRUE(Shows(true));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 1; }));
    target.SetText(L"text wtext w");
    Menu(CMD_ONLY_UNUSED);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3; }));
    // An edit takes the count along; Test is no use.
    ASSERT_TRUE(Select(0, IDC_TEXT, L"text w"));
    Type(IDC_TEXT, L"X");
    EXPECT_TRUE(FileGets(L"=Xtext w<E"));
    PostMessageW(dialog_, WM_COMMAND, CMD_TEST_ENTRY, 0);
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text wtext wXtext w"; })) << target.Text();
    Press(target, {VK_LCONTROL, VK_LMENU}, 'W');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text wtext wXtext wXtext w"; })) << target.Text();
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_NE(uses().find(" 3 "), std::string::npos) << uses();
    EXPECT_EQ(uses().find(" 2 "), std::string::npos) << "what the entry was";
}

TEST_F(Tray, ClashesStandTogetherUntilEsc) {
    Start({{L"Ctrl-Alt+W", L"one"}, {L"Ctrl-Alt+A", L"alone"}, {L"Ctrl-Alt+W", L"two"}},
          L"m_show_tree=1\r\n");
    Menu(CMD_CLASHES);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2 && IsWindowVisible(list_); }));
    EXPECT_TRUE(Select(1, IDC_TEXT, L"two"));
    // A search among them ends at what was selected before, and they stay.
    SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_FILTER)), TRUE);
    SetWindowTextW(Control(IDC_FILTER), L"one");
    EXPECT_TRUE(Becomes(IDC_TEXT, L"one"));
    PressKey(IDC_FILTER, VK_ESCAPE);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"two"));
    EXPECT_EQ(Rows(), 2);
    // What was just deleted can be taken back there, before the line that tells of the view, by the
    // keyboard alone.
    const HWND link =
        GetDlgItem(FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr), IDC_OFFER_LINK);
    const auto follow = [&](std::wstring_view name) {
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(link) && WindowText(link) == name; }));
        PostMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(link), TRUE);
        PostMessageW(link, WM_KEYDOWN, VK_RETURN, 0);
    };
    PostMessageW(dialog_, WM_COMMAND, CMD_DELETE_ENTRY, 0);
    EXPECT_TRUE(FileGets(L"text_002=Ctrl-Alt+W=<E<N<D|"));
    follow(L"Undo");
    EXPECT_TRUE(FileGets(L"text_002=Ctrl-Alt+W=two<E<N<D|"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2; })) << Rows() << IsWindowVisible(list_);
    EXPECT_TRUE(Select(0, IDC_TEXT, L"one")) << testing::PrintToString(Text(IDC_TEXT));
    EXPECT_TRUE(Select(1, IDC_TEXT, L"two")) << testing::PrintToString(Text(IDC_TEXT));
    follow(L"Show all");
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3 && IsWindowVisible(tree_); }));
    Menu(CMD_CLASHES);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2 && IsWindowVisible(list_); }));
    PressKey(IDC_LIST, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3 && IsWindowVisible(tree_); }));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"two"));
    EXPECT_EQ(run_.Exit(), 1);
}

}  // namespace
}  // namespace verbatix::test
