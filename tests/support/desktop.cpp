#include "support/desktop.h"

#include <windows.h>

#include "support/wait.h"

namespace verbatix::test {

void WaitForClipboard() {
    // Changes are counted from the desktop's start; 0 stands for none yet.
    WaitFor([] { return GetClipboardSequenceNumber() != 0; });
}

}  // namespace verbatix::test
