// Figures of the whole program on the desktop.
#pragma once

namespace verbatix::bench {

// From the hotkey's key going down to the text in another program, against a bare program that puts the
// text on the clipboard, sleeps 20 ms and sends Ctrl+V.
void BenchHotkeyRoad();

// From the start of the process to the hook being in, by number of entries, and resident memory.
void BenchStart();

// The main window with 10,000 entries: shown, filtered, sorted, an entry edited.
void BenchWindow();

// Showing 10,000 entries as a tree: all in one group, which is the tree's worst case, and narrowing it.
void BenchTree();

}  // namespace verbatix::bench
