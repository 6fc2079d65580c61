#include "paste/steps/generators.h"

#include <windows.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <iterator>

#include "base/language.h"
#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/paste_content.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"
#include "paste/steps/expansion.h"
#include "paste/steps/launcher.h"
#include "paste/steps/temporary_page.h"
#include "paste/text/generated_texts.h"

namespace verbatix {
namespace {

std::wstring CopySelection() {
    if (!SendCopy()) return {};
    AwaitCopy(100);
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

int MixTheString(DocumentOpener) {
    if (!MaySendStroke() || !ClearForCopy()) return 1;
    Pause(100);
    const std::wstring output = StringBuilderSource(CopySelection());
    if (output.empty()) return 0;
    PasteAsHtml = false;  // source code, whatever prefix the entry has
    if (!FinishForDelivery(output)) return 1;
    Pause(25);
    SendPaste(20);
    return 1;
}

int PlainTextToHtmlPage(DocumentOpener open) {
    const std::wstring text = CopySelection();
    if (text.size() < 2) return 0;
    const std::wstring folder = TemporaryFolder();
    if (folder.empty()) return 1;
    const std::wstring path = folder + HtmlPageName(LanguageText(text::kSelectedText));
    WritePage(path, L"<pre>" + text.substr(0, text.find(L'\0')) + L"</pre>");
    open(path);
    return 1;
}

int MixAllRows(DocumentOpener) {
    const auto seed = static_cast<std::uint32_t>(std::time(nullptr) + std::clock());
    const std::wstring rows = ShuffledRows(CopySelection(), seed);
    if (rows.empty()) return 1;
    Pause(25);
    if (!FinishForDelivery(rows)) return 1;
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

void OpenDocument(const std::wstring& path) {
    OpenWithShell(path);
}

static const Generator* GeneratorIn(std::wstring_view entryText) {
    for (const Generator& generator : kGenerators) {
        if (entryText.find(generator.token) != std::wstring_view::npos) return &generator;
    }
    return nullptr;
}

const wchar_t* FindGenerator(std::wstring_view entryText) {
    const Generator* const generator = GeneratorIn(entryText);
    return generator ? generator->token : nullptr;
}

int TryGenerators(const std::wstring& entryText, DocumentOpener open) {
    const Generator* const generator = GeneratorIn(entryText);
    return generator ? generator->run(open) : 0;
}

}  // namespace verbatix
