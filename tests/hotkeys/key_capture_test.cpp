// What becomes of keys while a field asks for a hotkey, as a script of events.
#include "hotkeys/key_capture.h"

#include <gtest/gtest.h>

#include <map>

#include "hotkeys/key_simulation.h"

namespace verbatix {
namespace {

// A sign is a key that goes down or repeats, "-" before it lets it go. What is held is written behind the
// actions: taken events in capitals, passed ones small; h held, r released, c combination, x clear, e
// leave, n nothing.
const std::map<char, DWORD> kKeys = {
    {'^', VK_LCONTROL}, {'~', VK_RCONTROL},  {'!', VK_LMENU},  {'@', VK_RMENU},  {'$', VK_LSHIFT},
    {'#', VK_LWIN},     {'<', VK_BACK},      {'>', VK_DELETE}, {'.', VK_ESCAPE}, {'\t', VK_TAB},
    {'*', VK_CAPITAL},  {'+', VK_VOLUME_UP}, {'?', VK_PACKET}, {'g', VK_CONTROL}};

std::string Play(std::string_view script, CaptureState& state, bool mouse = false, ULONG_PTR tag = 0,
                 DWORD scanCode = 0) {
    std::string result;
    bool up = false;
    for (const char sign : script) {
        if (sign == '-' && !up) {
            up = true;
            continue;
        }
        KBDLLHOOKSTRUCT event = {};
        const auto named = kKeys.find(sign);
        event.vkCode = named == kKeys.end() ? static_cast<DWORD>(sign) : named->second;
        event.flags = up ? LLKHF_UP : 0;
        event.dwExtraInfo = tag;
        event.scanCode = event.vkCode == VK_LCONTROL ? scanCode : 0;
        const CaptureStep step = DecideCapture(event, mouse, state);
        const char action = "nhrcxe"[static_cast<int>(step.action)];
        result += step.taken ? static_cast<char>(std::toupper(action)) : action;
        up = false;
    }
    return result + std::to_string(state.held);
}

TEST(KeyCapture, TakesWhatIsPressedAndLeavesNothingDown) {
    const std::pair<std::string_view, const char*> rows[] = {
        {"^K-K-^", "HCRR0"},
        {"^K-^-K", "HCRR0"},  // let go in any order
        {"^^^KKK-K-^", "HNNCNNRR0"},
        {"^!K", "HHC36"},
        {"#L-L-#", "HCRR0"},
        {"!\t-\t!", "HCRN4"},
        {"^.", "HC32"},
        {"^<", "HC32"},
        {".-.", "ER0"},
        {"<-<>", "XRX0"},
        {"\t-\t$\t-$", "nnhnr0"},  // moves on
        {"$\t-\t-$", "hnnr0"},
        {"$K-K-$", "hCRr0"},
        {"*-*+?", "nnnn0"},
        {"^*", "HC32"},
        {"-K-^-#", "nrr0"},  // pressed before, let go now
        {"g-g", "HR0"},
        {"Q", "C0"},
    };
    for (const auto& [script, expected] : rows) {
        CaptureState state;
        EXPECT_EQ(Play(script, state), expected) << script;
        EXPECT_EQ(Play(script, state = {}, false, kSyntheticInputTag).find_first_not_of("n0"),
                  std::string::npos);
    }
    CaptureState state;
    EXPECT_EQ(Play(".<\tQ", state, true), "CCCC0") << "with a mouse button nothing is alone";
}

TEST(KeyCapture, WhatWasDownBeforeComesUpForWhomItWentDown) {
    CaptureState state;
    state.before.set(VK_LMENU).set('H');
    state.held = 4;
    // The access key that led here repeats: it is not the wish for a hotkey.
    EXPECT_EQ(Play("HH!K", state), "NNnC4");
    EXPECT_EQ(Play("-H-!-KH", state), "nrRC0");
}

TEST(KeyCapture, WhatOthersSawGoDownComesUpForThem) {
    KBDLLHOOKSTRUCT control = {};
    control.vkCode = VK_LCONTROL;
    CaptureState state;
    EXPECT_TRUE(DecideCapture(control, false, state).taken);
    // Its repeat came while a menu had the keyboard.
    LeaveToOthers(control, state);
    control.flags = LLKHF_UP;
    EXPECT_FALSE(DecideCapture(control, false, state).taken);
    EXPECT_EQ(state.held, 0U);
}

TEST(KeyCapture, AltGrsOwnControlGoesWithIt) {
    CaptureState state;
    EXPECT_EQ(Play("^@E-E-@", state, false, 0, 0x21d), "HHCRR0");
    EXPECT_EQ(Play("-^^@-@", state = {}, false, 0, 0x1d), "rHHR32");
}

}  // namespace
}  // namespace verbatix
