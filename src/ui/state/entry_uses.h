// The uses of the entries while the program runs: counted at every press, in memory; written late, when the
// user is not at the keyboard. UI thread only, the keyboard hook included.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "store/entry_uses.h"

namespace verbatix {

// Reads what was counted before.
void StartCountingUses();

// An entry with that hotkey and text is carried out. Costs no look at the list and no file.
void NoteUse(unsigned keyCode, unsigned modifier, const std::wstring& text);

// Entries have been edited (see CarryUses).
void OnEntriesEdited(const EditedKeys& edited);

Uses UsesOf(const ListEntry& entry);

// Positions of the entries used last, the latest first, at most so many.
std::vector<int> LastUsed(const EntryList& list, std::size_t most);

// Whether something was counted since this was last asked.
bool HaveUsesChanged();

// Ten times a second: writes what has been counted for some minutes, once nobody types.
void WriteUsesInTime();
// Writes it now: the program ends.
void WriteUses();

}  // namespace verbatix
