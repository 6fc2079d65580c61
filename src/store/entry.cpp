#include "store/entry.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <iterator>

#include "base/text.h"

namespace verbatix {

uint32_t nextEntryNumber = 0;

bool Differ(const ListEntry& a, const ListEntry& b) {
    // Nothing but zeros lies behind a terminator, and of thousands of entries only that is looked at which
    // says something: all their bytes would take longer than a save.
    constexpr std::size_t kNumbers = offsetof(ListEntry, keyCode);
    return std::memcmp(reinterpret_cast<const char*>(&a) + kNumbers,
                       reinterpret_cast<const char*>(&b) + kNumbers, sizeof a - kNumbers) != 0 ||
           std::wcsncmp(a.label, b.label, std::size(a.label)) != 0 ||
           std::wcsncmp(a.text, b.text, std::size(a.text)) != 0;
}

bool IsBlank(const ListEntry& entry) {
    return entry.text[0] == L'\0' && entry.label[0] == L'\0';
}

std::optional<int> FirstBlankPosition(const EntryList& list) {
    for (const auto& [position, slot] : list) {
        if (IsBlank(slot.current)) return position;
    }
    return std::nullopt;
}

// The low byte as a signed number.
static int SignExtended(unsigned code) {
    return static_cast<int>((code & 0xff) ^ 0x80) - 0x80;
}

// The key as the record holds it. The code is one signed byte, so codes from 128 on become negative. Lower
// case is lifted only outside the number pad and function keys, and the lower-case letters lie inside those
// ranges: the lift is left to what the system calls lower case elsewhere. Files depend on it; keep it so.
static uint32_t RecordKeyCode(unsigned keyCode) {
    int key = SignExtended(keyCode);
    const bool isFunctionKey = key >= VK_F1 && key <= VK_F12;
    const bool isNumberPad = key >= VK_NUMPAD0 && key <= VK_DIVIDE;
    if (!isFunctionKey && !isNumberPad && IsCharLowerW(static_cast<wchar_t>(key))) {
        key = SignExtended(static_cast<unsigned>(key - 32));
    }
    return static_cast<uint32_t>(key);
}

static void Clear(ListEntry& entry) {
    entry = ListEntry{};
    entry.kind = -1;
}

uint32_t AddEntry(EntryList& list, std::wstring_view text, std::wstring_view label, unsigned keyCode,
                  unsigned modifier, int /*numberRequest*/, int order) {
    EntrySlot& slot = list[static_cast<int>(list.size())];
    Clear(slot.current);
    // The same slot as long as every entry came through here; where one did not, that entry counts as
    // never written and the next save writes it.
    if (const auto found = list.find(static_cast<int>(nextEntryNumber)); found != list.end()) {
        Clear(found->second.saved);
    }
    ListEntry& entry = slot.current;
    CopyText(entry.text, text, kTextLimit);
    CopyText(entry.label, label, kLabelLimit);
    entry.keyCode = RecordKeyCode(keyCode);
    entry.modifier = modifier;
    entry.order = order;
    entry.number = nextEntryNumber++;
    slot.saved = slot.current;
    return entry.number;
}

bool UpdateEntry(EntryList& list, int position, const ListEntry& edited) {
    const auto found = list.find(position);
    if (found == list.end()) return false;
    ListEntry& entry = found->second.current;
    if (std::memcmp(entry.text, edited.text, sizeof entry.text) != 0) entry.kind = -1;
    std::memcpy(entry.text, edited.text, sizeof entry.text);
    std::memcpy(entry.label, edited.label, sizeof entry.label);
    entry.keyCode = edited.keyCode;
    entry.modifier = edited.modifier;
    return true;
}

std::optional<std::wstring> StoredFromEditorText(std::wstring_view editorText) {
    if (editorText.size() > kEditorTextLimit) return std::nullopt;
    std::wstring text(editorText);
    ReplaceAll(text, L"\r\n", L"\\n");
    ReplaceAll(text, L"\n", L"\\n");
    if (text.empty()) text = L"???Text";
    return text;
}

std::wstring EditorFromStoredText(std::wstring_view storedText) {
    std::wstring text(storedText);
    ReplaceAll(text, L"\\n", L"\r\n");
    return text;
}

}  // namespace verbatix
