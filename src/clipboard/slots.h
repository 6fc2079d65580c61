// The nine numbered clipboards of the user: filled from the clipboard or the foreground program's
// selection, and pasted into the foreground program. The waits block the caller on purpose; they give the
// foreground program time to answer the strokes.
#pragma once

#include <string_view>

namespace verbatix {

// "1" to "9" give 1 to 9, every other character gives 1.
int SlotIndexFromChar(wchar_t character);

// Saves the user's clipboard into the slot of that character.
void SaveSlot(wchar_t character);

// Lets the foreground program copy its selection and saves that into the slot. With `restoreOldClipboard`
// the user's clipboard is put back afterwards, or waits to be when the clipboard is busy. Blocks 100 ms, or
// 200 ms with the restore.
void CopySlot(wchar_t character, bool restoreOldClipboard);

// Puts the slot on the clipboard, where it stays, and pastes it into the foreground program.
void PasteSlot(wchar_t character);

// Pastes the slots that `digits` names, one after the other, with 500 ms between two of them; characters
// other than "1" to "9" are skipped.
void PasteSlots(std::wstring_view digits);

}  // namespace verbatix
