#include "store/profile_section.h"

#include <windows.h>

#include <cwctype>

#include "base/text.h"
#include "store/ini_text.h"
#include "store/profile.h"
#include "store/settings_file.h"

namespace verbatix {

namespace {

constexpr std::size_t kFirstBuffer = std::size_t{1} << 16;
constexpr std::size_t kLargestBuffer = std::size_t{1} << 25;

// Calls `fill(buffer, size)` with ever larger buffers until the zero-separated list fits, and splits it.
// The calls return size - 2 when they had to cut. Nothing when it fits no buffer.
template <typename Fill>
std::vector<std::wstring> ReadList(Fill fill) {
    std::wstring buffer;
    for (std::size_t size = kFirstBuffer; size <= kLargestBuffer; size *= 4) {
        buffer.resize(size);
        const std::size_t length = fill(buffer.data(), static_cast<DWORD>(size));
        if (length >= size - 2) continue;
        std::vector<std::wstring> items;
        for (const std::wstring_view item : Split(std::wstring_view(buffer.data(), length), L'\0')) {
            if (!item.empty()) items.emplace_back(item);
        }
        return items;
    }
    return {};
}

// Whether the system leaves a text with such ends as it is, when it is a value or a name.
bool HasSolidEnds(std::wstring_view text) {
    const auto isSolid = [](wchar_t c) { return c > L' ' && !iswspace(c); };
    return text.empty() || (isSolid(text.front()) && isSolid(text.back()));
}

bool IsQuote(wchar_t c) {
    return c == L'"' || c == L'\'';
}

// Whether the system takes a pair of quotes off the value.
bool IsQuoted(std::wstring_view value) {
    return value.size() >= 2 && IsQuote(value.front()) && value.front() == value.back();
}

// What a single call with a buffer for `size` characters gives of a value as it stands in the file; nothing
// where that call has to be made.
std::optional<std::wstring> PlainValue(std::wstring_view raw, std::size_t size) {
    if (!IsQuoted(raw)) return std::wstring(raw.substr(0, size - 1));
    const std::wstring_view inner = raw.substr(1, raw.size() - 2);
    // Where the closing quote would be the first character too many, systems differ in what they drop.
    if (inner.size() + 1 == size) return std::nullopt;
    return std::wstring(inner.substr(0, size - 1));
}

void TakeLine(ProfileSection& section, std::wstring_view line) {
    const std::size_t equals = line.find(L'=');
    const std::wstring_view name = TrimBlanks(line.substr(0, equals));
    std::optional<std::wstring> value;
    if (equals != std::wstring_view::npos) {
        const std::wstring_view raw = TrimBlanks(line.substr(equals + 1));
        const bool isNamePlain = name.empty() || (!IsQuote(name.front()) && !IsQuote(name.back()));
        if (isNamePlain && HasSolidEnds(name) && HasSolidEnds(raw)) value = raw;
    }
    // Of two keys with the same name the first counts.
    section.values.try_emplace(FoldKey(TrimSpace(name)), std::move(value));
}

const std::set<std::wstring, std::less<>>& Names(ProfileSection& section) {
    if (section.names) return *section.names;
    section.names.emplace();
    if (!IsProfilePath(section.path)) return *section.names;
    for (const std::wstring& name : ReadList([&](wchar_t*buffer, DWORD size) {
             return GetPrivateProfileStringW(section.name.c_str(), nullptr, L"", buffer, size,
                                             section.path.c_str());
         })) {
        section.names->insert(FoldKey(TrimSpace(name)));
    }
    return *section.names;
}

}  // namespace

ProfileSection ReadSection(const std::wstring& path, std::wstring_view name) {
    ProfileSection section{path, std::wstring(name), {}, {}};
    if (!IsProfilePath(path)) return section;
    for (const std::wstring& line : ReadList([&](wchar_t*buffer, DWORD size) {
             return GetPrivateProfileSectionW(section.name.c_str(), buffer, size, path.c_str());
         })) {
        TakeLine(section, line);
    }
    return section;
}

std::wstring SectionText(ProfileSection& section, std::wstring_view key, std::size_t size,
                         std::wstring_view old) {
    if (size == 0) return std::wstring(old);
    const bool oldIsPlain = HasSolidEnds(old) && !IsQuoted(old) && old.size() < size;
    const std::wstring folded = FoldKey(key);
    const auto found = section.values.find(folded);
    if (found == section.values.end()) {
        if (oldIsPlain && !Names(section).contains(folded)) return std::wstring(old);
    } else if (found->second) {
        if (std::optional<std::wstring> value = PlainValue(*found->second, size)) return *value;
    }
    return ReadProfileTextFrom(section.path, section.name.c_str(), std::wstring(key).c_str(), size, old);
}

int SectionNumber(ProfileSection& section, std::wstring_view key, int old, int lowest, int highest) {
    return BoundedNumber(SectionText(section, key, kNumberTextSize, Format(L"%d", old)), lowest, highest);
}

std::set<std::wstring, std::less<>> SectionKeys(ProfileSection& section) {
    std::set<std::wstring, std::less<>> keys = Names(section);
    for (const auto& [key, value] : section.values) keys.insert(key);
    return keys;
}

}  // namespace verbatix
