// The icon in the notification area, by the messages that the shell sends for it.
#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

class Tray : public ProgramWindow {
  protected:
    // Opens the icon's menu and chooses the row, the first one being 1.
    void Choose(int row) const {
        ClickTray(WM_RBUTTONDOWN);
        ASSERT_TRUE(MenuIsOpen(true) && ComesToFront());
        for (int i = 0; i < row; ++i) PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RETURN);
        ASSERT_TRUE(MenuIsOpen(false));
    }
};

constexpr int kShow = 1;
constexpr int kNew = 2;
constexpr int kPause = 3;
constexpr int kExit = 5;

TEST_F(Tray, ItsMenuPausesShowsAddsAndEnds) {
    Start({{L"Ctrl-Alt+W", L"text w"}}, L"", L"-bg");
    Choose(kPause);
    SendMessageW(dialog_, WM_TIMER, TIMER_REINSTALL_HOOK, 0);
    for (const bool paused : {true, false}) {
        if (!paused) Choose(kPause);
        const Target target;
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        if (paused) Linger(500);
        EXPECT_TRUE(WaitFor([&] { return target.Text() == (paused ? L"" : L"text w"); }));
        if (!paused) break;
        // The hotkey field works all the same, and they stay paused.
        Choose(kShow);
        ASSERT_TRUE(ComesToFront());
        SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(IDC_HOTKEY)), TRUE);
        ASSERT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
        PlayStroke({VK_LCONTROL}, 'W');
        EXPECT_TRUE(FileGets(L"Ctrl+W=text w"));
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        EXPECT_TRUE(FileGets(L"Ctrl-Alt+W=text w"));
        ASSERT_TRUE(target.Activate() && SettlesInFront(target.Window()));
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        Linger(500);
        EXPECT_EQ(target.Text(), L"");
    }
    Choose(kShow);
    EXPECT_TRUE(Shows(true));
    SendMessageW(dialog_, WM_COMMAND, 5, 0);
    ASSERT_TRUE(Shows(false)) << "into the tray";
    ClickTray(WM_LBUTTONDOWN);
    EXPECT_TRUE(Shows(true) && ComesToFront());
    Choose(kNew);
    EXPECT_TRUE(FileGets(L"listcmd_count=2"));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    Choose(kExit);
    EXPECT_EQ(run_.Program().WaitForExit(), 1U);
}

}  // namespace
}  // namespace verbatix::test
