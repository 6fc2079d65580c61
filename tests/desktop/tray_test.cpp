// The icon in the notification area, by the messages that the shell sends for it.
#include "desktop/program_window.h"
#include "support/keys.h"

namespace verbatix::test {
namespace {

class Tray : public ProgramWindow {
  protected:
    void Click(UINT button) const { PostMessageW(run_.Frame(), WM_TRAY_CALLBACK, IDI_VERBATIX, button); }
    // Opens the icon's menu and chooses the row, the first one being 1.
    void Choose(int row) const {
        Click(WM_RBUTTONDOWN);
        HWND menu = nullptr;
        ASSERT_TRUE(WaitFor([&] {
            menu = FindWindowW(L"#32768", nullptr);
            return menu && IsWindowVisible(menu) && GetForegroundWindow() == dialog_;
        }));
        for (int i = 0; i < row; ++i) PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RETURN);
        ASSERT_TRUE(WaitFor([&] { return !FindWindowW(L"#32768", nullptr); }));
    }
};

constexpr int kShow = 1;
constexpr int kNew = 2;
constexpr int kPause = 3;
constexpr int kExit = 5;

TEST_F(Tray, TheMenuShowsAddsAndEnds) {
    Start({{L"Ctrl+Q", L"one"}}, L"", L"-bg");
    Choose(kShow);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog_); }));
    SendMessageW(dialog_, WM_COMMAND, 5, 0);
    ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(dialog_); })) << "into the tray";
    Click(WM_LBUTTONDOWN);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog_) && GetForegroundWindow() == dialog_; }));
    Choose(kNew);
    EXPECT_TRUE(FileGets(L"listcmd_count=2"));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    Choose(kExit);
    EXPECT_EQ(run_.Program().WaitForExit(), 1U);
}

TEST_F(Tray, PausedHotkeysStayPausedWhenTheHookIsRenewed) {
    Start({{L"Ctrl-Alt+W", L"text w"}}, L"", L"-bg");
    Choose(kPause);
    SendMessageW(dialog_, WM_TIMER, TIMER_REINSTALL_HOOK, 0);
    {
        const Target target;
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
        Linger(500);
        EXPECT_EQ(target.Text(), L"");
    }
    Choose(kPause);
    const Target target;
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text w"; }));
}

}  // namespace
}  // namespace verbatix::test
