#include "support/desktop.h"

#include <windows.h>

#include "support/wait.h"

namespace verbatix::test {

void WaitForClipboard() {
    // Asking for a window starts a desktop that is not there (or no longer: it ends a second after its last
    // program). It takes over the clipboard and empties it while the test already runs. Changes are
    // counted from the desktop's start; 0 stands for none yet.
    GetDesktopWindow();
    WaitFor([] { return GetClipboardSequenceNumber() != 0; }, 30000);
}

}  // namespace verbatix::test
