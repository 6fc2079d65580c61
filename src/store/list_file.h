// The entry list in the settings file: sections "list_text", "list_label" and "list_order" with a key for
// each entry, and their count in section "Program". (A section "list" with the same keys may stand in
// files; nothing in it is used and it is never written.) What does not match the syntax is left out and
// stays in the file; what cannot be written at all is reported. UI thread only.
#pragma once

#include <windows.h>

#include <string>

#include "store/entry.h"
#include "store/entry_uses.h"
#include "store/export_text.h"

namespace verbatix {

// What the list file needs from above. A null function is left out.
struct ListClient {
    HWND window = nullptr;                         // owns the message boxes
    void (*collectEdits)() = nullptr;              // takes pending edits of the views over into the list
    void (*refreshViews)(bool refresh) = nullptr;  // without refresh nothing stays selected
    int (*classifyEntry)(const wchar_t* text) = nullptr;  // gives the `kind` of a text
    // Entries differ from what was written last: those that are neither new nor deleted, and what they
    // were.
    void (*entriesEdited)(const EditedKeys& edited) = nullptr;
    int(WINAPI* showMessage)(HWND owner, const wchar_t* text, const wchar_t* caption,
                             UINT flags) = MessageBoxW;
};

// Most entries that are loaded; a bound on memory (17 KB each) against hostile files, not a limit anybody
// should meet. Where it is met, the entries beyond stay in the file and go on being counted. Tests lower
// it.
inline std::size_t mostEntries = 40000;

// Writes one entry to the settings file: all of it, or what differs from `previous`. With a sink the entry
// goes there instead. Always 1, even where the write failed.
int WriteEntry(const ListEntry& entry, ExportSink* sink = nullptr, const ListEntry* previous = nullptr);

// Makes a timed backup where one is due, then writes the entries that differ from what the file holds, or
// all, and the count, in one commit. A failed write is reported in a message box, once until a save
// succeeds; all that could not be written stays dirty for the next save. `refresh` is passed on to the
// views.
void SaveList(EntryList& list, const ListClient& client, bool refresh, bool changedOnly);

// Whether an entry or an option has changed since it was last read or written, or the file has been deleted
// meanwhile.
bool HasUnsaved(const EntryList& list);

// Fills an empty list from the settings file; a file that has never held a list gets the first-run list.
// Only keys that are in the file are looked at, so a count that cannot be true costs nothing. Lines that
// were not understood keep their keys. A file that is there but cannot be read (locked for more than 2 s)
// leaves the list unread: until it has been read every save reports instead of writing over what the file
// holds.
void LoadList(EntryList& list, const ListClient& client);

// Whether the list in the file could not be read yet.
bool IsListUnread();

// Tries once to read it; entries that were made meanwhile are put behind those of the file and saved. False
// when it still cannot be read.
bool LoadUnreadList(EntryList& list, const ListClient& client);

// Reads the list anew, as at start.
void ReloadList(EntryList& list, const ListClient& client);

// How many lines of the list the last reading could make nothing of.
int MisreadLines();

// The first-run list in export layout; empty until app/ sets it.
void SetFirstRunList(std::wstring text);

}  // namespace verbatix
