#include "clipboard/saved_clipboard.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/debug.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/clipboard_text.h"
#include "hotkeys/key_simulation.h"

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

// False, and the entry without data, when there is no memory.
static bool Keep(SavedFormat& entry, UINT format, std::string_view bytes) {
    entry.data.Reset(GlobalAlloc(GPTR, bytes.size()));
    if (!entry.data) return false;
    std::copy_n(bytes.data(), bytes.size(), static_cast<char*>(entry.data.Get()));
    entry.size = static_cast<std::uint32_t>(bytes.size());
    entry.format = format;
    ClipboardFormatName(format, entry.name);
    return true;
}

static std::string_view KeptBytes(const SavedFormat& entry) {
    return {static_cast<const char*>(entry.data.Get()), entry.data ? entry.size : 0};
}

// Copies one format of the opened clipboard into the entry with that key. False when there is nothing to
// copy or no memory to copy it to.
static bool SaveFormat(SavedClipboard& store, int key, UINT format) {
    if (IsGdiFormat(format)) return false;
    const LockedBlock source(GetClipboardData(format));
    // Sizes are kept in 32 bits; of a block beyond 4 GB the first part is taken.
    std::string_view bytes = source.Bytes().substr(0, UINT32_MAX);
    constexpr std::string_view kMark("\0\0\0\0", sizeof(DWORD));
    if (bytes.empty() && IsHistoryMark(format)) bytes = kMark;
    return !bytes.empty() && Keep(store.entries[key], format, bytes);
}

static void Replace(SavedClipboard& store, SavedClipboard fresh) {
    ReleaseSavedData(store);
    DebugLine(L"Free\n");
    for (auto& [key, entry] : fresh.entries) store.entries[key] = std::move(entry);
}

// What the store holds goes only when all is read: a clipboard that is lost halfway must not cost the user
// what he has in a slot.
int SaveClipboard(SavedClipboard& store) {
    SavedClipboard fresh;
    int saved = 0;
    bool isEmpty = true;
    const bool isRead = ReadClipboard([&] {
        saved = 0;
        fresh.entries.clear();
        isEmpty = EnumClipboardFormats(0) == 0;
        for (UINT format = EnumClipboardFormats(0); format; format = EnumClipboardFormats(format)) {
            if (SaveFormat(fresh, saved, format)) ++saved;
        }
        return true;
    });
    if (!isRead || isEmpty) return 0;
    Replace(store, std::move(fresh));
    return saved;
}

int RestoreClipboard(const SavedClipboard& store) {
    PutSavedClipboard(store, kClipboardPatience);
    return store.Count();
}

bool PutSavedClipboard(const SavedClipboard& store, DWORD patience, Stay stay) {
    if (store.entries.empty()) return true;
    return FillClipboard(patience, [&] {
        for (const auto& [key, entry] : store.entries) {
            // Released entries are offered too; the system refuses format 0, and nobody minds.
            const std::string_view bytes = KeptBytes(entry);
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
    if (isKept) return;
    isKept = SaveClipboard(previousClipboard) > 0;
    keptAt = Moment();
}

void GiveBackPreviousClipboard(DWORD patience) {
    if (!isKept) return;
    if (IsStillTheUsers() || PutSavedClipboard(previousClipboard, patience, Stay::ForThePaste))
        isKept = false;
}

int SaveUsersClipboard(SavedClipboard& store) {
    if (!IsOursForThePaste()) return SaveClipboard(store);
    SavedClipboard fresh;
    int saved = 0;
    for (const auto& [key, entry] : previousClipboard.entries) {
        const std::string_view bytes = KeptBytes(entry);
        if (!bytes.empty() && Keep(fresh.entries[saved], entry.format, bytes)) ++saved;
    }
    Replace(store, std::move(fresh));
    return saved;
}

static const SavedFormat* FindKept(UINT format) {
    for (const auto& [key, entry] : previousClipboard.entries) {
        if (entry.format == format) return &entry;
    }
    return nullptr;
}

bool GetUsersText(std::wstring& text) {
    if (!IsOursForThePaste()) return ClipboardGetText(text);
    if (const SavedFormat* const wide = FindKept(CF_UNICODETEXT)) {
        text = WideTextOf(KeptBytes(*wide));
        return true;
    }
    const SavedFormat* const narrow = FindKept(CF_TEXT);
    if (narrow) text = AnsiTextOf(KeptBytes(*narrow));
    return narrow != nullptr;
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
