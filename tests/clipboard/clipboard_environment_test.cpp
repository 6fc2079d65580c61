// Every test of this room uses the clipboard, so none begins before the desktop has let go of it.
#include <gtest/gtest.h>

#include "support/desktop.h"

namespace verbatix {
namespace {

class ClipboardEnvironment : public testing::Environment {
  public:
    void SetUp() override { test::WaitForClipboard(); }
};

[[maybe_unused]] const testing::Environment* const environment =
    testing::AddGlobalTestEnvironment(new ClipboardEnvironment);

}  // namespace
}  // namespace verbatix
