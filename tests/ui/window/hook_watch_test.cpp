// The main window with its hook in this process, so that the hook can be dropped behind its back as Windows
// does it: the handle stays, and no key comes any more.
#include "ui/window/hook_watch.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <wtsapi32.h>

#include "base/language.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "store/settings_path.h"
#include "support/folder.h"
#include "support/keys.h"
#include "support/message_thread.h"
#include "support/program_run.h"
#include "support/wait.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/window/main_procedure.h"

namespace verbatix::test {
namespace {

class HookWatchTest : public ::testing::Test {
  protected:
    HookWatchTest() {
        SetLanguageTexts(
            {{1058, L"active"}, {1059, L"paused"}, {1060, L"refused"}, {1380, L"restored {1}"}}, {});
        settingsPath = folder_.File(L"list.ini");
        EXPECT_TRUE(WriteBytes(settingsPath, Utf16File(SettingsText({{L"Ctrl-Alt+W", L"text w"}}))));
        thread.Run([] { CreateMainWindow(GetModuleHandleW(nullptr)); });
    }
    ~HookWatchTest() override {
        thread.Run([] {
            RemoveKeyboardHook();
            DestroyWindow(mainWindow.window);
            mainWindow.window = nullptr;
        });
        SetLanguageTexts({}, {});
    }

    void DropHook() {
        thread.Run([] { UnhookWindowsHookEx(keyboardHook.handle.Get()); });
    }
    std::wstring State() {
        wchar_t text[200] = {};
        thread.Run(
            [&] { SendMessageW(mainWindow.statusBar, SB_GETTEXTW, 1, reinterpret_cast<LPARAM>(text)); });
        EXPECT_TRUE(WaitFor([&] { return trayIcon.tip == std::wstring(L"Verbatix\n") + text; }));
        return text;
    }

    MessageThread thread;

  private:
    Folder folder_;
};

TEST_F(HookWatchTest, ADroppedHookIsBackInTimeForTheHotkey) {
    const Target target;
    EXPECT_EQ(State(), L"active");
    for (const wchar_t* state : {L"restored 1", L"restored 2"}) {
        target.SetText(L"");
        DropHook();
        Linger(600);  // a key within half a second of the last one is not told from a late one
        const unsigned installs = keyboardHook.installCount;
        HoldDown(VK_LCONTROL);
        EXPECT_TRUE(WaitFor([=] { return keyboardHook.installCount > installs; }));
        PlayStroke({VK_LMENU}, 'W');
        LetKeyUp(VK_LCONTROL);
        EXPECT_TRUE(WaitFor([&] { return target.Text() == L"text w"; })) << target.Text();
        EXPECT_EQ(State(), state);
    }
    // A hook that works is left alone, and one that the user has paused.
    const unsigned installs = keyboardHook.installCount;
    const auto play = [] {
        Linger(600);
        PlayStroke({}, VK_F23);
    };
    play();
    thread.Run(ToggleKeyboardHook);
    play();
    thread.Run(UpdateStatusBar);
    EXPECT_EQ(State(), L"paused");
    EXPECT_EQ(keyboardHook.installCount, installs);
    thread.Run(ToggleKeyboardHook);
}

TEST_F(HookWatchTest, TheHookIsInstalledAnewAfterAnAbsence) {
    const struct {
        UINT message;
        WPARAM what;
        bool renews;
    } rows[] = {
        {WM_WTSSESSION_CHANGE, WTS_SESSION_LOCK, false},   {WM_WTSSESSION_CHANGE, WTS_SESSION_UNLOCK, true},
        {WM_WTSSESSION_CHANGE, WTS_CONSOLE_CONNECT, true}, {WM_WTSSESSION_CHANGE, WTS_REMOTE_CONNECT, true},
        {WM_POWERBROADCAST, PBT_APMSUSPEND, false},        {WM_POWERBROADCAST, PBT_APMRESUMESUSPEND, true},
        {WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, true}};
    for (const auto& [message, what, renews] : rows) {
        const unsigned before = keyboardHook.installCount;
        SendMessageW(mainWindow.window, message, what, 0);
        EXPECT_EQ(keyboardHook.installCount - before, renews ? 1U : 0U) << message << " " << what;
    }
    thread.Run([] {
        RemoveKeyboardHook();
        UpdateStatusBar();
    });
    EXPECT_EQ(State(), L"refused");
}

TEST(Integrity, OfAProgramWithMoreRightsIsOutOfReach) {
    constexpr DWORD kMedium = 0x2000;
    constexpr DWORD kHigh = 0x3000;
    EXPECT_TRUE(IsOutOfReach(kMedium, kHigh));
    EXPECT_FALSE(IsOutOfReach(kMedium, kMedium));
    EXPECT_FALSE(IsOutOfReach(kHigh, kMedium));
    EXPECT_TRUE(IsOutOfReach(kMedium, {})) << "it keeps its token to itself";
    EXPECT_FALSE(IsOutOfReach({}, kHigh));
    const Target target;
    EXPECT_FALSE(KeepsKeysFromUs(target.Window()));
    EXPECT_FALSE(KeepsKeysFromUs(nullptr));
}

}  // namespace
}  // namespace verbatix::test
