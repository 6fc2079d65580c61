#include "store/list_file.h"

#include <algorithm>
#include <cwchar>
#include <utility>
#include <vector>

#include "base/language.h"
#include "base/text.h"
#include "store/backup.h"
#include "store/entry_syntax.h"
#include "store/list_damage.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "store/settings_file.h"
#include "store/settings_path.h"
#include "store/stored_texts.h"

namespace verbatix {

namespace {

std::wstring firstRunList;

// What the last LoadList met.
struct Loading {
    bool isUnread = false;  // the list in the file could not be read: nothing may be written over it
    // Lines that were left out keep their numbers: there are too many, or they were not understood.
    bool isGappy = false;
    int misreadLines = 0;
};

Loading loading;

// The user has been told that saving fails, and it has not succeeded since.
bool isFailureTold = false;

void Export(const ListEntry& entry, ExportSink& sink) {
    const std::wstring key = EntryKey(sink.count++) + L'=';
    sink.textLines += key + ProfileLine(FormatEntryValue(entry)) + L"\r\n";
    sink.labelLines += key + ProfileLine(entry.label) + L"\r\n";
    sink.orderLines += key + Format(L"%d", entry.order) + L"\r\n";
}

// The keys of an entry that differ from those of `previous`.
void AddValues(IniValues& values, const ListEntry& entry, const ListEntry* previous = nullptr) {
    const std::wstring key = EntryKey(entry.number);
    if (!previous || previous->keyCode != entry.keyCode || previous->modifier != entry.modifier ||
        std::wcscmp(previous->text, entry.text) != 0) {
        values.push_back({kTextSection, key, FormatStoredValue(entry)});
    }
    if (!previous || previous->order != entry.order) {
        values.push_back({kOrderSection, key, Format(L"%d", entry.order)});
    }
    if (!previous || std::wcscmp(previous->label, entry.label) != 0) {
        values.push_back({kLabelSection, key, StoredLabel(entry.label)});
    }
}

// An entry was handed to the file: its text is classified anew, and it is clean unless the write failed.
void AfterWrite(EntrySlot& slot, const ListClient& client, bool isWritten) {
    ListEntry& entry = slot.current;
    const bool isNewText = std::wcscmp(entry.text, slot.saved.text) != 0;
    if (isNewText) entry.kind = -1;
    if (isWritten) slot.saved = entry;
    if (isNewText && client.classifyEntry) entry.kind = client.classifyEntry(entry.text);
}

void TellOfEdits(const std::vector<EntrySlot*>& changed, const ListClient& client) {
    if (changed.empty() || !client.entriesEdited) return;
    EditedKeys edited;
    for (const EntrySlot* slot : changed) {
        if (IsBlank(slot->saved) || IsBlank(slot->current)) continue;
        edited.emplace_back(UseKeyOf(slot->saved), UseKeyOf(slot->current));
    }
    client.entriesEdited(edited);
}

bool Add(EntryList& list, const EntryTexts& entry) {
    return ParseStoredEntry(list, entry.value, entry.label, ToInt(entry.order));
}

// The entry counts as changed until it has been written.
void MarkUnwritten(EntrySlot& slot) {
    slot.saved.number = ~slot.current.number;
}

void AddStoredEntries(EntryList& list, unsigned count) {
    const StoredTexts stored = ReadEntryTexts(settingsPath, count, mostEntries);
    for (const NumberedTexts& entry : stored.entries) {
        if (Add(list, entry.texts)) {
            // Behind a gap an entry gets a smaller number than its key has. That makes it dirty, so that
            // the next save, which writes the smaller count, also writes it where it counts.
            list.rbegin()->second.saved.number = entry.number;
        } else if (!entry.texts.value.empty()) {
            // A slip of the user's hand: the line keeps its key and its place among the others.
            ++loading.misreadLines;
            loading.isGappy = true;
            nextEntryNumber = std::max(nextEntryNumber, entry.number + 1);
        }
    }
    // New entries go behind those that were left out.
    loading.isGappy |= stored.isCut;
    if (stored.isCut) nextEntryNumber = std::max(nextEntryNumber, stored.end);
}

void AddFirstRunList(EntryList& list, const ListClient& client) {
    for (const EntryTexts& entry : ParseExport(firstRunList)) {
        if (Add(list, entry)) MarkUnwritten(list.rbegin()->second);
    }
    SaveList(list, client, false, false);
}

int CountToStore(const EntryList& list) {
    return static_cast<int>(loading.isGappy ? std::max<std::size_t>(list.size(), nextEntryNumber)
                                            : list.size());
}

void RefreshViews(const ListClient& client, bool refresh) {
    if (client.refreshViews) client.refreshViews(refresh);
}

void ReportUnsaved(const ListClient& client) {
    if (!client.showMessage || std::exchange(isFailureTold, true)) return;
    client.showMessage(client.window, (LanguageText(text::kListNotSaved) + L"\n" + settingsPath).c_str(),
                       L"", MB_OK);
}

// Loads the list into an empty one. False when the file cannot be read within that time.
bool LoadWithin(unsigned milliseconds, EntryList& list, const ListClient& client) {
    // Held until everything is read: a file that is locked in between would seem to have no list, and the
    // next save would write over the user's entries.
    std::optional<UniqueFile> guard = KeepReadable(settingsPath, milliseconds);
    loading = {};
    loading.isUnread = !guard;
    if (!guard) return false;
    RememberSettingsFile();
    const int count = ReadProgramNumber(kCountKey, -1);
    const bool hasBeenList = FoundDamage() != nullptr;
    if (count > 0) AddStoredEntries(list, static_cast<unsigned>(count));
    guard.reset();
    if (count == -1 && !hasBeenList) AddFirstRunList(list, client);
    return true;
}

}  // namespace

int WriteEntry(const ListEntry& entry, ExportSink* sink, const ListEntry* previous) {
    if (sink) {
        Export(entry, *sink);
        return 1;
    }
    IniValues values;
    AddValues(values, entry, previous);
    WriteSettingsTogether(std::move(values));
    return 1;
}

void SaveList(EntryList& list, const ListClient& client, bool refresh, bool changedOnly) {
    if (client.collectEdits) client.collectEdits();
    CheckTimedBackup();
    std::vector<EntrySlot*> written;
    IniValues values;
    for (auto& [position, slot] : list) {
        // These two are the program's own notes; the file has no place for them.
        slot.saved.groupRef = slot.current.groupRef;
        slot.saved.kind = slot.current.kind;
        if (changedOnly && !IsDirty(slot)) continue;
        written.push_back(&slot);
        AddValues(values, slot.current);
    }
    TellOfEdits(written, client);
    values.push_back({kProgramSection, kCountKey, Format(L"%d", CountToStore(list))});
    const bool isWritten = !loading.isUnread && WriteSettingsTogether(std::move(values));
    for (EntrySlot* slot : written) AfterWrite(*slot, client, isWritten);
    if (isWritten) isFailureTold = false;
    // What has changed is shown whether or not it could be written, and before the box, which lets messages
    // through.
    RefreshViews(client, refresh);
    if (!isWritten) ReportUnsaved(client);
}

bool HasUnsaved(const EntryList& list) {
    return IsSettingsFileLost() || HasUnwrittenSettings() ||
           std::any_of(list.begin(), list.end(), [](const auto& entry) {
               ListEntry saved = entry.second.saved;
               saved.groupRef = entry.second.current.groupRef;
               saved.kind = entry.second.current.kind;
               return Differ(entry.second.current, saved);
           });
}

void LoadList(EntryList& list, const ListClient& client) {
    constexpr unsigned kLongestLock = 2000;
    isFailureTold = false;
    const bool isRead = LoadWithin(kLongestLock, list, client);
    // A lock will end, and the window says that it is waited for.
    if (!isRead && !IsHeldByAnother(settingsPath)) ReportUnsaved(client);
    RefreshViews(client, false);
}

bool IsListUnread() {
    return loading.isUnread;
}

bool LoadUnreadList(EntryList& list, const ListClient& client) {
    EntryList loaded;
    const uint32_t next = std::exchange(nextEntryNumber, 0);
    if (!LoadWithin(0, loaded, client)) {
        nextEntryNumber = next;
        return false;
    }
    const EntryList waiting = std::exchange(list, std::move(loaded));
    for (const auto& [position, slot] : waiting) {
        const ListEntry& entry = slot.current;
        if (IsBlank(entry)) continue;
        AddEntry(list, entry.text, entry.label, entry.keyCode, entry.modifier, -1, entry.order);
        MarkUnwritten(list.rbegin()->second);
    }
    // What the editor shows is of the list so far.
    ListClient quiet = client;
    quiet.collectEdits = nullptr;
    if (HasUnsaved(list)) SaveList(list, quiet, false, true);
    RefreshViews(client, false);
    return true;
}

void ReloadList(EntryList& list, const ListClient& client) {
    list.clear();
    nextEntryNumber = 0;
    LoadList(list, client);
}

int MisreadLines() {
    return loading.misreadLines;
}

void SetFirstRunList(std::wstring text) {
    firstRunList = std::move(text);
}

}  // namespace verbatix
