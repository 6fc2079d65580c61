// The short form of scripts/reliability.
#include <gtest/gtest.h>

#include "support/kill_driver.h"

namespace verbatix::test {
namespace {

TEST(Kills, LeaveTheFileBeforeAnActionOrTheOneAfterIt) {
    KillOptions options;
    options.entries = 120;
    options.kills = 8;
    const KillResult result = KillWhileWorking(options);
    EXPECT_EQ(result.broken, L"");
    EXPECT_EQ(result.files, options.kills);
    EXPECT_GT(result.actions, options.kills) << "it was killed at work";
}

}  // namespace
}  // namespace verbatix::test
