#include "store/section_lines.h"

#include <cwctype>
#include <set>

#include "base/text.h"
#include "store/ini_text.h"

namespace verbatix {

namespace {

enum class Header { kNone, kOfSection, kOfOther, kDoubtful };

Header HeaderKind(std::wstring_view line, std::wstring_view foldedName) {
    if (!TrimSpace(line).starts_with(L'[')) return Header::kNone;
    const std::wstring folded = FoldKey(line);
    if (folded == L'[' + std::wstring(foldedName) + L']') return Header::kOfSection;
    return folded.find(foldedName) == std::wstring::npos ? Header::kOfOther : Header::kDoubtful;
}

bool IsPlainLine(std::wstring_view key, std::wstring_view value) {
    return !key.empty() && key.front() != L';' && key.front() != L'#' && TrimSpace(key) == key &&
           TrimSpace(value) == value;
}

bool HasPlainLineEnds(std::wstring_view text) {
    for (std::size_t i = text.find_first_of(std::wstring_view(L"\r\n\0\x1a", 4));
         i != std::wstring_view::npos; i = text.find_first_of(std::wstring_view(L"\r\n\0\x1a", 4), i + 2)) {
        if (text.substr(i, 2) != L"\r\n") return false;
    }
    return text.empty() || text.ends_with(L"\r\n");
}

}  // namespace

std::optional<std::vector<std::pair<std::wstring, std::wstring>>> PlainSectionLines(
    std::wstring_view text, std::wstring_view name) {
    if (!HasPlainLineEnds(text)) return std::nullopt;
    if (!text.empty()) text.remove_suffix(2);
    const std::wstring foldedName = FoldKey(name);
    std::vector<std::pair<std::wstring, std::wstring>> lines;
    std::set<std::wstring> keys;
    bool isInside = false;
    bool wasSeen = false;
    for (const std::wstring_view rawLine : Split(text, L'\n')) {
        const std::wstring_view line = rawLine.substr(0, rawLine.find(L'\r'));
        const Header header = HeaderKind(line, foldedName);
        if (header == Header::kDoubtful || (header == Header::kOfSection && wasSeen)) return std::nullopt;
        if (header != Header::kNone) {
            isInside = header == Header::kOfSection;
            wasSeen |= isInside;
        } else if (isInside) {
            const std::size_t equals = line.find(L'=');
            if (equals == std::wstring_view::npos) return std::nullopt;
            const std::wstring_view key = line.substr(0, equals);
            const std::wstring_view value = line.substr(equals + 1);
            if (!IsPlainLine(key, value) || !keys.insert(FoldKey(key)).second) return std::nullopt;
            lines.emplace_back(key, value);
        }
    }
    return lines;
}

}  // namespace verbatix
