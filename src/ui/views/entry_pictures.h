// The pictures before entries, groups and hotkeys in list and tree: those of Windows for such files, or our
// own, by option; at the size that goes with the window's resolution and the chosen size of the views.
// Where one cannot be made its place stays empty. UI thread only.
#pragma once

#include <windows.h>

#include <vector>

#include "ui/views/entry_kind.h"

namespace verbatix {

// Gives list and tree their pictures anew.
void ShowEntryPictures();

// Our own picture of a kind: `edge` rows of as many pixels, from the top, as Windows has them in 32 bits.
std::vector<DWORD> DrawEntryPicture(EntryKind kind, int edge);

}  // namespace verbatix
