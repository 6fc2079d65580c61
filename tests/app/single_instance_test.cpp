#include "app/single_instance.h"

#include <gtest/gtest.h>

#include "base/product.h"

namespace verbatix {
namespace {

TEST(Session, CanBeClaimedAgainOnlyAfterItsRelease) {
    ASSERT_TRUE(ClaimSession());
    EXPECT_FALSE(ClaimSession()) << "as for another copy";
    ReleaseSession();
    EXPECT_FALSE(OpenMutexW(SYNCHRONIZE, FALSE, kProductName)) << "a new copy finds nothing";
    EXPECT_TRUE(ClaimSession());
}

}  // namespace
}  // namespace verbatix
