// The installed hook on its own thread, a user's keys from this one, and another program's window in front.
#include "hotkeys/keyboard_hook.h"

#include <gtest/gtest.h>

#include <atomic>

#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/pause.h"
#include "ids.h"
#include "key_watch.h"
#include "support/keys.h"
#include "support/mouse.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

using Texts = std::vector<std::wstring>;

SharedList<std::wstring> executed;
void (*whileExecuting)();

void ExecuteEntry(const std::wstring& text) {
    executed.Add(text + (AnyModifierDown() ? L", modifier down" : L"") +
                 (IsControlHeldOnPurpose() ? L", Ctrl on purpose" : L""));
    if (whileExecuting) whileExecuting();
}

void AllowNextTrigger() {
    keyboardHook.trigger.lastTrigger.reset();
}

// The mouse buttons are held like keys.
void Hold(BYTE key, bool down) {
    if (key > VK_MBUTTON) return down ? HoldDown(key) : LetKeyUp(key);
    const DWORD flags[] = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_RIGHTDOWN, 0, MOUSEEVENTF_MIDDLEDOWN};
    mouse_event(flags[key - VK_LBUTTON] << (down ? 0 : 1), 0, 0, 0, 0);
}

class KeyboardHookTest : public testing::Test {
  protected:
    // Nothing of an earlier test may reach this one: neither its hotkeys, nor a key it left down, nor the
    // clipboard, which Wine's edit control pastes by itself when it is clicked with the middle button.
    KeyboardHookTest() {
        whileExecuting = nullptr;
        executed.Take();
        for (BYTE key = VK_LBUTTON; key < 0xff; ++key) {
            if (GetAsyncKeyState(key) < 0) Hold(key, false);
        }
        EXPECT_TRUE(WaitFor([] { return OpenClipboard(nullptr) != FALSE; }));
        EmptyClipboard();
        CloseClipboard();
        MoveMouse({900, target.QuietHeight()});
        thread.Run([this] {
            ClearHotkeys(keyboardHook.tables);
            keyboardHook.disabled.clear();
            keyboardHook.trigger = {};
            keyboardHook.off = false;
            keyboardHook.client = {thread.Window(), ExecuteEntry, nullptr};
            InstallKeyboardHook();
        });
        EXPECT_TRUE(WaitFor([] { return !AnyModifierDown(); }));
        EXPECT_TRUE(SettlesInFront(target.Window()));  // the pointer has moved
        EXPECT_TRUE(ArrivesAfter(L""));
        watch.Take();
    }
    ~KeyboardHookTest() override {
        thread.Run(RemoveKeyboardHook);
        EXPECT_FALSE(AnyModifierDown());
    }

    void Add(unsigned key, unsigned modifier, const wchar_t* text) {
        thread.Run([=] { AddHotkey(keyboardHook.tables, key, modifier, text); });
    }

    // A press of its own, not a repeat of the one before; what it ran.
    Texts Stroke(const std::vector<BYTE>& held, BYTE key) {
        thread.Run(AllowNextTrigger);
        for (const BYTE modifier : held) Hold(modifier, true);
        for (const BYTE modifier : held) {
            if (GetAsyncKeyState(modifier) >= 0) Hold(modifier, true);
        }
        PlayStroke({}, key);
        for (const BYTE modifier : std::vector(held.rbegin(), held.rend())) Hold(modifier, false);
        return executed.Take();
    }

    // Whether the target's text is `expected` once the keys played so far have arrived: a key that no
    // hotkey uses is typed behind them.
    bool ArrivesAfter(const std::wstring& expected) {
        const auto ends = [this] { return target.Text().ends_with(L"z"); };
        PlayStroke({}, VK_END);
        PlayStroke({}, 'Z');
        WaitFor(ends);
        PlayStroke({}, VK_BACK);
        WaitFor([&] { return !ends(); });
        return target.Text() == expected;
    }

    Target target;
    KeyWatch watch;  // installed before the hook, so it sees what the hook passes on
    MessageThread thread;
};

TEST_F(KeyboardHookTest, ExactlyTheStatesOfTheTenModifiersTriggerWithTheModifiersReleased) {
    const wchar_t* const names[] = {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"8", L"9"};
    for (unsigned code = 0; code < 10; ++code) Add(VK_F23, code, names[code]);
    const std::pair<std::vector<BYTE>, Texts> rows[] = {
        {{VK_LWIN}, {L"0"}},
        {{VK_RWIN}, {L"1"}},
        {{VK_LCONTROL, VK_LMENU}, {L"2"}},
        {{VK_LMENU, VK_LCONTROL}, {L"2"}},
        {{VK_RMENU}, {L"3"}},
        {{VK_LCONTROL, VK_RMENU}, {L"3"}},
        {{VK_LCONTROL}, {L"4"}},
        {{VK_LMENU}, {L"5"}},
        // It stays down: its release lacks the extended flag, so that the system takes it for the left
        // one's, and only the user's own release counts.
        {{VK_RCONTROL}, {L"6, modifier down"}},
        {{VK_LBUTTON}, {L"7"}},
        {{VK_MBUTTON}, {L"8"}},
        {{VK_RBUTTON}, {L"9"}},
        {{}, {}},
        {{VK_LSHIFT}, {}},
        {{VK_LCONTROL, VK_LSHIFT}, {}},
        {{VK_RMENU, VK_RSHIFT}, {}},
        {{VK_LCONTROL, VK_RCONTROL}, {}},
        {{VK_LMENU, VK_RMENU}, {}},
        {{VK_LCONTROL, VK_LMENU, VK_LSHIFT}, {}},
        {{VK_MBUTTON, VK_LCONTROL}, {}},
    };
    for (const auto& [held, texts] : rows) {
        watch.Take();
        EXPECT_EQ(Stroke(held, VK_F23), texts);
        EXPECT_FALSE(AnyModifierDown()) << testing::PrintToString(held);
        const auto seen = watch.Take();
        EXPECT_EQ(std::count(seen.begin(), seen.end(), SeenKey{VK_F23, false, 0}), texts.empty() ? 1 : 0);
    }
    for (const BYTE control : std::initializer_list<BYTE>{VK_LCONTROL, VK_RCONTROL}) {
        Hold(control, true);
        EXPECT_TRUE(IsControlHeldOnPurpose());
        Hold(control, false);
    }
    // Without the extended flag the system takes a simulated right Alt or Ctrl for the left one.
    const wchar_t* const simulated[] = {L"0", L"1", L"2", L"5", L"4", L"5", L"4", L"0"};
    for (unsigned code = 0; code < std::size(simulated); ++code) {
        thread.Run([code] {
            AllowNextTrigger();
            SimulateHotkey(code, VK_F23, false);
        });
        EXPECT_EQ(executed.Take(), Texts{simulated[code]}) << code;
        // Left Alt of code 2 among them: the simulation leaves it down, the hook lets it go.
        EXPECT_FALSE(AnyModifierDown()) << code;
    }
}

TEST_F(KeyboardHookTest, ATriggerSendsItsReleasesAndTheNextEventTheRest) {
    Add(VK_F23, 4, L"text");
    Stroke({VK_LCONTROL}, VK_F23);
    // The press is swallowed. Its key goes up, then what is held. The user's key-up that follows is let
    // through behind the back of other hooks, after left Ctrl has been let go once more.
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_LCONTROL, false, 0},
                                                  {VK_F23, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 444},
                                                  {VK_LCONTROL, true, 0}}));
    PlayStroke({}, VK_F23);
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_F23, false, 0}, {VK_F23, true, 0}}));
}

// As people do it: the key is held for a while, its release comes before or after the modifier's, and the
// hook may be installed anew or the list changed in between.
TEST_F(KeyboardHookTest, AHeldHotkeyRunsOnceAndTypesNothing) {
    Add('Q', 4, L"text");
    void (*const meanwhile[])() = {[] {}, [] { InstallKeyboardHook(); },
                                   [] { ClearHotkeys(keyboardHook.tables); }};
    for (const auto change : meanwhile) {
        for (const bool modifierFirst : {false, true}) {
            thread.Run(AllowNextTrigger);
            HoldDown(VK_LCONTROL);
            PressKeyDown('Q');
            EXPECT_EQ(executed.Take(), Texts{L"text"});
            thread.Run(AllowNextTrigger);
            thread.Run(change);
            for (int repeats = 0; repeats < 3; ++repeats) PressKeyDown('Q');
            if (modifierFirst) LetKeyUp(VK_LCONTROL);
            PressKeyDown('Q');
            LetKeyUp('Q');
            if (!modifierFirst) LetKeyUp(VK_LCONTROL);
            EXPECT_EQ(executed.Take(), Texts{});
            thread.Run([] { ClearHotkeys(keyboardHook.tables); });
            Add('Q', 4, L"text");
        }
    }
    thread.Run(AllowNextTrigger);
    PressKeyDown('Q');
    HoldDown(VK_LCONTROL);
    PressKeyDown('Q');
    LetKeyUp('Q');
    LetKeyUp(VK_LCONTROL);
    EXPECT_EQ(executed.Take(), Texts{}) << "the key was down before its modifier";
    EXPECT_TRUE(ArrivesAfter(L"q")) << target.Text();
}

std::atomic<bool> played;

// The entry waits with its messages flowing, as one that shows a box does, until another hotkey was played.
// Meanwhile the list may change. It is the same where the entry runs after the hook has answered.
TEST_F(KeyboardHookTest, AHotkeyPressedWhileAnEntryRunsIsSwallowed) {
    const std::wstring text = L"slow, and long enough to live on the heap, as most texts of a list do";
    thread.onCommand = [](int command) {
        if (command == CMD_RUN_ENTRY) RunPressedEntry();
    };
    for (const bool inside : {true, false}) {
        played = false;
        keyboardHook.client.fitsInsideHook =
            inside ? nullptr : +[](const std::wstring&, DWORD) { return false; };
        Add('Q', 4, text.c_str());
        Add('W', 8, L"second");
        whileExecuting = [] {
            EXPECT_TRUE(keyboardHook.trigger.busy);
            AllowNextTrigger();
            std::thread player([] {
                Hold(VK_MBUTTON, true);
                PressKeyDown('W');
                Hold(VK_MBUTTON, false);
                played = true;
            });
            WaitFor([] { return played.load(); }, 20000);
            Pause(250);
            player.join();
            ClearHotkeys(keyboardHook.tables);
        };
        Texts ran = Stroke({VK_LCONTROL}, 'Q');
        EXPECT_TRUE(WaitFor([] { return played.load() && !keyboardHook.trigger.busy; }));
        for (const std::wstring& later : executed.Take()) ran.push_back(later);
        EXPECT_EQ(ran, Texts{text});
        const auto last = [this] {
            const std::vector<int> commands = thread.Commands();
            return commands.empty() ? 0 : commands.back();
        };
        EXPECT_TRUE(WaitFor([&] { return last() == CMD_REINSTALL_HOOK; })) << "Windows may have dropped it";
        LetKeyUp('W');
        EXPECT_TRUE(ArrivesAfter(L"")) << target.Text();

        whileExecuting = nullptr;
        Add('W', 8, L"second");
        ran = Stroke({VK_MBUTTON}, 'W');
        EXPECT_TRUE(WaitFor([] { return !keyboardHook.trigger.busy; }));
        for (const std::wstring& later : executed.Take()) ran.push_back(later);
        EXPECT_EQ(ran, Texts{L"second"});
    }
}

// Windows has let the press through by then, and a key that never came up would trigger nothing any more.
TEST_F(KeyboardHookTest, AReleaseIsTheProgramsWhereTheHookTookTooLong) {
    Add(VK_F23, 4, L"text");
    for (const DWORD limit : {60000U, 40U}) {
        thread.Run([=] { keyboardHook.limit = limit; });
        whileExecuting = [] {
            Sleep(60);
            SendTagged({VK_F23, 0});  // the press that went through
        };
        EXPECT_EQ(Stroke({VK_LCONTROL}, VK_F23), Texts{L"text"});
        EXPECT_EQ(GetAsyncKeyState(VK_F23) < 0, limit != 40);
        thread.Run([] { SendTagged({VK_F23, KEYEVENTF_KEYUP}); });
    }
}

TEST(HookTimeLimit, IsWhatWindowsWaits) {
    EXPECT_EQ(HookTimeLimit({}), 300U);
    EXPECT_EQ(HookTimeLimit(100), 100U);
    EXPECT_EQ(HookTimeLimit(5000), 1000U);
}

TEST_F(KeyboardHookTest, F2AsksForRenamingAndGoesOn) {
    keyboardHook.client.wantsRename = [] { return true; };
    PressKeyDown(VK_F2);
    EXPECT_TRUE(WaitFor([&] { return !thread.Commands().empty(); }));
    EXPECT_EQ(thread.Commands(), std::vector<int>{CMD_RENAME_ENTRY});
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_F2, false, 0}}));
    keyboardHook.client.wantsRename = [] { return false; };
    LetKeyUp(VK_F2);
    keyboardHook.client.wantsRename = [] { return true; };
    thread.Run([] { PressKey(VK_F2); });
    PostMessageW(thread.Window(), WM_COMMAND, 1, 0);  // behind what should not be there
    EXPECT_TRUE(WaitFor([&] { return thread.Commands().back() == 1; }));
    EXPECT_EQ(thread.Commands().size(), 2U) << "neither unwanted nor for a stroke of our own";
}

}  // namespace
}  // namespace verbatix::test
