// Byte copies of whole clipboards: taken from the clipboard, kept, and put back as often as wanted. Owns
// the process-wide stores. Main thread only; a busy clipboard is told by the results alone.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <string>

#include "base/handle.h"
#include "clipboard/format_names.h"
#include "clipboard/history_marks.h"

namespace verbatix {

// One clipboard format. After ReleaseSavedData the record stays with `format` and `size` 0 and no data.
struct SavedFormat {
    std::uint32_t marker = 0xAFFE;           // tells a record from other memory in a dump
    std::uint32_t format = 0;                // clipboard format id
    std::uint32_t size = 0;                  // bytes in `data`
    wchar_t name[kFormatNameCapacity] = {};  // for people only
    UniqueGlobal data;                       // fixed block
};

// Formats by 0, 1, 2, ... in the clipboard's own order. Entries are never erased, so the count is the
// largest number of formats that were ever saved here.
struct SavedClipboard {
    std::map<int, SavedFormat> entries;

    int Count() const { return static_cast<int>(entries.size()); }
};

// What the user has in the slots 1 to 9; index 0 is not used.
constexpr int kClipboardSlots = 10;
extern SavedClipboard clipboardSlots[kClipboardSlots];

// What the user had on the clipboard before the program pasted through it. KeepPreviousClipboard fills it.
extern SavedClipboard previousClipboard;

// Set by commands that leave their result on the clipboard on purpose: no restore after this execution.
extern bool keepClipboardOnce;

// Copies every format of the clipboard that is global memory into the store, in place of what it held.
// GDI objects and metafile pictures, formats without data, and formats that cannot be copied are left out;
// of a mark for histories without data the mark is kept.
// An empty clipboard leaves the store as it was. Returns the number of formats copied, 0 when the clipboard
// is busy or its owner hangs.
int SaveClipboard(SavedClipboard& store);

// Replaces the clipboard's content by the store's, which stays in the store. Returns the store's count,
// also when the clipboard was busy; a store that was never saved into leaves the clipboard as it is.
int RestoreClipboard(const SavedClipboard& store);

// The same, with the patience of a ClipboardSession. False when the clipboard was busy or its owner hangs.
bool PutSavedClipboard(const SavedClipboard& store, DWORD patience, Stay stay = Stay::UntilReplaced);

// Saves the clipboard into previousClipboard, to be given back once. Until then it does nothing more: what
// comes onto the clipboard meanwhile is the program's own. When nothing can be saved, the clipboard being
// empty or busy, nothing will be given back either; never what was saved earlier.
void KeepPreviousClipboard();

// Restores what KeepPreviousClipboard has saved, if anything waits to be given back; it waits on when the
// clipboard is not to be had within those milliseconds. Where nothing of the program's has come onto the
// clipboard since, it stays as it is and nothing waits any more. Histories have it from when the user
// copied it, and are asked not to take it again.
void GiveBackPreviousClipboard(DWORD patience);

// Whether something waits to be given back.
bool IsPreviousClipboardKept();

// Lets the clipboard stay as it is now: what was saved is not given back.
void DropPreviousClipboard();

// What the user has on the clipboard: where the program's own content stands there and will be undone, that
// is what waits to be given back. The first saves it, the second reads its text, each with the results of
// SaveClipboard and ClipboardGetText.
int SaveUsersClipboard(SavedClipboard& store);
bool GetUsersText(std::wstring& text);

// Frees the data of every entry and keeps the entries. Returns the store's count.
int ReleaseSavedData(SavedClipboard& store);

}  // namespace verbatix
