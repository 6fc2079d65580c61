// The desktop that tests run on.
#pragma once

namespace verbatix::test {

// Waits until the desktop has done with the clipboard what it does once at its own start: take it over and
// empty it. Call it before a test's first use of the clipboard; it returns at once on a desktop that has.
void WaitForClipboard();

}  // namespace verbatix::test
