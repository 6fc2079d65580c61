// Entries on their way to and from other lists: as text in the layout of the list file. UI thread only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "store/entry.h"
#include "store/export_text.h"
#include "store/list_file.h"

namespace verbatix {

// Keys of another list file that a merge looks at: text_000 to text_1023.
inline constexpr unsigned kMergedKeys = 1024;
// Larger files are no lists; a full one of 1,024 entries takes 9 MB.
inline constexpr std::int64_t kLargestImport = 32LL << 20;

// The entries at those positions, in that order, numbered anew from 0. Positions without an entry and
// deleted entries are left out; `count` gets the number of the others.
std::wstring ExportText(const EntryList& list, const std::vector<int>& positions, int* count = nullptr);

// Every entry that is not deleted, in the order of the list.
std::vector<int> AllPositions(const EntryList& list);

// Writes such a text to a file, in UTF-16 with mark. False when that fails; what was there before is then
// untouched.
bool WriteExportFile(const std::wstring& path, const std::wstring& text);

// The file in the user's temporary folder by which one run of the program leaves entries to another, which
// may work with another settings file. Empty when there is no such folder.
std::wstring ExchangeFilePath();

// What a file holds for an import.
struct ListToImport {
    enum Problem { kNone, kUnreadable, kTooLarge, kNoEntries } problem = kNone;
    std::vector<EntryTexts> entries;
    int leftOut = 0;  // entries with numbers beyond the merged ones
};

// Reads a settings file, or an export, in any encoding that editors write. An export, which has no end
// markers, is taken as it stands, blanks at the ends of its lines included; a settings file as the system
// reads it.
ListToImport ReadListToImport(const std::wstring& path);

// Asks whether to add the entries of another settings file or export; on Yes copies the settings file to
// the backup folder, appends them and saves everything in one commit. No and Cancel leave all as it is. A
// file without anything to add is told of instead of asked about, and so is what had to be left out.
void ImportListFile(EntryList& list, const ListClient& client, const std::wstring& path);

}  // namespace verbatix
