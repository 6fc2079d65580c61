// The program's own strokes, the user's hotkey played for him, and whether Windows keeps that one.
#include "hotkeys/key_simulation.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "hotkeys/hotkey_simulation.h"
#include "key_watch.h"
#include "support/keys.h"
#include "support/message_box.h"

namespace verbatix::test {
namespace {

using Strokes = std::vector<KeyStroke>;
using Seen = std::vector<SeenKey>;

TEST(KeyStrokes, ReleaseAndSimulateInTheirOrder) {
    HeldKeys all;
    all.fill(true);
    Strokes expected;  // the neutral Alt comes last
    for (const BYTE key : std::initializer_list<BYTE>{91, 92, 165, 164, 17, 163, 162, 1, 4, 2})
        expected.push_back({key, 2});
    expected.push_back({18, 3});
    EXPECT_EQ(ReleaseStrokes(all), expected);
    EXPECT_TRUE(ReleaseStrokes({}).empty());

    const BYTE keys[] = {91, 92, 0, 165, 162, 164, 163, 91, 91, 91, 91};
    for (unsigned code = 0; code < std::size(keys); ++code) {
        const Strokes strokes = code == 2
                                    ? Strokes{{164, 0}, {162, 0}, {'A', 0}, {'A', 2}, {162, 2}, {162, 2}}
                                    : Strokes{{keys[code], 0}, {'A', 0}, {'A', 2}, {keys[code], 2}};
        EXPECT_EQ(SimulatedStrokes(code, 0x100 + 'A'), strokes) << code;
    }
}

TEST(KeySimulation, SendsTaggedStrokesAndAUsersUntaggedWithTheKeyAsScanCode) {
    MessageThread thread;
    KeyWatch watch;
    const struct {
        void (*send)();
        BYTE modifier, key;
        ULONG_PTR tag;
    } rows[] = {{[] { SendCopy(); }, VK_LCONTROL, 'C', 444},
                {[] { SendPaste(0); }, VK_LCONTROL, 'V', 444},
                {[] { PressKey(VK_TAB); }, 0, VK_TAB, 444},
                {[] { SimulateHotkey(4, VK_F23, true); }, VK_LCONTROL, VK_F23, 0}};
    for (const auto& [send, modifier, key, tag] : rows) {
        thread.Run(send);
        Seen expected = {{key, false, tag}, {key, true, tag}};
        if (modifier) expected = {{modifier, false, tag}, expected[0], expected[1], {modifier, true, tag}};
        EXPECT_EQ(watch.Take(), expected);
    }
    EXPECT_EQ(watch.scanCode, DWORD{VK_LCONTROL});
}

TEST(KeySimulation, HeldModifiersGoUpFirstButShiftStays) {
    EXPECT_TRUE(WaitFor(KeepsModifiers, 20000));
    MessageThread thread;
    KeyWatch watch;
    for (const BYTE key : std::initializer_list<BYTE>{VK_LSHIFT, VK_LCONTROL, VK_LMENU, VK_RMENU})
        PressKeyDown(key);
    watch.Take();
    HeldKeys held;
    thread.Run([&] { ReleaseHeldModifiers(held); });
    EXPECT_EQ(held, (HeldKeys{false, false, true, true, true, true, false, true, false, false, false}));
    EXPECT_EQ(
        watch.Take(),
        (Seen{{165, true, 444}, {164, true, 444}, {162, true, 444}, {162, true, 444}, {165, true, 444}}));
    LetKeyUp(VK_LSHIFT);
    EXPECT_FALSE(AnyModifierDown());

    PressKeyDown(VK_LWIN);
    mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
    thread.Run([] { PressKey(VK_F24); });
    EXPECT_FALSE(AnyModifierDown());
    mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    LetKeyUp(VK_LWIN);
}

TEST(WinHotkey, IsTriedWithoutATraceAndToldWhenItIsTaken) {
    SetLanguageTexts({{131, L"Windows keeps it"}}, {});
    MessageThread other;
    for (const UINT key : {UINT{VK_OEM_1}, UINT{VK_F23}}) {
        // Keys from 128 on stand sign-extended in an entry.
        const auto isTaken = [key] { return IsWinHotkeyTaken(nullptr, 0xFFFFFF00 | key, false); };
        EXPECT_FALSE(isTaken());
        EXPECT_FALSE(isTaken());
        BOOL registered = FALSE;
        other.Run([&] { registered = RegisterHotKey(nullptr, 7, MOD_WIN, key); });
        ASSERT_TRUE(registered);
        EXPECT_TRUE(isTaken());
    }
    MessageBoxAnswer box;
    SimulateHotkey(8, VK_F23, true);
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Text(), L"Windows keeps it");
    EXPECT_FALSE(AnyModifierDown());
    SetLanguageTexts({}, {});
}

}  // namespace
}  // namespace verbatix::test
