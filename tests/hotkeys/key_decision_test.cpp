#include "hotkeys/key_decision.h"

#include <gtest/gtest.h>

#include <memory>

namespace verbatix {
namespace {

unsigned stateWord;
int stateWordReads;
unsigned ReadStateWord() {
    ++stateWordReads;
    return stateWord;
}

class DecideKeyTest : public testing::Test {
  protected:
    DecideKeyTest() {
        stateWord = 32;
        stateWordReads = 0;
        AddHotkey(*tables, 'Q', 4, L"one");
        AddHotkey(*tables, 'W', 4, L"first");
        AddHotkey(*tables, 'W', 4, L"second");
        AddHotkey(*tables, 'E', 4, L"charmap:abc");
        AddHotkey(*tables, 'R', 4, L"Charmap:abc");
    }

    KeyDecision Decide(DWORD key, ULONG_PTR tag = 0) {
        KBDLLHOOKSTRUCT event = {};
        event.vkCode = key;
        event.dwExtraInfo = tag;
        return DecideKey(event, *tables, disabled, state, ReadStateWord, now);
    }

    std::unique_ptr<HotkeyTables> tables = std::make_unique<HotkeyTables>();
    DisabledHotkeys disabled;
    TriggerState state;
    ULONGLONG now = 0;
};

TEST(ModifierCode, NeedsExactlyOneOfTheStates) {
    const std::map<unsigned, int> codes = {{1, 0}, {2, 1},  {36, 2},  {40, 3},  {8, 3},   {32, 4},
                                           {4, 5}, {16, 6}, {256, 7}, {512, 8}, {1024, 9}};
    for (unsigned word = 0; word < 2048; ++word) {
        const auto code = codes.find(word);
        EXPECT_EQ(ModifierCodeOf(word), code == codes.end() ? -1 : code->second) << word;
    }
}

TEST_F(DecideKeyTest, PicksTheActionByTheEntries) {
    struct Case {
        DWORD key;
        KeyAction action;
    };
    for (const Case& c : {Case{'Q', KeyAction::TriggerEntry},
                          {'W', KeyAction::TriggerMenu},
                          {'E', KeyAction::TriggerMenu},
                          {'R', KeyAction::TriggerEntry},
                          {'T', KeyAction::PassOn}}) {
        const KeyDecision decision = Decide(c.key);
        EXPECT_EQ(decision.action, c.action) << c.key;
        EXPECT_EQ(decision.modifier, c.action == KeyAction::PassOn ? 0U : 4U);
    }
    EXPECT_EQ(Decide('Q').text, &tables->texts[4]['Q']);
}

TEST_F(DecideKeyTest, ReadsTheKeyStateOnlyForKeysOnAHotkey) {
    for (const DWORD key : {DWORD{'T'}, DWORD{0}, DWORD{VK_LCONTROL}, DWORD{256}, DWORD{256 + 'Q'}}) {
        EXPECT_EQ(Decide(key).action, KeyAction::PassOn) << key;
    }
    EXPECT_EQ(Decide('Q', kSyntheticInputTag).action, KeyAction::PassOn);
    EXPECT_EQ(stateWordReads, 0);
    Decide('Q');
    EXPECT_EQ(stateWordReads, 1);
}

TEST_F(DecideKeyTest, LetsPendingKeysGoAtTheNextEventThatIsNoTrigger) {
    state.pendingRelease = 0;
    EXPECT_EQ(Decide('T').action, KeyAction::PassAfterRelease);
    EXPECT_EQ(Decide(300).action, KeyAction::PassAfterRelease);
    EXPECT_EQ(Decide('Q').action, KeyAction::TriggerEntry);
    EXPECT_EQ(Decide('T', kSyntheticInputTag).action, KeyAction::PassOn);
    stateWord = 4;  // a code without an entry
    EXPECT_EQ(Decide('Q').action, KeyAction::PassAfterRelease);
    stateWord = 32 | 64;  // Shift makes it another state
    EXPECT_EQ(Decide('Q').action, KeyAction::PassAfterRelease);
}

TEST_F(DecideKeyTest, SwallowsRepeatsWithinTheGuard) {
    struct Case {
        ULONGLONG last, now;
        bool swallowed;
    };
    for (const Case& c : {Case{1000, 1000, true},
                          {1000, 1300, true},
                          {1000, 1301, false},
                          {0, 300, true},
                          {0xffff'ff00, 0x1'0000'0000, true},
                          {0xffff'ff00, 0x1'0000'0100, false}}) {
        state.lastTrigger = c.last;
        now = c.now;
        for (const DWORD key : {DWORD{'Q'}, DWORD{'W'}}) {
            EXPECT_EQ(Decide(key).action == KeyAction::Swallow, c.swallowed) << c.last << " " << c.now;
        }
    }
    // The machine has just started, and this is the first press.
    state.lastTrigger.reset();
    now = 5;
    EXPECT_EQ(Decide('Q').action, KeyAction::TriggerEntry);
}

TEST_F(DecideKeyTest, WhileAnEntryRunsASecondOneIsATriggerThatRunsNothing) {
    state.busy = true;
    EXPECT_EQ(Decide('Q').action, KeyAction::TriggerNothing);
    EXPECT_EQ(Decide('W').action, KeyAction::TriggerMenu);
    EXPECT_EQ(Decide('T').action, KeyAction::PassOn);
}

TEST_F(DecideKeyTest, ADisabledHotkeyIsSwallowedWhateverItsEntries) {
    disabled = {{4, {{'Q', true}, {'W', true}, {'T', true}}}, {5, {{'R', true}}}};
    state.pendingRelease = 4;
    EXPECT_EQ(Decide('Q').action, KeyAction::Swallow);
    EXPECT_EQ(Decide('W').action, KeyAction::Swallow);
    EXPECT_EQ(Decide('R').action, KeyAction::TriggerEntry);
    EXPECT_EQ(Decide('T').action, KeyAction::PassAfterRelease);  // no entry on it
}

TEST(PendingRelease, NamesTheKeysOfTheCode) {
    const std::vector<std::vector<BYTE>> keys = {
        {}, {}, {VK_LCONTROL, VK_LMENU}, {VK_RMENU}, {VK_LCONTROL}, {VK_LMENU}, {VK_RCONTROL}, {}, {}, {}};
    for (int code = -1; code < 10; ++code) {
        std::vector<KeyStroke> expected;
        if (code >= 0) {
            for (const BYTE key : keys[static_cast<std::size_t>(code)]) expected.push_back({key, 2});
        }
        EXPECT_EQ(PendingReleaseStrokes(code), expected) << code;
    }
}

}  // namespace
}  // namespace verbatix
