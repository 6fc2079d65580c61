#include "paste/text/generated_texts.h"

#include <utility>
#include <vector>

#include "base/text.h"

namespace verbatix {

static constexpr std::wstring_view kDeclaration = L"CString ";

static std::wstring NameOf(std::wstring_view value) {
    static constexpr std::pair<const wchar_t*, const wchar_t*> kSpellings[] = {
        {L"\t", L" "}, {L" ", L"_"},  {L"&", L"_und_"}, {L"ö", L"oe"}, {L"ä", L"ae"}, {L"ü", L"ue"},
        {L"Ö", L"Oe"}, {L"Ä", L"Ae"}, {L"Ü", L"Ue"},    {L"ß", L"ss"}, {L"é", L"e"},  {L"__", L"_"},
    };
    std::wstring name(value);
    for (const auto& [from, to] : kSpellings) ReplaceAll(name, from, to);
    return L"str_" + name;
}

std::wstring StringBuilderSource(std::wstring_view selection) {
    const std::wstring_view source = TrimSpace(selection);
    std::wstring name;
    std::wstring value(source);
    const std::size_t equals = source.find(L'=');
    if (source.starts_with(kDeclaration) && equals != std::wstring_view::npos) {
        name = source.substr(0, equals);
        ReplaceAll(name, kDeclaration, L"");
        value = source.substr(equals + 1);
        ReplaceAll(value, L"\"", L"");
        if (value.ends_with(L';')) value.pop_back();
    }
    if (value.empty()) return {};
    if (name.empty()) name = NameOf(value);

    std::wstring output;
    output.reserve(5 * value.size() + 2 * name.size() + 50);
    output.append(kDeclaration).append(name).append(L";{char w[]={");
    for (const wchar_t c : value) output.append(L"'").append(1, c).append(L"',");
    output.append(L"'\\0'};").append(name).append(L"=w;} //").append(value);
    return output;
}

std::wstring ShuffledRows(std::wstring_view text, std::uint32_t seed) {
    // What stands behind the last line end is no line.
    if (text.ends_with(L'\n')) text.remove_suffix(1);
    if (text.empty()) return {};
    std::vector<std::wstring_view> lines = Split(text, L'\n');
    if (lines.size() < 2) return {};
    for (std::wstring_view& line : lines) {
        seed = seed * 8253729u + 2396403u;
        std::swap(line, lines[seed % lines.size()]);
    }
    std::wstring result;
    result.reserve(text.size() + lines.size() + 2);
    for (const std::wstring_view line : lines) {
        for (const wchar_t c : line) {
            if (c != L'\r') result += c;
        }
        result += L"\r\n";
    }
    return result;
}

std::wstring HtmlPageName(std::wstring_view title) {
    std::wstring name = L"to_html_" + std::wstring(title) + L".html";
    for (wchar_t& c : name) {
        if (c <= L' ' || std::wstring_view(L"\\/:*?\"<>|").find(c) != std::wstring_view::npos) c = L'_';
    }
    return name;
}

}  // namespace verbatix
