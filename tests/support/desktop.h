// The desktop that tests run on.
#pragma once

namespace verbatix::test {

// Starts the desktop where it does not run, and waits until it has done with the clipboard what it does
// once at its own start: take it over and empty it. Call it before a test's first use of the clipboard.
void WaitForClipboard();

}  // namespace verbatix::test
