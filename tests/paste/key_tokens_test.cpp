#include "paste/key_tokens.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace verbatix {
namespace {

TEST(KeyTokens, CutTheTextIntoSteps) {
    const KeySteps plan = SplitAtKeyTokens(L"%send_tab%a%sleep_50%%sleep_500%b%send_enter%c%");
    const std::vector<KeyStep> expected = {
        {L"", VK_TAB, 0}, {L"a", 0, 50}, {L"", 0, 500}, {L"b", VK_RETURN, 0}};
    EXPECT_EQ(plan.steps, expected);
    EXPECT_EQ(plan.tail, L"c%");
}

TEST(KeyTokens, LeaveWhatIsNoTokenInTheText) {
    const KeySteps plan = SplitAtKeyTokens(L"100%%send_tabs%%sleep_60%%SEND_TAB%%sleep_100%%sleep_200%x");
    EXPECT_EQ(plan.steps.size(), 2U);
    EXPECT_EQ(plan.steps[0].segment, L"100%%send_tabs%%sleep_60%%SEND_TAB%");
    EXPECT_EQ(plan.steps[1].milliseconds, 200U);
    EXPECT_EQ(plan.tail, L"x");
}

TEST(KeyTokens, NeedAKeyToPress) {
    EXPECT_TRUE(HoldsKeyToken(L"a%send_enter%"));
    EXPECT_TRUE(HoldsKeyToken(L"%send_tab%"));
    EXPECT_FALSE(HoldsKeyToken(L"a%sleep_500%b"));
    EXPECT_FALSE(HoldsKeyToken(L"%send_esc%"));
    EXPECT_FALSE(HoldsKeyToken(L""));
}

}  // namespace
}  // namespace verbatix
