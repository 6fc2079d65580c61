#include "base/handle.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

int closed;
void CloseThing(int*) {
    ++closed;
}
using Thing = UniqueHandle<int*, CloseThing>;

TEST(UniqueHandle, ClosesExactlyOnceAndTakesTheInvalidFileForNone) {
    int a, b;
    {
        Thing first(&a);
        Thing second(std::move(first));
        EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): the moved-from state is the subject
        second = Thing(&b);
        EXPECT_EQ(closed, 1);
        Thing& self = second;
        second = std::move(self);
        EXPECT_EQ(second.Get(), &b);
        Thing released(&a);
        EXPECT_EQ(released.Release(), &a);
    }
    EXPECT_EQ(closed, 2);
    EXPECT_FALSE(
        UniqueFile(CreateFileW(L"Z:\\none\\x", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

}  // namespace
}  // namespace verbatix
