#include "store/export_text.h"

#include <algorithm>
#include <map>

#include "base/text.h"

namespace verbatix {

std::wstring FormatExport(const ExportSink& sink) {
    return L"[list_text]\r\n" + sink.textLines + L"[list_label]\r\n" + sink.labelLines +
           L"[list_order]\r\n" + sink.orderLines;
}

// Keys by their numbers, text_1000 behind text_999: with so many digits, a longer key has a larger number.
struct ByNumber {
    bool operator()(const std::wstring& a, const std::wstring& b) const {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    }
};

using Section = std::map<std::wstring, std::wstring, ByNumber>;

static std::map<std::wstring, Section> ReadSections(std::wstring_view text) {
    std::map<std::wstring, Section> sections;
    Section* section = nullptr;
    for (std::wstring_view line : Split(text, L'\n')) {
        if (line.ends_with(L'\r')) line.remove_suffix(1);
        const std::wstring_view trimmed = TrimBlanks(line);
        if (trimmed.starts_with(L'[')) {
            section = &sections[LowerCase(trimmed.substr(1, trimmed.find(L']') - 1))];
            continue;
        }
        const std::size_t equals = line.find(L'=');
        if (section == nullptr || equals == std::wstring_view::npos) continue;
        section->try_emplace(LowerCase(TrimBlanks(line.substr(0, equals))), line.substr(equals + 1));
    }
    return sections;
}

std::vector<EntryTexts> ParseExport(std::wstring_view text) {
    std::map<std::wstring, Section> sections = ReadSections(text);
    std::vector<EntryTexts> entries;
    for (const auto& [key, value] : sections[L"list_text"]) {
        const std::size_t hotkey = std::min(value.find_first_not_of(L" \t"), value.size());
        entries.push_back(
            {value.substr(hotkey), sections[L"list_label"][key], sections[L"list_order"][key], key});
    }
    return entries;
}

}  // namespace verbatix
