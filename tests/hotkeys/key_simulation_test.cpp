// The program's own strokes, the user's hotkey played for him, whether Windows keeps that one, and the
// notice at the caret of another program's window.
#include "hotkeys/key_simulation.h"

#include <gtest/gtest.h>

#include "base/language.h"
#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/notice.h"
#include "key_watch.h"
#include "support/keys.h"
#include "support/message_box.h"
#include "support/program_run.h"

namespace verbatix::test {
namespace {

using Seen = std::vector<SeenKey>;

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
    EXPECT_TRUE(Hold({VK_LSHIFT, VK_LCONTROL, VK_LMENU, VK_RMENU}));
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
    PressKeyDown(VK_RCONTROL);  // a mere key, unlike a paste, would be another key with it
    mouse_event(MOUSEEVENTF_MIDDLEDOWN, 0, 0, 0, 0);
    thread.Run([] { PressKey(VK_F24); });
    EXPECT_FALSE(AnyModifierDown());
    mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
    LetKeyUp(VK_LWIN);
}

std::vector<bool> heldBackOf;

// Of a layout with Alt-Gr, while a stroke of ours is played: the bench never sends it.
LRESULT CALLBACK AskAboutControlOfAltGr(int code, WPARAM message, LPARAM parameter) noexcept {
    const KBDLLHOOKSTRUCT control = {VK_LCONTROL, 0x21D, 0, 0, 0};
    heldBackOf.push_back(IsHeldBack(control));
    return CallNextHookEx(nullptr, code, message, parameter);
}

TEST(KeySimulation, TheControlOfAnAltGrGoesAlongWithOursAndComesBehindThemWithTheUsers) {
    MessageThread thread;
    KeyWatch watch;
    const struct {
        std::vector<KeyStroke> strokes;
        std::vector<bool> heldBack;
    } rows[] = {{{{VK_RMENU, KEYEVENTF_EXTENDEDKEY}, {VK_RMENU, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP}},
                 {false, false}},
                {{{VK_F24, 0}, {VK_F24, KEYEVENTF_KEYUP}}, {true, true, false}}};
    for (const auto& [strokes, heldBack] : rows) {
        heldBackOf.clear();
        thread.Run([&] {
            const HHOOK hook =
                SetWindowsHookExW(WH_KEYBOARD_LL, AskAboutControlOfAltGr, GetModuleHandleW(nullptr), 0);
            PlayWhole(strokes);
            UnhookWindowsHookEx(hook);
        });
        EXPECT_EQ(heldBackOf, heldBack);
        // The right Alt of the one that was held back is still to come, and will bring none along.
        const std::vector<SeenKey> seen = watch.Take();
        ASSERT_EQ(seen.size(), heldBack.size());
        EXPECT_EQ(seen.back() == (SeenKey{VK_LCONTROL, false, 444}), heldBack[0]);
        LetKeyUp(VK_LCONTROL);
        watch.Take();
    }
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

TEST(NoticeCorner, StaysInsideTheWorkAreaAndOffTheCaretsLine) {
    const struct {
        RECT caret;
        POINT corner;
    } rows[] = {{{100, 100, 101, 120}, {100, 124}},
                {{900, 100, 901, 120}, {700, 124}},
                {{100, 660, 101, 680}, {100, 616}},
                {{-1200, 690, -1199, 900}, {-1000, 646}},
                {{100, 5, 101, 695}, {100, 0}}};
    for (const auto& [caret, corner] : rows) {
        const POINT found =
            NoticeCorner({{caret.left, caret.bottom}, caret}, {300, 40}, {-1000, 0, 1000, 700});
        EXPECT_TRUE(found.x == corner.x && found.y == corner.y) << found.x << "," << found.y;
    }
}

TEST(Notice, StandsAtTheCaretWithoutTakingTheKeyboardUntilItIsHidden) {
    const Target target;
    MessageThread thread;
    thread.Run([] { NoticeAtCaret(L"first"); });
    thread.Run([] { NoticeAtCaret(L"Nothing was pasted.\nSecond line"); });
    const HWND shown = ShownTooltip();
    ASSERT_TRUE(shown);
    EXPECT_EQ(WindowText(shown), L"Nothing was pasted.\nSecond line");
    EXPECT_EQ(GetForegroundWindow(), target.Window());
    RECT notice = {};
    RECT window = {};
    RECT common = {};
    GetWindowRect(shown, &notice);
    GetWindowRect(target.Window(), &window);
    EXPECT_TRUE(IntersectRect(&common, &notice, &window)) << "not at the target's caret";
    thread.Run(HideNotice);
    EXPECT_FALSE(ShownTooltip());
}

}  // namespace
}  // namespace verbatix::test
