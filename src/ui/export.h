// Entries out of the list: to the clipboard, to a file, to the exchange file. What fails is told in a
// message box. UI thread only.
#pragma once

#include <string>
#include <vector>

namespace verbatix {

// Positions of the entries that an export of the selection takes, in their order in the view: what stands
// under the selected item. A view other than the flat list puts its own function here.
extern std::vector<int> (*selectedSubtree)();

// Copies the selected entries to the clipboard as text and says how many they were in a tip at the mouse.
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
