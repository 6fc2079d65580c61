#include "store/list_file.h"

#include <cwchar>
#include <set>
#include <vector>

#include "base/debug.h"
#include "base/language.h"
#include "base/text.h"
#include "store/entry_syntax.h"
#include "store/profile.h"
#include "store/profile_section.h"
#include "store/settings_file.h"
#include "store/settings_path.h"

namespace verbatix {

namespace {

constexpr const wchar_t* kTextSection = L"list_text";
constexpr const wchar_t* kLabelSection = L"list_label";
constexpr const wchar_t* kOrderSection = L"list_order";
constexpr const wchar_t* kCountKey = L"listcmd_count";

// Sizes of the values that are read, terminator included.
constexpr std::size_t kValueSize = 4096;
constexpr std::size_t kLabelSize = 256;
constexpr std::size_t kOrderSize = 16;

// From this number of entries on whole sections are written.
constexpr std::size_t kManyEntries = 8;

std::wstring firstRunList;

void Export(const ListEntry& entry, ExportSink& sink) {
    const std::wstring key = EntryKey(sink.count++) + L'=';
    sink.textLines += key + FormatEntryValue(entry) + L"\r\n";
    sink.labelLines += key + entry.label + L"\r\n";
    sink.orderLines += key + Format(L"%d", entry.order) + L"\r\n";
}

// The same keys in the same order as WriteEntry for each.
void WriteMany(const std::vector<const ListEntry*>& entries) {
    ProfileValues texts;
    ProfileValues orders;
    ProfileValues labels;
    for (const ListEntry* entry : entries) {
        const std::wstring key = EntryKey(entry->number);
        texts.emplace_back(key, FormatStoredValue(*entry));
        orders.emplace_back(key, Format(L"%d", entry->order));
        labels.emplace_back(key, entry->label);
    }
    WriteSection(kTextSection, texts);
    WriteSection(kOrderSection, orders);
    WriteSection(kLabelSection, labels);
}

void WriteAll(const std::vector<const ListEntry*>& entries) {
    if (entries.size() >= kManyEntries) {
        WriteMany(entries);
    } else {
        for (const ListEntry* entry : entries) WriteEntry(*entry);
    }
}

struct NumberedTexts {
    unsigned number = 0;
    EntryTexts texts;
};

// The list keys below `limit` that stand in the file, by number, at most kMostEntries.
std::vector<NumberedTexts> ReadEntryTexts(const std::wstring& path, unsigned limit) {
    ProfileSection values = ReadSection(path, kTextSection);
    ProfileSection labels = ReadSection(path, kLabelSection);
    ProfileSection orders = ReadSection(path, kOrderSection);
    std::set<unsigned> numbers;
    for (const std::wstring& key : SectionKeys(values)) {
        const std::optional<unsigned> number = EntryNumberOfKey(key);
        if (number && *number < limit) numbers.insert(*number);
    }
    std::vector<NumberedTexts> entries;
    for (const unsigned number : numbers) {
        if (entries.size() == kMostEntries) break;
        const std::wstring key = EntryKey(number);
        entries.push_back({number,
                           {SectionText(values, key, kValueSize), SectionText(labels, key, kLabelSize),
                            SectionText(orders, key, kOrderSize)}});
    }
    return entries;
}

bool Add(EntryList& list, const EntryTexts& entry) {
    return ParseStoredEntry(list, entry.value, entry.label, ToInt(entry.order));
}

void AddFirstRunList(EntryList& list, const ListClient& client) {
    for (const EntryTexts& entry : ParseExport(firstRunList)) Add(list, entry);
    SaveList(list, client, false, false);
}

void RefreshViews(const ListClient& client, bool refresh) {
    if (client.refreshViews) client.refreshViews(refresh);
}

}  // namespace

int WriteEntry(const ListEntry& entry, ExportSink* sink, const ListEntry* previous) {
    if (sink) {
        Export(entry, *sink);
        return 1;
    }
    const std::wstring key = EntryKey(entry.number);
    if (!previous || previous->keyCode != entry.keyCode || previous->modifier != entry.modifier ||
        std::wcscmp(previous->text, entry.text) != 0) {
        WriteProfileText(kTextSection, key.c_str(), FormatStoredValue(entry));
    }
    if (!previous || previous->order != entry.order) {
        WriteProfileNumber(kOrderSection, key.c_str(), entry.order);
    }
    if (!previous || std::wcscmp(previous->label, entry.label) != 0) {
        WriteProfileText(kLabelSection, key.c_str(), entry.label);
    }
    return 1;
}

void SaveList(EntryList& list, const ListClient& client, bool refresh, bool changedOnly) {
    if (client.collectEdits) client.collectEdits();
    std::vector<const ListEntry*> written;
    std::vector<EntrySlot*> changed;
    for (auto& [position, slot] : list) {
        // These two are the program's own notes; the file has no place for them.
        slot.saved.groupRef = slot.current.groupRef;
        slot.saved.kind = slot.current.kind;
        if (changedOnly && !IsDirty(slot)) continue;
        DebugLine(L"Save: %d slot: %d\n", static_cast<int>(slot.current.number), position);
        written.push_back(&slot.current);
        changed.push_back(&slot);
    }
    WriteAll(written);
    for (EntrySlot* slot : changed) {
        const bool isNewText = std::wcscmp(slot->current.text, slot->saved.text) != 0;
        if (isNewText) slot->current.kind = -1;
        slot->saved = slot->current;
        if (isNewText && client.classifyEntry)
            slot->current.kind = client.classifyEntry(slot->current.text);
    }
    if (WriteProgramNumber(kCountKey, static_cast<int>(list.size()))) {
        RefreshViews(client, refresh);
    } else if (client.showMessage) {
        client.showMessage(client.window, (LanguageText(53) + L"\n" + settingsPath).c_str(), L"", MB_OK);
    }
}

void LoadList(EntryList& list, const ListClient& client) {
    // A locked file would read as one without a list, and the first-run list would be written over it.
    WaitUntilReadable(settingsPath, 2000);
    const int count = ReadProgramNumber(kCountKey, -1);
    if (count == -1) {
        AddFirstRunList(list, client);
    } else if (count > 0) {
        for (const NumberedTexts& entry : ReadEntryTexts(settingsPath, static_cast<unsigned>(count))) {
            if (!Add(list, entry.texts)) continue;
            // Behind a gap or a skipped value an entry gets a smaller number than its key has. That makes
            // it dirty, so that the next save, which writes the smaller count, also writes it where it
            // counts.
            list.rbegin()->second.saved.number = entry.number;
        }
    }
    RefreshViews(client, false);
    if (client.selectNothing) client.selectNothing();
}

void MergeListFile(EntryList& list, const ListClient& client, const std::wstring& path) {
    // A value of up to two characters is no entry. The file's own count is not asked.
    std::vector<NumberedTexts> entries = ReadEntryTexts(path, kMergedKeys);
    std::erase_if(entries, [](const NumberedTexts& entry) { return entry.texts.value.size() <= 2; });
    const std::wstring question = Format(L"%ls: %d\n\n%ls", LanguageText(129).c_str(),
                                         static_cast<int>(entries.size()), LanguageText(128).c_str());
    if (!client.showMessage ||
        client.showMessage(client.window, question.c_str(), L"Verbatix", MB_YESNOCANCEL) != IDYES) {
        return;
    }
    for (const NumberedTexts& entry : entries) Add(list, entry.texts);
    SaveList(list, client, true, false);
    RefreshViews(client, true);
}

void SetFirstRunList(std::wstring text) {
    firstRunList = std::move(text);
}

}  // namespace verbatix
