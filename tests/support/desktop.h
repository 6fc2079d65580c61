// The desktop that tests run on.
#pragma once

#include <string>

#include "clipboard/clipboard_text.h"
#include "support/wait.h"

namespace verbatix::test {

// Call it before a test's first use of the clipboard. Asking for a window starts a desktop that is not
// there (or no longer: it ends a second after its last program). It takes over the clipboard and empties it
// while the test already runs. Changes are counted from the desktop's start; 0 stands for none yet.
inline void WaitForClipboard() {
    GetDesktopWindow();
    WaitFor([] { return GetClipboardSequenceNumber() != 0; }, 30000);
}

// Waits until the clipboard holds that text. It is opened only when it has changed: a program that comes to
// it while it is open for somebody else does not get its copy or paste.
inline bool ClipboardGets(std::wstring_view text) {
    std::wstring found;
    DWORD seen = 0;
    return WaitFor([&] {
        const DWORD change = GetClipboardSequenceNumber();
        if (change == seen || !ClipboardGetText(found)) return false;
        seen = change;
        return found == text;
    });
}

}  // namespace verbatix::test
