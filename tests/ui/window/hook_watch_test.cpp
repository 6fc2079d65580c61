// The main window with its hook in this process, so that the hook can be dropped behind its back as Windows
// does it: the handle stays, and no key comes any more.
#include "ui/window/hook_watch.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <wtsapi32.h>

#include <vector>

#include "base/language.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "store/settings_path.h"
#include "support/folder.h"
#include "support/keys.h"
#include "support/message_thread.h"
#include "support/program_run.h"
#include "support/wait.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/state/timed_pause.h"
#include "ui/window/main_procedure.h"

namespace verbatix::test {
namespace {

class HookWatchTest : public ::testing::Test {
  protected:
    HookWatchTest() {
        SetLanguageTexts({{1058, L"active"},
                          {1059, L"paused"},
                          {1060, L"refused"},
                          {1380, L"restored {1}"},
                          {1720, L"until {1}"}},
                         {});
        settingsPath = folder_.File(L"list.ini");
        EXPECT_TRUE(WriteBytes(settingsPath, Utf16File(SettingsText({{L"Ctrl-Alt+W", L"text w"}}))));
        thread.Run([] {
            CreateMainWindow(GetModuleHandleW(nullptr));
            KillTimer(mainWindow.window, TIMER_REINSTALL_HOOK);  // which is due in the middle of a test
        });
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
        EXPECT_TRUE(TipBegins(L"Verbatix\n" + std::wstring(text)));
        return text;
    }
    bool TipBegins(const std::wstring& text) {
        return WaitFor([&] {
            bool begins = false;
            thread.Run([&] { begins = trayIcon.tip.starts_with(text); });
            return begins;
        });
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
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
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
    thread.Run(PauseHotkeysForAnHour);
    EXPECT_TRUE(TipBegins(L"Verbatix\nuntil "));
    EXPECT_EQ(trayIcon.look.mark, TrayMark::kPaused);
    thread.Run([] { PauseHotkeys(false); });
    EXPECT_TRUE(WaitFor([] { return trayIcon.look.mark == TrayMark::kNone; }));
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

TEST(TimedPause, EndsByEitherClock) {
    constexpr PauseEnd kEnd = {5'000'000, 90'000};  // an hour after tick 1'400'000, second 86'400
    const struct {
        ULONGLONG tick;
        std::int64_t time;
        bool isOver;
        std::int64_t shown;
    } rows[] = {
        {1'400'000, 86'400, false, 90'000}, {4'999'999, 89'999, false, 90'000},
        {5'000'000, 89'990, true, 89'990},  {1'400'500, 90'000, true, 90'000},    // put forward, or slept
        {2'000'000, 80'000, false, 83'000}, {1'400'000, 86'390, false, 90'000}};  // put back: far, a bit
    for (const auto& [tick, time, isOver, shown] : rows) {
        EXPECT_EQ(IsPauseOver(kEnd, tick, time), isOver) << tick << " " << time;
        EXPECT_EQ(ShownPauseEnd(kEnd, tick, time), shown) << tick << " " << time;
    }
}

TEST(TrayPicture, AMarkStandsOutOnAnyBar) {
    constexpr std::uint32_t kGreen = 0xff00c000;
    for (const int side : {16, 20, 32}) {
        const auto at = [side](double part) { return static_cast<int>(part * side); };
        std::vector<std::uint32_t> before(static_cast<std::size_t>(side * side), kGreen);
        std::vector<std::vector<std::uint32_t>> pictures = {before};
        for (const auto mark : {TrayMark::kPaused, TrayMark::kOutOfReach, TrayMark::kFailing}) {
            for (const bool isBarLight : {false, true}) {
                std::vector<std::uint32_t> pixels = before;
                DrawMark(pixels, {mark, isBarLight, side});
                const auto pixel = [&](double x, double y) {
                    return pixels[static_cast<std::size_t>(at(y) * side + at(x))];
                };
                EXPECT_EQ(pixel(0.05, 0.05) == kGreen, mark != TrayMark::kPaused) << "grey when paused";
                EXPECT_EQ(pixel(0.69, 0.75) >> 24, 0xffU) << "in the middle";
                EXPECT_LT(pixel(0.6875, 0.33) >> 24, 0xffU) << "cut away around the mark";
                if (isBarLight && mark != TrayMark::kPaused) continue;
                for (const auto& other : pictures) EXPECT_NE(pixels, other) << side;
                pictures.push_back(pixels);
            }
        }
    }
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
