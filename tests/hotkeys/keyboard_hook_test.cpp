// The installed hook on its own thread, a user's keys from this one, and another program's window in front.
#include "hotkeys/keyboard_hook.h"

#include <gtest/gtest.h>

#include <atomic>

#include "hotkeys/hotkey_simulation.h"
#include "ids.h"
#include "key_watch.h"
#include "support/folder.h"
#include "support/keys.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using test::KeyWatch;
using test::SeenKey;
using Texts = std::vector<std::wstring>;

std::mutex executedLock;
Texts executed;
void (*whileExecuting)();

void ExecuteEntry(const std::wstring& text) {
    {
        const std::lock_guard lock(executedLock);
        executed.push_back(text + (test::AnyModifierDown() ? L", modifier down" : L""));
    }
    if (whileExecuting) whileExecuting();
}

Texts TakeExecuted() {
    const std::lock_guard lock(executedLock);
    return std::exchange(executed, {});
}

void AllowNextTrigger() {
    keyboardHook.trigger.lastTrigger.reset();
}

class KeyboardHookTest : public testing::Test {
  protected:
    KeyboardHookTest() {
        whileExecuting = nullptr;
        thread.Run([this] {
            keyboardHook.client = {thread.Window(), ExecuteEntry, nullptr};
            InstallKeyboardHook();
        });
    }
    ~KeyboardHookTest() override {
        thread.Run(RemoveKeyboardHook);
        EXPECT_FALSE(test::AnyModifierDown());
    }

    void Add(unsigned key, unsigned modifier, const wchar_t* text) {
        thread.Run([=] { AddHotkey(keyboardHook.tables, key, modifier, text); });
    }

    // A press of its own, not a repeat of the one before.
    void Stroke(const std::vector<BYTE>& held, BYTE key) {
        thread.Run(AllowNextTrigger);
        for (const BYTE modifier : held) test::PressKeyDown(modifier);
        test::PlayStroke({}, key);
        for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier) test::LetKeyUp(*modifier);
    }

    KeyWatch watch;  // installed before the hook, so it sees what the hook passes on
    test::MessageThread thread;
};

// With somebody else's program in front.
class HookAndTargetTest : public KeyboardHookTest {
  protected:
    HookAndTargetTest() : target(test::HelperPath(L"target_window.exe")) {
        window = target.WaitForVisibleWindow(L"VerbatixTestTarget");
        edit = FindWindowExW(window, nullptr, L"EDIT", nullptr);
        SetCursorPos(900, 300);
        EXPECT_TRUE(test::WaitFor([this] { return GetForegroundWindow() == window; }));
        EXPECT_TRUE(ArrivesAfter(L""));
    }

    // Whether the target's text is `expected` once the keys played so far have arrived: a key that no
    // hotkey uses is typed behind them.
    bool ArrivesAfter(const std::wstring& expected) {
        PressAndErase();
        return test::WindowText(edit) == expected;
    }

    void PressAndErase() {
        test::PlayStroke({}, VK_END);
        test::PlayStroke({}, 'Z');
        test::WaitFor([this] { return test::WindowText(edit).ends_with(L"z"); });
        test::PlayStroke({}, VK_BACK);
        test::WaitFor([this] { return !test::WindowText(edit).ends_with(L"z"); });
    }

    test::Process target;
    HWND window = nullptr;
    HWND edit = nullptr;
};

struct Button {
    DWORD down, up;
};
constexpr Button kButtons[] = {{MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
                               {MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP},
                               {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP}};

TEST_F(HookAndTargetTest, EveryModifierCodeTriggersItsEntryWithTheModifiersReleased) {
    const wchar_t* const names[] = {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9"};
    for (unsigned code = 0; code < 10; ++code) Add('Q', code, names[code]);
    struct Case {
        std::vector<BYTE> held;
        const wchar_t* text;
    };
    for (const Case& c : {Case{{VK_LWIN}, L"0"},
                          {{VK_RWIN}, L"1"},
                          {{VK_LCONTROL, VK_LMENU}, L"2"},
                          {{VK_LMENU, VK_LCONTROL}, L"2"},
                          {{VK_RMENU}, L"3"},
                          {{VK_LCONTROL, VK_RMENU}, L"3"},
                          {{VK_LCONTROL}, L"4"},
                          {{VK_LMENU}, L"5"},
                          {{VK_RCONTROL}, L"6, modifier down"}}) {
        // The right Ctrl of code 6 stays down: its release lacks the extended flag, so that the system
        // takes it for the left one's, and only the user's own release counts.
        // The right Ctrl of code 6 stays down: its release lacks the extended flag, so the system takes it
        // for the left one's, and only the user's own release counts.
        Stroke(c.held, 'Q');
        EXPECT_EQ(TakeExecuted(), Texts{c.text});
        EXPECT_FALSE(test::AnyModifierDown()) << c.text;
    }
    EXPECT_TRUE(ArrivesAfter(L""));
    for (unsigned button = 0; button < 3; ++button) {
        mouse_event(kButtons[button].down, 0, 0, 0, 0);
        Stroke({}, 'Q');
        mouse_event(kButtons[button].up, 0, 0, 0, 0);
        EXPECT_EQ(TakeExecuted(), Texts{names[7 + button]});
        EXPECT_FALSE(test::AnyModifierDown()) << button;
    }
}

TEST_F(KeyboardHookTest, OtherStatesOfTheModifiersDoNot) {
    for (const unsigned code : {2U, 3U, 4U, 5U}) Add(VK_F23, code, L"wrong");
    for (const auto& held : std::vector<std::vector<BYTE>>{{},
                                                           {VK_LSHIFT},
                                                           {VK_RCONTROL},
                                                           {VK_LWIN},
                                                           {VK_LCONTROL, VK_LSHIFT},
                                                           {VK_RMENU, VK_RSHIFT},
                                                           {VK_LCONTROL, VK_RCONTROL},
                                                           {VK_LMENU, VK_RMENU},
                                                           {VK_LCONTROL, VK_LMENU, VK_LSHIFT}}) {
        Stroke(held, VK_F23);
        EXPECT_EQ(TakeExecuted(), Texts{}) << held.size();
    }
    mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
    Stroke({VK_LCONTROL}, VK_F23);
    mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    EXPECT_EQ(TakeExecuted(), Texts{});
    Stroke({VK_LCONTROL}, VK_F23);
    EXPECT_EQ(TakeExecuted(), Texts{L"wrong"});
}

TEST_F(KeyboardHookTest, ATriggerSendsItsReleasesAndTheNextEventTheRest) {
    Add(VK_F23, 4, L"text");
    watch.Take();
    Stroke({VK_LCONTROL}, VK_F23);
    // The press is swallowed. Its key goes up, then what is held. The user's key-up that follows is let
    // through behind the back of other hooks, after left Ctrl has been let go once more.
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_LCONTROL, false, 0},
                                                  {VK_F23, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 0}}));
    test::PlayStroke({}, VK_F23);
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_F23, false, 0}, {VK_F23, true, 0}}));
}

TEST_F(HookAndTargetTest, ADisabledHotkeyDoesNotReachTheProgramInFront) {
    Add('I', 4, L"text");
    Add('Q', 8, L"text");
    const auto play = [this] {
        Stroke({VK_LCONTROL}, 'I');  // a tab
        mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
        Stroke({}, 'Q');
        mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    };
    thread.Run([] { keyboardHook.disabled = {{4, {{'I', true}}}, {8, {{'Q', true}}}}; });
    play();
    EXPECT_TRUE(ArrivesAfter(L"")) << test::WindowText(edit);
    EXPECT_EQ(TakeExecuted(), Texts{});
    thread.Run(RemoveKeyboardHook);
    play();
    EXPECT_TRUE(ArrivesAfter(L"\tq")) << test::WindowText(edit);
}

TEST_F(HookAndTargetTest, OrdinaryKeysArriveUntouched) {
    Add('Q', 4, L"text");
    for (const BYTE key : {'A', 'Q', '1'}) test::PlayStroke({}, key);
    test::PlayStroke({VK_LSHIFT}, 'Q');
    EXPECT_TRUE(ArrivesAfter(L"aq1Q")) << test::WindowText(edit);
    EXPECT_EQ(TakeExecuted(), Texts{});
}

TEST_F(KeyboardHookTest, TwoPressesWithin300MillisecondsRunTheEntryOnce) {
    Add(VK_F23, 4, L"text");
    bool quick = false;
    for (int attempt = 0; attempt < 10 && !quick; ++attempt) {
        const ULONGLONG start = GetTickCount64();
        Stroke({VK_LCONTROL}, VK_F23);
        test::PlayStroke({VK_LCONTROL}, VK_F23);
        quick = GetTickCount64() - start < 300;
        const Texts ran = TakeExecuted();
        if (quick) {
            EXPECT_EQ(ran, Texts{L"text"});
        }
    }
    EXPECT_TRUE(quick);
    test::Linger(330);
    test::PlayStroke({VK_LCONTROL}, VK_F23);
    EXPECT_EQ(TakeExecuted(), Texts{L"text"});
}

TEST_F(HookAndTargetTest, SeveralEntriesOrACharacterListAskForTheMenu) {
    Add('Q', 4, L"one");
    Add('Q', 4, L"two");
    Add('W', 6, L"charmap:abc");
    struct Case {
        BYTE held, key;
        unsigned modifier;
    };
    std::size_t asked = 0;
    for (const Case& c : {Case{VK_LCONTROL, 'Q', 4}, Case{VK_RCONTROL, 'W', 6}}) {
        Stroke({c.held}, c.key);
        ++asked;
        EXPECT_TRUE(test::WaitFor([&] { return thread.Commands().size() == asked; }));
        EXPECT_EQ(thread.Commands().back(), (test::ArrivedCommand{CMD_SHOW_PASTE_MENU, true}));
        EXPECT_EQ(keyboardHook.menuRequest.key, c.key);
        EXPECT_EQ(keyboardHook.menuRequest.modifier, c.modifier);
        EXPECT_EQ(keyboardHook.menuRequest.foreground, window);
        EXPECT_EQ(keyboardHook.menuRequest.focus, nullptr);
    }
    EXPECT_EQ(TakeExecuted(), Texts{});
    EXPECT_TRUE(ArrivesAfter(L"")) << test::WindowText(edit);
}

std::atomic<bool> played;

TEST_F(HookAndTargetTest, AHotkeyPressedWhileAnEntryRunsIsSwallowed) {
    Add('Q', 4, L"slow");
    Add('W', 8, L"second");
    // The entry waits with its messages flowing, as one that shows a box does, until the second was played.
    whileExecuting = [] {
        AllowNextTrigger();
        std::thread player([] {
            mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
            test::PressKeyDown('W');
            mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
            played = true;
        });
        test::WaitFor([] { return played.load(); }, 20000);
        player.join();
    };
    Stroke({VK_LCONTROL}, 'Q');
    EXPECT_TRUE(played);
    EXPECT_EQ(TakeExecuted(), Texts{L"slow"});
    test::LetKeyUp('W');
    EXPECT_TRUE(ArrivesAfter(L"")) << test::WindowText(edit);
    EXPECT_FALSE(keyboardHook.trigger.busy);

    whileExecuting = nullptr;
    mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
    Stroke({}, 'W');
    mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    EXPECT_EQ(TakeExecuted(), Texts{L"second"});
}

TEST_F(HookAndTargetTest, OwnStrokesPassEvenWhenTheyAreAHotkey) {
    Add('V', 4, L"paste");
    Add('Q', 0, L"other");
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, 5 * sizeof(wchar_t));
    memcpy(GlobalLock(block), L"seen", 5 * sizeof(wchar_t));
    GlobalUnlock(block);
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();

    whileExecuting = [] {
        AllowNextTrigger();
        SendPaste(20);
    };
    Stroke({VK_LWIN}, 'Q');
    Stroke({VK_LCONTROL}, 'V');
    EXPECT_EQ(TakeExecuted(), (Texts{L"other", L"paste"}));
    EXPECT_TRUE(ArrivesAfter(L"seenseen")) << test::WindowText(edit);
}

TEST_F(KeyboardHookTest, TheListMayChangeWhileItsEntryRuns) {
    Add(VK_F23, 4, L"a text long enough to live on the heap, as most texts of a list do");
    keyboardHook.client.executeEntry = [](const std::wstring& text) {
        ClearHotkeys(keyboardHook.tables);
        ExecuteEntry(text);
    };
    Stroke({VK_LCONTROL}, VK_F23);
    EXPECT_EQ(TakeExecuted(), Texts{L"a text long enough to live on the heap, as most texts of a list do"});
}

TEST_F(KeyboardHookTest, F2AsksForRenamingAndGoesOn) {
    keyboardHook.client.wantsRename = [] { return GetKeyState(VK_LSHIFT) >= 0; };
    watch.Take();
    test::PressKeyDown(VK_F2);
    EXPECT_EQ(thread.Commands(), (std::vector<test::ArrivedCommand>{{CMD_RENAME_ENTRY, false}}));
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_F2, false, 0}}));
    keyboardHook.client.wantsRename = [] { return false; };
    test::LetKeyUp(VK_F2);
    keyboardHook.client.wantsRename = [] { return true; };
    thread.Run([] { PressKey(VK_F2); });
    EXPECT_EQ(thread.Commands().size(), 1U);
}

TEST_F(KeyboardHookTest, ASimulatedHotkeyTriggersIt) {
    const wchar_t* const names[] = {L"0", L"1", L"2", L"3", L"4", L"5", L"6"};
    for (unsigned code = 0; code < 7; ++code) Add(VK_F23, code, names[code]);
    // Without the extended flag the system takes right Alt and right Ctrl for the left ones.
    const wchar_t* const triggered[] = {L"0", L"1", L"2", L"5", L"4", L"5", L"4", L"0"};
    for (unsigned code = 0; code < std::size(triggered); ++code) {
        thread.Run([code] {
            AllowNextTrigger();
            SimulateHotkey(code, VK_F23, false);
        });
        EXPECT_EQ(TakeExecuted(), Texts{triggered[code]}) << code;
        // Left Alt of code 2 among them: the simulation leaves it down, the hook lets it go.
        EXPECT_FALSE(test::AnyModifierDown()) << code;
    }
}

TEST_F(KeyboardHookTest, TheUsersSwitchHoldsAgainstEveryReinstall) {
    Add(VK_F23, 4, L"text");
    thread.Run([] {
        keyboardHook.installCount = 0;
        ToggleKeyboardHook();
        InstallKeyboardHookUnlessOff();
    });
    Stroke({VK_LCONTROL}, VK_F23);
    EXPECT_EQ(TakeExecuted(), Texts{});
    EXPECT_EQ(keyboardHook.installCount, 0U);
    thread.Run([] {
        ToggleKeyboardHook();
        InstallKeyboardHookUnlessOff();
    });
    EXPECT_EQ(keyboardHook.installCount, 2U);
    // One hook, not two: the entry runs once.
    Stroke({VK_LCONTROL}, VK_F23);
    EXPECT_EQ(TakeExecuted(), Texts{L"text"});
}

TEST_F(KeyboardHookTest, AFailedInstallIsToldWithTheReason) {
    std::thread shower([] { ReportHookFailure(ERROR_ACCESS_DENIED); });
    HWND box = nullptr;
    EXPECT_TRUE(test::WaitFor([&] {
        box = FindWindowW(L"#32770", L"Error hooking keyboard");
        return box && IsWindowVisible(box);
    }));
    wchar_t text[256] = {};
    const HWND label = GetDlgItem(box, 0xffff);
    GetWindowTextW(label, text, 256);
    EXPECT_NE(std::wstring(text).find(L"enied"), std::wstring::npos) << text;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    shower.join();
}

}  // namespace
}  // namespace verbatix
