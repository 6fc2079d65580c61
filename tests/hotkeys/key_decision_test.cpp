// The lookup tables, the decision on a key event over them, and when the hook is installed anew.
#include "hotkeys/key_decision.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>

#include "hotkeys/hook_upkeep.h"

namespace verbatix {
namespace {

constexpr unsigned kCtrlDown = 32;
constexpr DWORD kControlOfAltGr = 0x21D;  // its scan code
unsigned stateWord;
int stateWordReads;
unsigned ReadStateWord() {
    ++stateWordReads;
    return stateWord;
}

std::set<DWORD> keysDown;
bool IsDown(DWORD key) {
    return keysDown.contains(key);
}

bool isPaused;
bool IsPaused() {
    return isPaused;
}

class DecideKeyTest : public testing::Test {
  protected:
    DecideKeyTest() {
        stateWord = kCtrlDown;
        stateWordReads = 0;
        keysDown.clear();
        isPaused = false;
        AddHotkey(*tables, 'Q', 4, L"one");
        AddHotkey(*tables, 'W', 4, L"first");
        AddHotkey(*tables, 'W', 4, L"second");
        AddHotkey(*tables, 'E', 4, L"charmap:abc");
        AddHotkey(*tables, 'R', 4, L"Charmap:abc");
    }

    // One event, after which the system believes what it was allowed to see.
    KeyAction Event(DWORD key, bool up, ULONG_PTR tag = 0, DWORD scanCode = 0) {
        KBDLLHOOKSTRUCT event = {};
        event.vkCode = key;
        event.scanCode = scanCode;
        event.flags = up ? LLKHF_UP : 0;
        event.dwExtraInfo = tag;
        decision = DecideKey(event, *tables, disabled, state, {ReadStateWord, IsDown, IsPaused}, now);
        const bool passes = decision.action <= KeyAction::PassAfterRelease;
        if (up || !passes) keysDown.erase(key);
        if (!up && passes) keysDown.insert(key);
        return decision.action;
    }

    // A press of its own, and what becomes of the release.
    KeyAction Decide(DWORD key, ULONG_PTR tag = 0) {
        const KeyAction action = Event(key, false, tag);
        const KeyDecision press = decision;
        const KeyAction release = Event(key, true, tag);
        EXPECT_EQ(release > KeyAction::PassAfterRelease, action > KeyAction::PassAfterRelease) << key;
        decision = press;
        return action;
    }

    std::unique_ptr<HotkeyTables> tables = std::make_unique<HotkeyTables>();
    DisabledHotkeys disabled;
    TriggerState state;
    ULONGLONG now = 0;
    KeyDecision decision;
};

TEST(HotkeyTables, CountAndKeepTheLastTextWithinTheirBounds) {
    const auto tables = std::make_unique<HotkeyTables>();
    for (const wchar_t* text : {L"first", L"last"}) EXPECT_TRUE(AddHotkey(*tables, 'Q', 4, text));
    EXPECT_FALSE(AddHotkey(*tables, 'Q', 4, L""));
    AddHotkey(*tables, 0x1234'5600 + 'Q', 9, L"low byte");
    EXPECT_EQ(tables->anyModifier['Q'], 3U);
    EXPECT_EQ(tables->counts[4]['Q'], 2U);
    EXPECT_EQ(tables->texts[4]['Q'], L"last");
    EXPECT_EQ(tables->texts[9]['Q'], L"low byte");
    // An unknown modifier code is shown as left Windows, so it works as left Windows.
    for (const unsigned code : {10U, 11U, 0xffffffffU}) AddHotkey(*tables, 255, code, L"text");
    EXPECT_EQ(tables->counts[0][255], 3U);
    // An entry without hotkey has a text, but no event may find it.
    EXPECT_TRUE(AddHotkey(*tables, 0x100, 1, L"no key"));
    EXPECT_EQ(tables->anyModifier[0], 0U);
    ClearHotkeys(*tables);
    EXPECT_EQ(tables->anyModifier['Q'] + tables->counts[4]['Q'] + tables->texts[4]['Q'].size(), 0U);
}

TEST_F(DecideKeyTest, PicksTheActionByTheEntriesAndTheState) {
    const std::pair<DWORD, KeyAction> rows[] = {{'Q', KeyAction::TriggerEntry},
                                                {'W', KeyAction::TriggerMenu},
                                                {'E', KeyAction::TriggerMenu},
                                                {'R', KeyAction::TriggerEntry}};
    for (const auto& [key, action] : rows) {
        EXPECT_EQ(Decide(key), action) << key;
        EXPECT_EQ(decision.modifier, 4U);
    }
    EXPECT_EQ(decision.text, &tables->texts[4]['R']);
    AddHotkey(*tables, 'Y', 0, L"by the first code");
    stateWord = 1;
    EXPECT_EQ(Decide('Y'), KeyAction::TriggerEntry);
    stateWord = kCtrlDown;
    isPaused = true;
    for (const DWORD key : {'Q', 'W'}) {
        EXPECT_EQ(Decide(key), KeyAction::PassOn) << "paused in that program";
        EXPECT_EQ(decision.refusal, PressEnd::kPausedInFront);
        EXPECT_EQ(decision.modifier, 4U);
    }
    isPaused = false;
    state.busy = true;
    EXPECT_EQ(Decide('Q'), KeyAction::TriggerNothing);
    EXPECT_EQ(decision.refusal, PressEnd::kBusy);
    EXPECT_EQ(Decide('W'), KeyAction::TriggerMenu);
    EXPECT_EQ(decision.refusal, PressEnd::kNotYet) << "the menu knows better";

    // Disabled: swallowed whatever its entries are; without an entry it is an ordinary key.
    disabled = {{4, {{'Q', true}, {'W', true}, {'T', true}}}, {5, {{'E', true}}}};
    EXPECT_EQ(Decide('Q'), KeyAction::Swallow);
    EXPECT_EQ(Decide('W'), KeyAction::Swallow);
    EXPECT_EQ(decision.refusal, PressEnd::kSwitchedOff);
    EXPECT_EQ(Decide('E'), KeyAction::TriggerMenu);
    EXPECT_EQ(Decide('T'), KeyAction::PassOn);
    EXPECT_EQ(decision.refusal, PressEnd::kNotYet);
}

TEST_F(DecideKeyTest, ReadsTheKeyStateOnlyForKeysOnAHotkey) {
    for (const DWORD key : {DWORD{'T'}, DWORD{0}, DWORD{VK_LCONTROL}, DWORD{256}, DWORD{256 + 'Q'}}) {
        EXPECT_EQ(Decide(key), KeyAction::PassOn) << key;
    }
    EXPECT_EQ(Decide('Q', kSyntheticInputTag), KeyAction::PassOn);
    EXPECT_EQ(stateWordReads, 0);
    Decide('Q');
    EXPECT_EQ(stateWordReads, 1);
}

TEST_F(DecideKeyTest, LetsPendingKeysGoAtTheNextEventThatIsNoTrigger) {
    state.pendingRelease = 0;
    EXPECT_EQ(Event(VK_LCONTROL, false, 0, kControlOfAltGr), KeyAction::PassOn);
    EXPECT_EQ(Decide('T'), KeyAction::PassAfterRelease);
    EXPECT_EQ(Decide(300), KeyAction::PassAfterRelease);
    EXPECT_EQ(Decide('Q'), KeyAction::TriggerEntry);
    EXPECT_EQ(Event('Q', true), KeyAction::PassAfterRelease);
    Event('Q', false);
    EXPECT_EQ(Event('Q', false), KeyAction::SwallowAfterRelease);
    EXPECT_EQ(Event('Q', true), KeyAction::SwallowAfterRelease);
    EXPECT_EQ(Decide('T', kSyntheticInputTag), KeyAction::PassOn);
    for (const unsigned word : {4U, kCtrlDown | 64}) {  // a code without an entry; Shift makes it none
        stateWord = word;
        EXPECT_EQ(Decide('Q'), KeyAction::PassAfterRelease);
    }
    const std::map<int, std::vector<KeyStroke>> releases = {{2, {{VK_LCONTROL, 2}, {VK_LMENU, 2}}},
                                                            {3, {{VK_RMENU, 2}}},
                                                            {4, {{VK_LCONTROL, 2}}},
                                                            {5, {{VK_LMENU, 2}}},
                                                            {6, {{VK_RCONTROL, 2}}}};
    for (int code = -1; code < 10; ++code) {
        const auto strokes = releases.find(code);
        EXPECT_EQ(PendingReleaseStrokes(code),
                  strokes == releases.end() ? std::vector<KeyStroke>() : strokes->second);
    }
}

TEST_F(DecideKeyTest, SwallowsRepeatsWithinTheGuard) {
    const std::tuple<std::optional<ULONGLONG>, ULONGLONG, bool> rows[] = {
        {{}, 5, false},  // the machine has just started, and this is the first press
        {1000, 1000, true},
        {1000, 1300, true},
        {1000, 1301, false},
        {0, 300, true},
        {0xffff'ff00, 0x1'0000'0000, true},
        {0xffff'ff00, 0x1'0000'0100, false}};
    for (const auto& [last, time, swallowed] : rows) {
        state.lastTrigger = last;
        now = time;
        for (const DWORD key : {DWORD{'Q'}, DWORD{'W'}}) {
            EXPECT_EQ(Decide(key) == KeyAction::Swallow, swallowed) << now;
            EXPECT_EQ(decision.refusal, swallowed ? PressEnd::kTooSoon : PressEnd::kNotYet) << now;
        }
    }
}

// What a keyboard sends, and what of it triggers (T), is swallowed (s), passes (p). A letter is its press
// or repeat, "-" before it its release. "^" presses left Ctrl, which a trigger lets go, "~" right Ctrl,
// which it does not. "+" is the Ctrl that the system adds to an Alt-Gr; after "!" the system has let the
// press of Q through, because the hook took too long. Digits are tenths of a second.
TEST_F(DecideKeyTest, APressBelongsToTheHookUntilItsRelease) {
    const std::pair<std::string_view, std::string> rows[] = {
        {"^Q5QQQ-Q4^Q", "pTsssspT"},
        {"^Q5QQ-^QQ-Q", "pTsspsss"},     // whatever becomes of the modifier
        {"Q^-Q", "ppp"},                 // a release is no press
        {"Q^QQ-Q4Q", "pppppT"},          // nor is a key that was down before its modifier
        {"~Q4W4QWQW-Q-W", "pTTssssss"},  // two at once
        // The release is missed: the screen was locked, the hook was gone.
        {"^Q4^Q-Q", "pTpTs"},    // no keyboard repeats a key when another has gone down
        {"^Q99999Q-Q", "pTpp"},  // nor after such a time
        {"~Q99999Q", "pTT"},
        {"~Q9Q9Q99Q99Q-Q4Q", "pTsssssT"},  // the slowest repeat there is
        {"~Q4+QQ-Q", "pTpsss"},            // as a menu comes to the front by a right Alt of ours
        {"^Q!5QQ-Q^Q", "pTssppT"},         // the program that saw it go down sees it come up
    };
    AddHotkey(*tables, 'Q', 6, L"one");
    AddHotkey(*tables, 'W', 6, L"two");
    for (const auto& [script, expected] : rows) {
        state = {};
        keysDown.clear();
        stateWord = 0;
        std::string actions;
        bool up = false;
        for (const char sign : script) {
            if (sign >= '0' && sign <= '9') {
                now += 100 * static_cast<ULONGLONG>(sign - '0');
                continue;
            }
            if (sign == '-' || sign == '!') {
                up = sign == '-';
                if (!up) state.claims.SetLost('Q', true);
                continue;
            }
            const bool isControl = sign == '^' || sign == '~';
            const DWORD key = sign == '^' || sign == '+' ? VK_LCONTROL
                              : sign == '~'              ? VK_RCONTROL
                                                         : static_cast<DWORD>(sign);
            const KeyAction action = Event(key, up, 0, sign == '+' ? kControlOfAltGr : 0);
            const bool triggers = action >= KeyAction::TriggerNothing;
            if (isControl) stateWord = up ? 0 : sign == '^' ? kCtrlDown : 16;
            if (triggers) state.lastTrigger = now;
            if (triggers && stateWord == kCtrlDown) stateWord = 0;
            actions += triggers ? 'T' : action == KeyAction::Swallow ? 's' : 'p';
            up = false;
        }
        EXPECT_EQ(actions, expected) << script;
    }
}

TEST(HookUpkeep, AKeyIsPastTheHookWhereItIsMuchLater) {
    EXPECT_FALSE(HookWasPassedBy(1500, 1000));
    EXPECT_TRUE(HookWasPassedBy(1501, 1000));
    EXPECT_FALSE(HookWasPassedBy(1000, 9000));  // on the bench raw input comes first
    EXPECT_TRUE(HookWasPassedBy(600, 0xffff'ff00));
}

TEST(ClockWatch, CountsJumpsOfMoreThanTwoSecondsEitherWay) {
    ClockWatch watch = {.storedSeconds = 1000};
    const std::pair<long long, bool> looks[] = {{1002, false}, {1000, false}, {1003, true},  {1003, false},
                                                {1000, true},  {87400, true}, {87401, false}};
    for (const auto& [seconds, jumped] : looks) EXPECT_EQ(ClockJumped(watch, seconds), jumped) << seconds;
    EXPECT_EQ(HookStatusText(watch.jumps, 12), L"R:3 (12)");
}

}  // namespace
}  // namespace verbatix
