// The icon in the notification area, by the messages that the shell sends for it.
#include "desktop/program_window.h"
#include "support/keys.h"

namespace verbatix::test {
namespace {

// Debug lines of every process, as a debug-output viewer gets them.
class DebugOutput {
  public:
    DebugOutput()
        : ready_(CreateEventW(nullptr, FALSE, TRUE, L"DBWIN_BUFFER_READY")),
          filled_(CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY")),
          mapping_(
              CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kSize, L"DBWIN_BUFFER")),
          buffer_(static_cast<const char*>(MapViewOfFile(mapping_.Get(), FILE_MAP_READ, 0, 0, kSize))) {}
    ~DebugOutput() { UnmapViewOfFile(buffer_); }
    DebugOutput(const DebugOutput&) = delete;
    DebugOutput& operator=(const DebugOutput&) = delete;

    // Waits for that line.
    bool Gets(std::string_view line) {
        return WaitFor([&] {
            bool found = false;
            while (WaitForSingleObject(filled_.Get(), 0) == WAIT_OBJECT_0) {
                found |= std::string_view(buffer_ + sizeof(DWORD)) == line;
                SetEvent(ready_.Get());
            }
            return found;
        });
    }

  private:
    static constexpr DWORD kSize = 4096;
    UniqueKernelObject ready_;
    UniqueKernelObject filled_;
    UniqueKernelObject mapping_;
    const char* buffer_;
};

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
    DebugOutput output;
    Start({{L"Ctrl-Alt+W", L"text w"}}, L"", L"-bg");
    Choose(kPause);
    PostMessageW(dialog_, WM_TIMER, TIMER_REINSTALL_HOOK, 0);
    EXPECT_TRUE(output.Gets("Reinit Hook\n"));
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
