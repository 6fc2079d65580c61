#include "paste/text/path_breaks.h"

#include <cwctype>

#include "paste/text/command_prefixes.h"

namespace verbatix {

namespace {

constexpr std::wstring_view kBreak = L"\\n";

bool RunsSomething(std::wstring_view text) {
    switch (ParseCommand(text).kind) {
        case CommandKind::RunLines:
        case CommandKind::Run:
        case CommandKind::Cpy:
        case CommandKind::Image: return true;
        default: return false;
    }
}

// A drive, a server or a variable at the start of the text.
bool StartsPath(std::wstring_view text) {
    if (text.starts_with(L"\\\\")) return true;
    if (text.starts_with(L"%")) return text.find(L'%', 1) != std::wstring_view::npos;
    return text.size() >= 2 && std::iswalpha(text[0]) && text[1] == L':' &&
           (text.size() == 2 || text[2] == L'\\');
}

// What is in front of the break: the line so far, from its last path on; empty when it has none.
std::wstring_view PathAtEnd(std::wstring_view line) {
    constexpr std::wstring_view kBoundaries = L" \t\"'=,;<(";
    for (std::size_t at = line.size(); at-- > 0;) {
        const bool atBoundary = at == 0 || kBoundaries.find(line[at - 1]) != std::wstring_view::npos;
        if (atBoundary && StartsPath(line.substr(at))) return line.substr(at);
    }
    return {};
}

// The last name of the path has an extension, at its end or before a blank: the path is complete.
bool IsComplete(std::wstring_view path) {
    constexpr std::size_t kLongestExtension = 4;
    const std::wstring_view name = path.substr(path.rfind(L'\\') + 1);
    const std::size_t dot = name.find(L'.');
    if (dot == std::wstring_view::npos) return false;
    std::size_t length = 0;
    while (dot + 1 + length < name.size() && std::iswalnum(name[dot + 1 + length])) ++length;
    const std::size_t end = dot + 1 + length;
    return length >= 1 && length <= kLongestExtension && (end == name.size() || name[end] == L' ');
}

bool IsInPath(std::wstring_view line, std::wstring_view rest, bool quoted) {
    const std::wstring_view path = PathAtEnd(line);
    const bool goesOn = !rest.empty() && rest[0] != L' ' && rest[0] != L'"' && !StartsPath(rest);
    return !path.empty() && (quoted || (goesOn && !IsComplete(path)));
}

}  // namespace

std::vector<std::size_t> PathBreaks(std::wstring_view storedText) {
    std::vector<std::size_t> breaks;
    if (!RunsSomething(storedText)) return breaks;
    std::size_t line = storedText.find(L':') + 1;
    bool quoted = false;
    for (std::size_t at = line; at < storedText.size(); ++at) {
        if (storedText[at] == L'"') quoted = !quoted;
        if (storedText.substr(at, kBreak.size()) != kBreak) continue;
        const std::size_t behind = at + kBreak.size();
        if (IsInPath(storedText.substr(line, at - line), storedText.substr(behind), quoted)) {
            breaks.push_back(at);
        } else {
            line = behind;
            quoted = false;
        }
        ++at;
    }
    return breaks;
}

std::wstring KeepPaths(std::wstring_view storedText) {
    std::wstring kept(storedText);
    const std::vector<std::size_t> breaks = PathBreaks(storedText);
    for (auto at = breaks.rbegin(); at != breaks.rend(); ++at) kept.insert(*at + 1, L"%nc%");
    return kept;
}

}  // namespace verbatix
