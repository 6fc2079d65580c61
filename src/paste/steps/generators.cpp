#include "paste/steps/generators.h"

#include <windows.h>

#include <array>
#include <ctime>
#include <iterator>
#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "paste/steps/expansion.h"
#include "paste/steps/launcher.h"
#include "paste/steps/temporary_page.h"

namespace verbatix {
namespace {

constexpr int kHtmlPageTitle = 19;  // number of the language text
constexpr std::wstring_view kDeclaration = L"CString ";

std::wstring NameOf(std::wstring_view value) {
    static constexpr std::pair<const wchar_t*, const wchar_t*> kSpellings[] = {
        {L"\t", L" "}, {L" ", L"_"},  {L"&", L"_und_"}, {L"ö", L"oe"}, {L"ä", L"ae"}, {L"ü", L"ue"},
        {L"Ö", L"Oe"}, {L"Ä", L"Ae"}, {L"Ü", L"Ue"},    {L"ß", L"ss"}, {L"é", L"e"},  {L"__", L"_"},
    };
    std::wstring name(value);
    for (const auto& [from, to] : kSpellings) ReplaceAll(name, from, to);
    return L"str_" + name;
}

std::wstring CopySelection() {
    if (!SendCopy()) return {};
    Pause(100);
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

int MixTheString(DocumentOpener) {
    if (!MaySendStroke()) return 1;
    ClearClipboard();
    Pause(100);
    const std::wstring output = StringBuilderSource(CopySelection());
    if (output.empty()) return 0;
    PasteAsHtml = false;  // source code, whatever prefix the entry has
    FinishForDelivery(output);
    Pause(25);
    SendPaste(20);
    return 1;
}

int PlainTextToHtmlPage(DocumentOpener open) {
    const std::wstring text = CopySelection();
    if (text.size() < 2) return 0;
    const std::wstring folder = TemporaryFolder();
    if (folder.empty()) return 1;
    const std::wstring path = folder + HtmlPageName(LanguageText(kHtmlPageTitle));
    WritePage(path, L"<pre>" + text.substr(0, text.find(L'\0')) + L"</pre>");
    open(path);
    return 1;
}

int MixAllRows(DocumentOpener) {
    const auto seed = static_cast<std::uint32_t>(std::time(nullptr) + std::clock());
    const std::wstring rows = ShuffledRows(CopySelection(), seed);
    if (rows.empty()) return 1;
    Pause(25);
    FinishForDelivery(rows);
    Pause(25);
    SendPaste(20);
    return 1;
}

struct Generator {
    const wchar_t* token;
    int (*run)(DocumentOpener open);
};

constexpr Generator kGenerators[] = {
    {L"%mix_the_string%", MixTheString},
    {L"%plain_text_to_tmp_html%", PlainTextToHtmlPage},
    {L"%mix_al_rows%", MixAllRows},
};

}  // namespace

std::span<const wchar_t* const> GeneratorTokens() {
    static constexpr auto kNames = [] {
        std::array<const wchar_t*, std::size(kGenerators)> names = {};
        for (std::size_t i = 0; i < names.size(); ++i) names[i] = kGenerators[i].token;
        return names;
    }();
    return kNames;
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

void OpenDocument(const std::wstring& path) {
    OpenWithShell(path);
}

int TryGenerators(const std::wstring& entryText, DocumentOpener open) {
    for (const Generator& generator : kGenerators) {
        if (entryText.find(generator.token) != std::wstring::npos) return generator.run(open);
    }
    return 0;
}

}  // namespace verbatix
