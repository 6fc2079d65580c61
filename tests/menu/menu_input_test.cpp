#include "menu/menu_input.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

constexpr DWORD kOpened = 1000;

struct Event {
    UINT message;
    WPARAM key;
    MenuInput decision;
    DWORD time = kOpened + 50;
};

void ExpectDecisions(const std::vector<Event>& events, DWORD shift = 0) {
    MenuInputState state;
    state.hotkey = 'Q';
    state.openedAt = kOpened + shift;
    for (std::size_t index = 0; index < events.size(); ++index) {
        MSG message = {};
        message.message = events[index].message;
        message.wParam = events[index].key;
        message.time = events[index].time + shift;
        EXPECT_EQ(DecideMenuInput(state, message), events[index].decision) << "event " << index;
    }
}

TEST(DecideMenuInput, HoldsBackTheRepeatsOfAHeldHotkey) {
    ExpectDecisions({{WM_KEYDOWN, 'A', MenuInput::Pass},
                     {WM_KEYDOWN, 'Q', MenuInput::Swallow},
                     {WM_KEYDOWN, 'Q', MenuInput::Swallow},
                     {WM_KEYUP, 'Q', MenuInput::Pass},
                     {WM_KEYDOWN, 'Q', MenuInput::Pass}});
}

TEST(DecideMenuInput, LetsAStrokeOfTheHotkeysKeyThrough) {
    // Released after the menu came up, then pressed: acts at once.
    ExpectDecisions({{WM_KEYUP, 'Q', MenuInput::Pass}, {WM_KEYDOWN, 'Q', MenuInput::Pass}});
    // Released before: acts when it comes up, and the repetition passes.
    ExpectDecisions({{WM_SYSKEYDOWN, 'Q', MenuInput::Swallow},
                     {WM_KEYUP, 'Q', MenuInput::PlayAgain},
                     {WM_KEYDOWN, 'Q', MenuInput::Pass}});
}

TEST(DecideMenuInput, ClosesWhenAltComesUp) {
    for (const DWORD shift : {DWORD{0}, DWORD{0} - kOpened - 10}) {  // the clock wraps at once after it
        ExpectDecisions({{WM_SYSKEYDOWN, VK_MENU, MenuInput::Swallow},
                         {WM_SYSKEYDOWN, VK_MENU, MenuInput::Swallow},
                         {WM_SYSKEYUP, VK_MENU, MenuInput::Close},
                         {WM_KEYUP, VK_MENU, MenuInput::Pass}},
                        shift);
    }
}

TEST(DecideMenuInput, IgnoresTheAltOfTheHotkeyAndTheProgramsOwn) {
    ExpectDecisions({{WM_SYSKEYUP, VK_MENU, MenuInput::Pass}});
    ExpectDecisions({{WM_SYSKEYDOWN, VK_MENU, MenuInput::Swallow, kOpened},
                     {WM_SYSKEYUP, VK_MENU, MenuInput::Pass, kOpened}});
}

TEST(DecideMenuInput, ChoosesOnlyByAButtonPressedInTheMenu) {
    ExpectDecisions({{WM_MOUSEMOVE, 0, MenuInput::Pass},
                     {WM_LBUTTONUP, 0, MenuInput::Swallow},
                     {WM_LBUTTONDOWN, 0, MenuInput::Pass},
                     {WM_LBUTTONUP, 0, MenuInput::Pass}});
    ExpectDecisions({{WM_RBUTTONUP, 0, MenuInput::Swallow}, {WM_MBUTTONUP, 0, MenuInput::Swallow}});
}

}  // namespace
}  // namespace verbatix
