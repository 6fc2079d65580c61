#include "store/list_exchange.h"

#include <algorithm>
#include <array>
#include <cwctype>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "store/backup.h"
#include "store/entry_syntax.h"
#include "store/file_commit.h"
#include "store/settings_file.h"
#include "store/stored_texts.h"
#include "store/text_file.h"

namespace verbatix {

namespace {

// A value of up to two characters is no entry.
constexpr std::size_t kLongestNothing = 2;

bool IsSettingsFile(const std::vector<EntryTexts>& entries) {
    return std::any_of(entries.begin(), entries.end(), [](const EntryTexts& entry) {
        return TrimBlanks(entry.value).ends_with(kEndMarker);
    });
}

// One pass: a hostile file has as many lines as it likes.
bool HasListSection(std::wstring_view text) {
    constexpr std::wstring_view kHeading = L"[list_text]";
    const auto same = [](wchar_t a, wchar_t b) {
        return (a >= L'A' && a <= L'Z' ? a - L'A' + L'a' : a) == b;
    };
    return std::search(text.begin(), text.end(), kHeading.begin(), kHeading.end(), same) != text.end();
}

// The entries whose key has a number, but none beyond the merged ones; those are counted.
std::vector<EntryTexts> TakeNumbered(std::vector<EntryTexts> entries, int& beyond) {
    std::vector<EntryTexts> taken;
    for (EntryTexts& entry : entries) {
        const std::optional<unsigned> number = EntryNumberOfKey(entry.key);
        if (!number) continue;
        if (*number < kMergedKeys) {
            taken.push_back(std::move(entry));
        } else {
            ++beyond;
        }
    }
    return taken;
}

void Tell(const ListClient& client, const std::wstring& text) {
    if (client.showMessage)
        client.showMessage(client.window, text.c_str(), kProductName, MB_OK | MB_ICONWARNING);
}

// Whether the user said Yes.
bool AskAndAdd(EntryList& list, const ListClient& client, const std::vector<EntryTexts>& entries) {
    const std::wstring question =
        Format(L"%ls: %d\n\n%ls", LanguageText(text::kEntriesFound).c_str(),
               static_cast<int>(entries.size()), LanguageText(text::kAddEntries).c_str());
    if (!client.showMessage ||
        client.showMessage(client.window, question.c_str(), kProductName, MB_YESNOCANCEL) != IDYES) {
        return false;
    }
    CopyToBackupFolder();
    for (const EntryTexts& entry : entries) {
        if (!ParseStoredEntry(list, entry.value, entry.label, ToInt(entry.order))) continue;
        // The list takes it for one that the file has already; if this save fails, the next must write it.
        uint32_t& savedNumber = list.rbegin()->second.saved.number;
        savedNumber = ~savedNumber;
    }
    SaveList(list, client, true, false);
    if (client.refreshViews) client.refreshViews(true);
    return true;
}

}  // namespace

std::wstring ExportText(const EntryList& list, const std::vector<int>& positions, int* count) {
    ExportSink sink;
    for (const int position : positions) {
        const auto found = list.find(position);
        if (found != list.end() && !IsBlank(found->second.current))
            WriteEntry(found->second.current, &sink);
    }
    if (count) *count = static_cast<int>(sink.count);
    return FormatExport(sink);
}

std::vector<int> AllPositions(const EntryList& list) {
    std::vector<int> positions;
    for (const auto& [position, slot] : list) {
        if (!IsBlank(slot.current)) positions.push_back(position);
    }
    return positions;
}

bool WriteExportFile(const std::wstring& path, const std::wstring& text) {
    return !path.empty() && CommitFile(path, AsUtf16File(text)) == ERROR_SUCCESS;
}

std::wstring ExchangeFilePath() {
    std::array<wchar_t, MAX_PATH + 1> folder = {};
    const DWORD length = GetTempPathW(static_cast<DWORD>(folder.size()), folder.data());
    if (length == 0 || length >= folder.size()) return {};
    return std::wstring(folder.data(), length) + kProductName + L"_exchange.txt";
}

ListToImport ReadListToImport(const std::wstring& path) {
    ListToImport result;
    const std::optional<std::string> bytes = ReadWholeFile(path, kLargestImport);
    if (!bytes) {
        const bool isLarge = GetLastError() == ERROR_FILE_TOO_LARGE;
        result.problem = isLarge ? ListToImport::kTooLarge : ListToImport::kUnreadable;
        return result;
    }
    const std::wstring text = DecodeText(*bytes);
    if (HasListSection(text)) result.entries = TakeNumbered(ParseExport(text), result.leftOut);
    if (IsSettingsFile(result.entries)) {
        result.entries.clear();
        for (NumberedTexts& entry :
             ReadEntryTexts(ForeignSettingsFile(path).Path(), kMergedKeys, kMergedKeys).entries) {
            result.entries.push_back(std::move(entry.texts));
        }
    }
    std::erase_if(result.entries,
                  [](const EntryTexts& entry) { return entry.value.size() <= kLongestNothing; });
    if (result.entries.empty()) result.problem = ListToImport::kNoEntries;
    return result;
}

void ImportListFile(EntryList& list, const ListClient& client, const std::wstring& path) {
    const ListToImport import = ReadListToImport(path);
    switch (import.problem) {
        case ListToImport::kUnreadable:
            return Tell(client, LanguageText(text::kCannotOpenFile) + L":\n" + path);
        case ListToImport::kTooLarge: return Tell(client, LanguageText(text::kFileTooLarge) + L"\n" + path);
        case ListToImport::kNoEntries:
            return Tell(client, LanguageText(text::kNothingFound) + L"\n" + path);
        case ListToImport::kNone: break;
    }
    if (AskAndAdd(list, client, import.entries) && import.leftOut > 0) {
        Tell(client, FillIn(LanguageText(text::kSomeLeftOut), {std::to_wstring(import.leftOut)}));
    }
}

}  // namespace verbatix
