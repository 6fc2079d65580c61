#include "store/list_file.h"

#include <algorithm>
#include <cwchar>
#include <vector>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "store/backup.h"
#include "store/entry_syntax.h"
#include "store/list_hotkeys.h"
#include "store/profile.h"
#include "store/profile_section.h"
#include "store/settings.h"
#include "store/settings_file.h"
#include "store/settings_path.h"
#include "store/stored_texts.h"

namespace verbatix {

namespace {

constexpr const wchar_t* kCountKey = L"listcmd_count";

// From this number of entries on whole sections are written.
constexpr std::size_t kManyEntries = 8;

std::wstring firstRunList;

// The list in the file could not be read: nothing may be written over it.
bool isListUnread = false;
// The file holds more entries than were loaded.
bool isListCut = false;
// The file that the list was loaded from; empty when there was none.
std::wstring loadedPath;

void Export(const ListEntry& entry, ExportSink& sink) {
    const std::wstring key = EntryKey(sink.count++) + L'=';
    sink.textLines += key + ProfileLine(FormatEntryValue(entry)) + L"\r\n";
    sink.labelLines += key + ProfileLine(entry.label) + L"\r\n";
    sink.orderLines += key + Format(L"%d", entry.order) + L"\r\n";
}

// Writes an entry, or what differs from `previous`; false when a write failed.
bool WriteKeys(const ListEntry& entry, const ListEntry* previous) {
    const std::wstring key = EntryKey(entry.number);
    bool isWritten = true;
    if (!previous || previous->keyCode != entry.keyCode || previous->modifier != entry.modifier ||
        std::wcscmp(previous->text, entry.text) != 0) {
        isWritten &= WriteProfileText(kTextSection, key.c_str(), FormatStoredValue(entry));
    }
    if (!previous || previous->order != entry.order) {
        isWritten &= WriteProfileNumber(kOrderSection, key.c_str(), entry.order);
    }
    if (!previous || std::wcscmp(previous->label, entry.label) != 0) {
        isWritten &= WriteProfileText(kLabelSection, key.c_str(), entry.label);
    }
    return isWritten;
}

// The same keys in the same order as WriteKeys for each.
bool WriteMany(const std::vector<EntrySlot*>& slots) {
    ProfileValues texts;
    ProfileValues orders;
    ProfileValues labels;
    for (const EntrySlot* slot : slots) {
        const ListEntry& entry = slot->current;
        const std::wstring key = EntryKey(entry.number);
        texts.emplace_back(key, FormatStoredValue(entry));
        orders.emplace_back(key, Format(L"%d", entry.order));
        labels.emplace_back(key, entry.label);
    }
    // All three are tried: what can be saved is saved.
    const bool areTextsWritten = WriteSection(kTextSection, texts);
    const bool areOrdersWritten = WriteSection(kOrderSection, orders);
    const bool areLabelsWritten = WriteSection(kLabelSection, labels);
    return areTextsWritten && areOrdersWritten && areLabelsWritten;
}

// An entry was handed to the file: its text is classified anew, and it is clean unless the write failed.
void AfterWrite(EntrySlot& slot, const ListClient& client, bool isWritten) {
    ListEntry& entry = slot.current;
    const bool isNewText = std::wcscmp(entry.text, slot.saved.text) != 0;
    if (isNewText) entry.kind = -1;
    if (isWritten) slot.saved = entry;
    if (isNewText && client.classifyEntry) entry.kind = client.classifyEntry(entry.text);
}

// False when any write failed; entries that are not in the file as they should be stay dirty.
bool WriteSlots(const std::vector<EntrySlot*>& slots, const ListClient& client) {
    const bool isMany = slots.size() >= kManyEntries;
    if (isMany && WriteMany(slots)) {
        for (EntrySlot* slot : slots) AfterWrite(*slot, client, true);
        return true;
    }
    // A single text may be what the file refuses: the others are saved without it.
    const bool isHopeless = isMany && !PrepareSettingsFile(settingsPath);
    bool isAllWritten = true;
    for (EntrySlot* slot : slots) {
        const bool isWritten = !isHopeless && WriteKeys(slot->current, nullptr);
        AfterWrite(*slot, client, isWritten);
        isAllWritten &= isWritten;
    }
    return isAllWritten;
}

bool Add(EntryList& list, const EntryTexts& entry) {
    return ParseStoredEntry(list, entry.value, entry.label, ToInt(entry.order));
}

void AddStoredEntries(EntryList& list, unsigned count) {
    const StoredTexts stored = ReadEntryTexts(settingsPath, count, mostEntries);
    for (const NumberedTexts& entry : stored.entries) {
        if (!Add(list, entry.texts)) continue;
        // Behind a gap or a skipped value an entry gets a smaller number than its key has. That makes it
        // dirty, so that the next save, which writes the smaller count, also writes it where it counts.
        list.rbegin()->second.saved.number = entry.number;
    }
    // New entries go behind those that were left out.
    isListCut = stored.isCut;
    if (isListCut) nextEntryNumber = std::max(nextEntryNumber, stored.end);
}

void AddFirstRunList(EntryList& list, const ListClient& client) {
    for (const EntryTexts& entry : ParseExport(firstRunList)) Add(list, entry);
    SaveList(list, client, false, false);
}

bool IsListLost() {
    return loadedPath == settingsPath && IsSettingsFileLost(settingsPath);
}

int CountToStore(const EntryList& list) {
    return static_cast<int>(isListCut ? std::max<std::size_t>(list.size(), nextEntryNumber) : list.size());
}

void RefreshViews(const ListClient& client, bool refresh) {
    if (client.refreshViews) client.refreshViews(refresh);
}

void ReportUnsaved(const ListClient& client) {
    if (!client.showMessage) return;
    client.showMessage(client.window, (LanguageText(text::kListNotSaved) + L"\n" + settingsPath).c_str(),
                       L"", MB_OK);
}

}  // namespace

int WriteEntry(const ListEntry& entry, ExportSink* sink, const ListEntry* previous) {
    if (sink) {
        Export(entry, *sink);
        return 1;
    }
    WriteKeys(entry, previous);
    return 1;
}

void SaveList(EntryList& list, const ListClient& client, bool refresh, bool changedOnly) {
    if (client.collectEdits) client.collectEdits();
    CheckTimedBackup();
    if (IsListLost()) {
        // Somebody has deleted the file: what is in memory is all there is.
        changedOnly = false;
        SaveSettings();
        if (!keyboardHook.disabled.empty()) SaveDisabledHotkeys(keyboardHook.disabled);
    }
    std::vector<EntrySlot*> written;
    for (auto& [position, slot] : list) {
        // These two are the program's own notes; the file has no place for them.
        slot.saved.groupRef = slot.current.groupRef;
        slot.saved.kind = slot.current.kind;
        if (!changedOnly || IsDirty(slot)) written.push_back(&slot);
    }
    if (isListUnread) {
        for (EntrySlot* slot : written) AfterWrite(*slot, client, false);
        return ReportUnsaved(client);
    }
    const bool areEntriesWritten = WriteSlots(written, client);
    const bool isCountWritten = WriteProgramNumber(kCountKey, CountToStore(list));
    if (areEntriesWritten && isCountWritten && !changedOnly) SettingsFileIsWhole();
    if (isCountWritten) RefreshViews(client, refresh);
    if (!areEntriesWritten || !isCountWritten) ReportUnsaved(client);
}

bool HasUnsaved(const EntryList& list) {
    return IsListLost() || std::any_of(list.begin(), list.end(), [](const auto& entry) {
               ListEntry saved = entry.second.saved;
               saved.groupRef = entry.second.current.groupRef;
               saved.kind = entry.second.current.kind;
               return Differ(entry.second.current, saved);
           });
}

void LoadList(EntryList& list, const ListClient& client) {
    constexpr unsigned kLongestLock = 2000;
    isListUnread = isListCut = false;
    // Held until everything is read: a file that is locked in between would seem to have no list, and the
    // next save would write over the user's entries.
    std::optional<UniqueFile> guard = KeepReadable(settingsPath, kLongestLock);
    const int count = guard ? ReadProgramNumber(kCountKey, -1) : 0;
    loadedPath = guard && *guard ? settingsPath : std::wstring();
    SettingsFileIsWhole();
    if (!guard) {
        isListUnread = true;
        ReportUnsaved(client);
    } else if (count == -1) {
        guard->Reset();
        AddFirstRunList(list, client);
    } else if (count > 0) {
        AddStoredEntries(list, static_cast<unsigned>(count));
    }
    guard.reset();
    RefreshViews(client, false);
}

void SetFirstRunList(std::wstring text) {
    firstRunList = std::move(text);
}

}  // namespace verbatix
