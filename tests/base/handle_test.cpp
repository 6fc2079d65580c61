#include "base/handle.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

int closed;
void CloseThing(int*) {
    ++closed;
}
using Thing = UniqueHandle<int*, CloseThing>;

TEST(UniqueHandle, ClosesExactlyOnce) {
    closed = 0;
    int a, b;
    {
        Thing first(&a);
        Thing second(std::move(first));
        EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): the moved-from state is the subject
        EXPECT_EQ(second.Get(), &a);
        second = Thing(&b);
        EXPECT_EQ(closed, 1);
        Thing& self = second;
        second = std::move(self);
        EXPECT_EQ(second.Get(), &b);
        Thing released(&a);
        EXPECT_EQ(released.Release(), &a);
        Thing empty;
    }
    EXPECT_EQ(closed, 2);
}

TEST(UniqueHandle, TakesTheInvalidFileForNone) {
    UniqueFile file(
        CreateFileW(L"Z:\\no\\such\\folder\\file", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_FALSE(file);
    EXPECT_EQ(file.Get(), INVALID_HANDLE_VALUE);
}

}  // namespace
}  // namespace verbatix
