#include "ui/editor/editor_fields.h"

#include <windows.h>

#include <cwchar>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"

namespace verbatix {

namespace {

struct KeyRange {
    unsigned first;
    unsigned last;
};

constexpr KeyRange kOffered[] = {
    {'A', 'Z'},
    {'0', '9'},
    {VK_F1, VK_F12},
    {VK_NUMPAD0, VK_DIVIDE},
    {VK_SPACE, VK_SPACE},
    {VK_TAB, VK_TAB},
    {VK_ESCAPE, VK_ESCAPE},
    {VK_LEFT, VK_DOWN},
    {VK_DELETE, VK_DELETE},
    {VK_OEM_4, VK_OEM_6},  // "[", "^" and "]"
};

}  // namespace

std::vector<std::wstring> OfferedKeyNames() {
    std::vector<std::wstring> names(1);
    for (const KeyRange& range : kOffered) {
        for (unsigned key = range.first; key <= range.last; ++key) names.push_back(FormatKeyName(key));
    }
    return names;
}

unsigned RecordKey(unsigned key) {
    return ((key & 0xff) ^ 0x80) - 0x80;
}

std::optional<unsigned> KeyFromInput(std::wstring_view input) {
    const std::wstring_view name = TrimBlanks(input);
    if (name.empty()) return 0;
    for (const std::wstring& offered : OfferedKeyNames()) {
        if (EqualsIgnoreCase(name, offered)) return RecordKey(ParseKeyName(offered));
    }
    // A single letter as typed would be the code of another key: "q" is F2.
    const std::wstring upper = UpperCase(name);
    const unsigned key = upper.front();
    if (key > 0xff || !IsStorableKey(key) || FormatKeyName(key) != upper) return std::nullopt;
    return RecordKey(key);
}

std::optional<ListEntry> EditedEntry(const ListEntry& old, const EditorFields& fields) {
    ListEntry entry = EditedButText(old, fields);
    // The file may hold a text that is longer than the editor takes.
    if (fields.text == EditorFromStoredText(old.text)) return entry;
    const std::optional<std::wstring> text = StoredFromEditorText(fields.text);
    if (!text) return std::nullopt;
    CopyText(entry.text, *text, kTextLimit);
    return entry;
}

ListEntry EditedButText(const ListEntry& old, const EditorFields& fields) {
    ListEntry entry = old;
    CopyText(entry.label, fields.label, kLabelLimit);
    entry.keyCode = fields.key;
    entry.modifier = fields.modifier;
    return entry;
}

std::optional<int> FindClash(const EntryList& list, int position, unsigned key, unsigned modifier) {
    for (const auto& [other, slot] : list) {
        const ListEntry& entry = slot.current;
        // An entry without text has no hotkey, whatever stands in its record.
        const bool answers = *entry.text && (entry.keyCode & 0xff) == (key & 0xff);
        const unsigned code = entry.modifier < kModifierCount ? entry.modifier : 0U;
        if (other != position && answers && code == modifier) return other;
    }
    return std::nullopt;
}

std::wstring EntryName(const ListEntry& entry) {
    constexpr std::size_t kShown = 60;
    const std::wstring_view text = entry.text;
    if (*entry.label) return entry.label;
    return std::wstring(text.substr(0, kShown)) + (text.size() > kShown ? L"..." : L"");
}

std::wstring QuotedName(std::wstring_view name) {
    constexpr std::size_t kShown = 40;
    const std::wstring shown = std::wstring(name.substr(0, kShown)) + (name.size() > kShown ? L"..." : L"");
    return FillIn(LanguageText(text::kQuoted), {shown});
}

std::wstring NameOfEntries(const EntryList& list, const std::vector<int>& positions) {
    const auto found = positions.size() == 1 ? list.find(positions.front()) : list.end();
    if (found != list.end()) return QuotedName(EntryName(found->second.current));
    return FillIn(LanguageText(text::kSeveral), {std::to_wstring(positions.size())});
}

Action EditAction(const ListEntry& old, const ListEntry& edited, int position) {
    Act act = Act::kText;
    if (std::wcscmp(old.text, edited.text) == 0) {
        act = std::wcscmp(old.label, edited.label) == 0 ? Act::kHotkey : Act::kRename;
    }
    return {act, QuotedName(EntryName(edited)), {position}, {position}, true};
}

}  // namespace verbatix
