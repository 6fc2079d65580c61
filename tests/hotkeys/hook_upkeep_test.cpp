#include "hotkeys/hook_upkeep.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

TEST(ClockWatch, CountsJumpsOfMoreThanTwoSecondsEitherWay) {
    ClockWatch watch = {.storedSeconds = 1000};
    struct Look {
        long long seconds;
        bool jumped;
    };
    for (const Look look : {Look{1000, false},
                            {1002, false},
                            {1000, false},
                            {1003, true},
                            {1003, false},
                            {1000, true},
                            {1000 + 86400, true},
                            {1001 + 86400, false}}) {
        EXPECT_EQ(ClockJumped(watch, look.seconds), look.jumped) << look.seconds;
    }
    EXPECT_EQ(watch.jumps, 3U);
    EXPECT_EQ(HookStatusText(watch.jumps, 12), L"R:3 (12)");
}

}  // namespace
}  // namespace verbatix
