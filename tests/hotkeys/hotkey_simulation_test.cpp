#include "hotkeys/hotkey_simulation.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "key_watch.h"
#include "support/keys.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

TEST(SimulatedStrokes, HoldTheModifierOfTheCode) {
    const BYTE keys[] = {91, 92, 0, 165, 162, 164, 163, 91, 91, 91, 91};
    for (unsigned code = 0; code < std::size(keys); ++code) {
        if (code == 2) continue;
        EXPECT_EQ(SimulatedStrokes(code, 0x100 + 'A'),
                  (std::vector<KeyStroke>{{keys[code], 0}, {'A', 0}, {'A', 2}, {keys[code], 2}}))
            << code;
    }
    EXPECT_EQ(SimulatedStrokes(2, 'A'),
              (std::vector<KeyStroke>{{164, 0}, {162, 0}, {'A', 0}, {'A', 2}, {162, 2}, {162, 2}}));
}

TEST(SimulateHotkey, PlaysAUsersKeysWithTheKeyAsScanCode) {
    test::KeyWatch watch;
    EXPECT_TRUE(SimulateHotkey(4, VK_F23, true));
    EXPECT_EQ(watch.Take(),
              (std::vector<test::SeenKey>{
                  {VK_LCONTROL, false, 0}, {VK_F23, false, 0}, {VK_F23, true, 0}, {VK_LCONTROL, true, 0}}));
    EXPECT_EQ(watch.LastScanCode(), DWORD{VK_LCONTROL});
}

TEST(IsWinHotkeyTaken, TriesItAndLeavesNothingBehind) {
    EXPECT_FALSE(IsWinHotkeyTaken(nullptr, VK_F23, true));
    test::MessageThread other;
    bool registered = false;
    other.Run([&] { registered = RegisterHotKey(nullptr, 7, MOD_WIN, VK_F23) != FALSE; });
    ASSERT_TRUE(registered);
    EXPECT_TRUE(IsWinHotkeyTaken(nullptr, VK_F23, false));
    other.Run([] { UnregisterHotKey(nullptr, 7); });
    EXPECT_FALSE(IsWinHotkeyTaken(nullptr, VK_F23, false));

    // Keys from 128 on stand sign-extended in an entry.
    other.Run([&] { registered = RegisterHotKey(nullptr, 7, MOD_WIN, VK_OEM_1) != FALSE; });
    ASSERT_TRUE(registered);
    EXPECT_TRUE(IsWinHotkeyTaken(nullptr, 0xFFFFFF00 | VK_OEM_1, false));
    other.Run([] { UnregisterHotKey(nullptr, 7); });
}

TEST(IsWinHotkeyTaken, TellsTheUserWhenATestedHotkeyIs) {
    SetLanguageTexts({{131, L"Windows keeps it"}}, {});
    ASSERT_TRUE(RegisterHotKey(nullptr, 7, MOD_WIN, VK_F23));
    test::MessageThread tester;
    std::thread starter([&] { tester.Run([] { SimulateHotkey(8, VK_F23, true); }); });
    HWND box = nullptr;
    EXPECT_TRUE(test::WaitFor([&] {
        box = FindWindowW(L"#32770", L"");
        return box && GetDlgItem(box, 0xffff);
    }));
    EXPECT_EQ(test::WindowText(GetDlgItem(box, 0xffff)), L"Windows keeps it");
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    starter.join();
    UnregisterHotKey(nullptr, 7);
    EXPECT_FALSE(test::AnyModifierDown());
}

}  // namespace
}  // namespace verbatix
