#include "clipboard/saved_clipboard.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/debug.h"
#include "clipboard/clipboard_session.h"

namespace verbatix {

SavedClipboard clipboardSlots[kClipboardSlots];
SavedClipboard previousClipboard;
bool keepClipboardOnce = false;

// Formats whose handle is a GDI object or, the metafile pictures, memory that holds one: a copy of the
// bytes would outlive the object. Locking a GDI handle as memory fails as a rule, but its number could also
// happen to be the address of something, so it is not even tried.
static bool IsGdiFormat(UINT format) {
    static constexpr struct {
        UINT first;
        UINT last;
    } kRanges[] = {
        {CF_BITMAP, CF_METAFILEPICT},           {CF_PALETTE, CF_PALETTE},
        {CF_ENHMETAFILE, CF_ENHMETAFILE},       {CF_DSPBITMAP, CF_DSPMETAFILEPICT},
        {CF_DSPENHMETAFILE, CF_DSPENHMETAFILE}, {CF_GDIOBJFIRST, CF_GDIOBJLAST},
    };
    return std::any_of(std::begin(kRanges), std::end(kRanges),
                       [&](const auto& range) { return format >= range.first && format <= range.last; });
}

// Copies one format of the opened clipboard into the entry with that key. False, and the entry without
// data, when there is nothing to copy or no memory to copy it to.
static bool SaveFormat(SavedClipboard& store, int key, UINT format) {
    if (IsGdiFormat(format)) return false;
    const LockedBlock source(GetClipboardData(format));
    // Sizes are kept in 32 bits; of a block beyond 4 GB the first part is taken.
    std::string_view bytes = source.Bytes().substr(0, UINT32_MAX);
    constexpr std::string_view kMark("\0\0\0\0", sizeof(DWORD));
    if (bytes.empty() && IsHistoryMark(format)) bytes = kMark;
    if (bytes.empty()) return false;
    SavedFormat& entry = store.entries[key];
    entry.data.Reset(GlobalAlloc(GPTR, bytes.size()));
    if (!entry.data) return false;
    std::copy_n(bytes.data(), bytes.size(), static_cast<char*>(entry.data.Get()));
    entry.size = static_cast<std::uint32_t>(bytes.size());
    entry.format = format;
    ClipboardFormatName(format, entry.name);
    return true;
}

int SaveClipboard(SavedClipboard& store) {
    int saved = 0;
    const bool isRead = ReadClipboard([&] {
        saved = 0;
        if (EnumClipboardFormats(0)) {
            ReleaseSavedData(store);
            DebugLine(L"Free\n");
        }
        for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
            if (SaveFormat(store, saved, format)) ++saved;
        }
        return true;
    });
    return isRead ? saved : 0;
}

int RestoreClipboard(const SavedClipboard& store) {
    PutSavedClipboard(store, kClipboardPatience);
    return store.Count();
}

bool PutSavedClipboard(const SavedClipboard& store, DWORD patience, Stay stay) {
    if (store.entries.empty()) return true;
    return WithClipboard(patience, [&] {
        EmptyClipboard();
        for (const auto& [key, entry] : store.entries) {
            // Released entries are offered too; the system refuses format 0, and nobody minds.
            const std::string_view bytes(static_cast<const char*>(entry.data.Get()),
                                         entry.data ? entry.size : 0);
            GiveToClipboard(entry.format, MakeClipboardBlock(bytes, bytes.size()));
        }
        MarkForHistory(stay);
        return true;
    });
}

namespace {

bool isKept = false;  // previousClipboard waits to be given back

struct Moment {
    DWORD content = GetClipboardSequenceNumber();  // 0 when the system does not tell it
    unsigned fills = ClipboardFills();
    unsigned copies = CopyStrokes();
};

Moment keptAt;

// Since it was kept the program has neither filled the clipboard nor asked another one to, or that has come
// to nothing: what is there now, somebody's tool may have put there, is the user's.
bool IsStillTheUsers() {
    const Moment now;
    return (now.content != 0 && now.content == keptAt.content) ||
           (now.fills == keptAt.fills && now.copies == keptAt.copies);
}

bool IsOursForThePaste() {
    return isKept && IsOurContent();
}

}  // namespace

void KeepPreviousClipboard() {
    if (!isKept) isKept = SaveClipboard(previousClipboard) > 0;
}

void GiveBackPreviousClipboard(DWORD patience) {
    if (isKept && PutSavedClipboard(previousClipboard, patience, Stay::ForThePaste)) isKept = false;
}

bool IsPreviousClipboardKept() {
    return isKept;
}

void DropPreviousClipboard() {
    isKept = false;
}

int ReleaseSavedData(SavedClipboard& store) {
    for (auto& [key, entry] : store.entries) {
        entry.data.Reset();
        entry.size = 0;
        entry.format = 0;
    }
    return store.Count();
}

}  // namespace verbatix
