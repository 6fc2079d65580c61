#include "hotkeys/key_simulation.h"

#include <gtest/gtest.h>

#include "key_watch.h"
#include "support/keys.h"

namespace verbatix {
namespace {

using test::SeenKey;

TEST(ReleaseStrokes, LetGoWhatWasDownInOrderAndTheNeutralAltLast) {
    HeldKeys all;
    all.fill(true);
    EXPECT_EQ(ReleaseStrokes(all), (std::vector<KeyStroke>{{91, 2},
                                                           {92, 2},
                                                           {165, 2},
                                                           {164, 2},
                                                           {17, 2},
                                                           {163, 2},
                                                           {162, 2},
                                                           {1, 2},
                                                           {4, 2},
                                                           {2, 2},
                                                           {18, 3}}));
    HeldKeys leftAlt = {};
    leftAlt[3] = leftAlt[4] = true;
    EXPECT_EQ(ReleaseStrokes(leftAlt), (std::vector<KeyStroke>{{164, 2}, {18, 3}}));
    EXPECT_TRUE(ReleaseStrokes({}).empty());
}

class KeySimulationTest : public testing::Test {
  protected:
    // The strokes of the program's main thread.
    void OnThread(const std::function<void()>& work) { thread.Run(work); }

    test::MessageThread thread;
    test::KeyWatch watch;
};

TEST_F(KeySimulationTest, WithNothingHeldOnlyTheStrokeIsSentAndTagged) {
    OnThread(SendCopy);
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{
                                {162, false, 444}, {'C', false, 444}, {'C', true, 444}, {162, true, 444}}));
    OnThread([] { SendPaste(0); });
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{
                                {162, false, 444}, {'V', false, 444}, {'V', true, 444}, {162, true, 444}}));
    OnThread([] { PressKey(VK_TAB); });
    EXPECT_EQ(watch.Take(), (std::vector<SeenKey>{{VK_TAB, false, 444}, {VK_TAB, true, 444}}));
}

TEST_F(KeySimulationTest, HeldModifiersGoUpFirstButShiftStays) {
    for (const int key : {VK_LSHIFT, VK_LCONTROL, VK_LMENU, VK_RMENU}) {
        test::PressKeyDown(static_cast<BYTE>(key));
    }
    watch.Take();
    HeldKeys held;
    OnThread([&] { ReleaseHeldModifiers(held); });
    EXPECT_EQ(held, (HeldKeys{false, false, true, true, true, true, false, true, false, false, false}));
    std::vector<DWORD> order;
    for (const SeenKey& seen : watch.Take()) {
        EXPECT_TRUE(seen.up && seen.tag == 444) << testing::PrintToString(seen);
        order.push_back(seen.key);
    }
    EXPECT_EQ(order, (std::vector<DWORD>{165, 164, 162, 162, 165}));
    EXPECT_LT(GetAsyncKeyState(VK_LSHIFT), 0);
    test::LetKeyUp(VK_LSHIFT);
    EXPECT_FALSE(test::AnyModifierDown());

    test::PressKeyDown(VK_LWIN);
    mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
    OnThread([] { PressKey(VK_F24); });
    EXPECT_FALSE(test::AnyModifierDown());
    mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    test::LetKeyUp(VK_LWIN);
}

}  // namespace
}  // namespace verbatix
