// The desktop that tests run on.
#pragma once

#include "support/wait.h"

namespace verbatix::test {

// Call it before a test's first use of the clipboard. Asking for a window starts a desktop that is not
// there (or no longer: it ends a second after its last program). It takes over the clipboard and empties it
// while the test already runs. Changes are counted from the desktop's start; 0 stands for none yet.
inline void WaitForClipboard() {
    GetDesktopWindow();
    WaitFor([] { return GetClipboardSequenceNumber() != 0; }, 30000);
}

}  // namespace verbatix::test
