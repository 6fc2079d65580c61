#include "ui/state/entry_uses.h"

#include <algorithm>
#include <ctime>
#include <utility>

#include "base/aside.h"
#include "hotkeys/keyboard_hook.h"
#include "store/file_commit.h"
#include "store/list_file.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Counting {
    UseBook book;
    ULONGLONG unwrittenSince = 0;  // milliseconds since the system started; 0: everything is written
    bool hasChanged = false;
};

Counting counting;

void NoteChange() {
    counting.hasChanged = true;
    if (!counting.unwrittenSince) counting.unwrittenSince = GetTickCount64();
}

// What is to be written, of the entries that there still are; nothing while there is nothing to write, or
// nobody knows which entries there are.
std::string TakeUnwritten() {
    if (!std::exchange(counting.unwrittenSince, 0) || IsListUnread()) return {};
    std::unordered_set<UseKey> kept;
    for (const auto& [position, slot] : mainWindow.entries) kept.insert(UseKeyOf(slot.current));
    return FormatUses(counting.book, kept);
}

DWORD MillisecondsIdle() {
    LASTINPUTINFO last = {sizeof last, 0};
    return GetLastInputInfo(&last) ? GetTickCount() - last.dwTime : 0;
}

}  // namespace

void StartCountingUses() {
    counting = {ReadUses(), 0, false};
}

void NoteUse(unsigned keyCode, unsigned modifier, const std::wstring& text) {
    CountUse(counting.book, UseKeyOf(keyCode, modifier, text), std::time(nullptr));
    NoteChange();
}

void OnEntriesEdited(const EditedKeys& edited) {
    CarryUses(counting.book, edited);
    if (!counting.book.empty()) NoteChange();
}

Uses UsesOf(const ListEntry& entry) {
    const auto found = counting.book.find(UseKeyOf(entry));
    return found == counting.book.end() ? Uses{} : found->second;
}

std::vector<int> LastUsed(const EntryList& list, std::size_t most) {
    std::vector<std::pair<std::int64_t, int>> used;
    for (const auto& [position, slot] : list) {
        if (IsBlank(slot.current)) continue;
        if (const Uses uses = UsesOf(slot.current); uses.count) used.emplace_back(uses.last, position);
    }
    std::stable_sort(used.begin(), used.end(),
                     [](const auto& a, const auto& b) { return b.first < a.first; });
    std::vector<int> positions;
    for (const auto& [last, position] : used) {
        if (positions.size() < most) positions.push_back(position);
    }
    return positions;
}

bool HaveUsesChanged() {
    return std::exchange(counting.hasChanged, false);
}

void WriteUsesInTime() {
    constexpr ULONGLONG kLate = 3 * 60 * 1000;
    constexpr DWORD kNobodyTypes = 3000;
    constexpr DWORD kLongestWait = 2000;
    const bool isTime = counting.unwrittenSince && GetTickCount64() - counting.unwrittenSince >= kLate;
    if (!isTime || keyboardHook.trigger.busy || MillisecondsIdle() < kNobodyTypes) return;
    const std::string bytes = TakeUnwritten();
    if (bytes.empty()) return;
    // On a disk that has to spin up first, a hotkey would wait for it.
    DoAside([path = UsesPath(), bytes] { CommitFile(path, bytes); }, kLongestWait);
}

void WriteUses() {
    const std::string bytes = TakeUnwritten();
    if (!bytes.empty()) CommitFile(UsesPath(), bytes);
}

}  // namespace verbatix
