// Entries out of the list: to the clipboard, to a file, to the exchange file. What fails is told in a
// message box. UI thread only.
#pragma once

#include <string>
#include <vector>

namespace verbatix {

// Copies what is selected to the clipboard as text and says how many entries it was in a tip at the mouse:
// in the tree all entries under the selected items, in the list the selected ones.
void ExportAsText();

// The same with all entries.
void ExportAllAsText();

// Asks for a file and writes the entries to it.
void ExportSelectionToFile();
void ExportAllToFile();

// Writes all entries to the exchange file and says so in a tip at the mouse.
void WriteExchangeFile();

// --- pure ---

// What the tip says.
std::wstring ExportNotice(const std::wstring& what, int count);

}  // namespace verbatix
