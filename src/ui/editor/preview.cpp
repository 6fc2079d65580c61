#include "ui/editor/preview.h"

#include <windows.h>

#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "clipboard/slots.h"
#include "menu/menu_model.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/steps/expansion.h"
#include "paste/steps/generators.h"
#include "paste/steps/key_tokens.h"
#include "paste/steps/launcher.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/generated_texts.h"
#include "ui/editor/code_catalogue.h"

namespace verbatix {

namespace {

constexpr std::size_t kMostShown = 8000;

std::wstring InBrackets(std::wstring_view words) {
    return std::wstring(L"[").append(words).append(L"]");
}

class Preview {
  public:
    explicit Preview(const PreviewSamples& samples)
        : samples_(samples),
          sources_{[this](std::wstring_view) { return samples_.facts; },
                   [this] { return samples_.clipboardText; }, [this] { return samples_.clipboardHtml; },
                   [this] { return samples_.selection; }, [this] { return samples_.selectionHtml; }} {}

    void Of(std::wstring_view storedText);
    std::vector<PreviewPiece> Take() { return std::move(pieces_); }

  private:
    void Tell(std::wstring words) { pieces_.push_back({PreviewKind::kSentence, std::move(words)}); }
    void Tell(int text, std::initializer_list<std::wstring_view> values = {}) {
        Tell(FillIn(LanguageText(text), values));
    }
    void Paste(std::wstring text) {
        if (!text.empty()) pieces_.push_back({PreviewKind::kPasted, std::move(text)});
    }
    void Step(std::wstring words) { pieces_.push_back({PreviewKind::kStep, std::move(words)}); }
    void OfText(std::wstring text);
    void OfKeySteps(const KeySteps& plan);
    void OfGenerator(const wchar_t* token, const std::wstring& expanded);
    void OfCommand(const ParsedCommand& command);
    void OfRules(std::wstring_view entryText);
    void OfSlots(std::wstring_view digits);
    void OfBuiltin(std::wstring_view text);
    void OfLine(bool elevate, const std::wstring& line);
    void OfLines(const ParsedCommand& command);
    void OfCharacters(std::wstring_view text);

    const PreviewSamples& samples_;
    ExpansionSources sources_;
    std::vector<PreviewPiece> pieces_;
};

std::wstring SlotName(wchar_t character) {
    return std::to_wstring(SlotIndexFromChar(character));
}

void Preview::Of(std::wstring_view storedText) {
    if (storedText.starts_with(kCharacterListPrefix)) return OfCharacters(storedText);
    const ParsedCommand command = ParseCommand(storedText);
    if (command.kind == CommandKind::None) return OfText(std::wstring(storedText));
    OfCommand(command);
}

void Preview::OfText(std::wstring text) {
    const bool asHtml = ExpandFrom(text, sources_);
    if (HoldsKeyToken(text)) return OfKeySteps(SplitAtKeyTokens(text));
    if (const wchar_t* const generator = FindGenerator(text)) return OfGenerator(generator, text);
    if (asHtml) Step(LanguageText(text::kShowsAsHtml));
    Paste(DeliveredText(std::move(text)));
}

std::wstring StepName(const KeyStep& step) {
    if (step.key == VK_RETURN) return LanguageText(text::kShowsEnter);
    if (step.key == VK_TAB) return LanguageText(text::kShowsTab);
    const std::wstring seconds = Format(L"%g", step.milliseconds / 1000.0);
    return FillIn(LanguageText(text::kShowsWait), {seconds});
}

void Preview::OfKeySteps(const KeySteps& plan) {
    for (const KeyStep& step : plan.steps) {
        Paste(WithoutMarkers(step.segment));
        Step(StepName(step));
    }
    Paste(WithoutMarkers(plan.tail));
}

void Preview::OfGenerator(const wchar_t* token, const std::wstring& expanded) {
    const bool buildsSource = std::wstring_view(token) == L"%mix_the_string%";
    if (!buildsSource) return Tell(MeaningOf(token));
    const std::wstring source = StringBuilderSource(samples_.selection);
    Paste(DeliveredText(source.empty() ? expanded : source));
}

void Preview::OfCommand(const ParsedCommand& command) {
    switch (command.kind) {
        case CommandKind::None: break;
        case CommandKind::Replace: OfRules(command.argument); break;
        case CommandKind::CopySlot: Tell(text::kDoesCopySlot, {SlotName(command.slot)}); break;
        case CommandKind::PasteSlots: OfSlots(command.argument); break;
        case CommandKind::SaveSlot: Tell(text::kDoesSaveSlot, {SlotName(command.slot)}); break;
        case CommandKind::Builtin: OfBuiltin(command.argument); break;
        case CommandKind::RunLines: OfLines(command); break;
        case CommandKind::Image: Tell(text::kDoesPicture, {TrimSpace(command.argument)}); break;
        case CommandKind::Run: OfLine(false, command.argument); break;
        case CommandKind::Cpy: {
            const auto [program, parameters] =
                WithSelection(SplitProgram(command.argument), samples_.selection);
            if (program.empty()) break;
            Tell(text::kDoesStartCopied, {program + (parameters.empty() ? L"" : L" ") + parameters});
            break;
        }
    }
    if (pieces_.empty()) Tell(text::kDoesStartNothing);
}

void Preview::OfRules(std::wstring_view entryText) {
    const auto quoted = [](const std::wstring& text) { return L"\"" + text + L"\""; };
    for (const ReplaceRule& rule : ReplaceRules(entryText)) {
        if (rule.before.empty()) continue;
        if (rule.after.empty()) {
            Tell(text::kDoesRemove, {quoted(rule.before)});
        } else {
            Tell(text::kDoesReplace, {quoted(rule.before), quoted(rule.after)});
        }
    }
    if (pieces_.empty()) Tell(text::kDoesReplaceNothing);
}

void Preview::OfSlots(std::wstring_view digits) {
    for (const wchar_t digit : digits) {
        if (digit >= L'1' && digit <= L'9') Tell(text::kDoesPasteSlot, {SlotName(digit)});
    }
    if (pieces_.empty()) Tell(text::kDoesPasteNoSlot);
}

void Preview::OfBuiltin(std::wstring_view text) {
    const BuiltinCommand* const command = FindBuiltinCommand(text);
    if (!command) return Tell(text::kDoesNotKnow, {text});
    std::wstring_view argument = text.substr(std::wstring_view(command->name).size());
    if (argument.starts_with(L':')) argument.remove_prefix(1);
    const std::wstring meaning = MeaningOf(std::wstring(L"sys:") + command->name);
    Tell(argument.empty() ? meaning : meaning + L": " + std::wstring(argument));
}

void Preview::OfLine(bool elevate, const std::wstring& line) {
    const std::wstring launched = LaunchedLine(line, samples_.selection);
    if (launched.empty()) return;
    Tell(elevate ? text::kDoesStartElevated : text::kDoesStart, {ExpandEnvironment(launched)});
}

void Preview::OfLines(const ParsedCommand& command) {
    for (const std::wstring_view piece : Split(command.argument, L'\n')) {
        OfLine(command.elevate, ExpandedRunLine(piece, sources_, samples_.selection));
    }
}

void Preview::OfCharacters(std::wstring_view text) {
    std::wstring list;
    for (const std::wstring_view piece : CharacterPieces(text)) {
        list.append(list.empty() ? L"" : L"  ").append(piece);
        if (list.size() > kMostShown) break;
    }
    Tell(text::kDoesShowCharacters, {list});
}

// Line ends and tabs can be seen. Marks that every font of Windows has.
std::wstring WithMarks(std::wstring_view text) {
    std::wstring shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;
        if (c == L'\n') {
            shown += L"\u00b6\r\n";
        } else if (c == L'\t') {
            shown += L"\u2192\t";
        } else if (c >= L' ') {
            shown += c;
        } else {
            // What a rule of search and replace names by its number.
            shown += Format(L"%%%02d", c);
        }
    }
    return shown;
}

}  // namespace

PreviewSamples CurrentSamples(bool useDate, bool useTime) {
    // They do not change while the program runs.
    static const KnownFacts names = FetchKnownFacts(L"%user_name%", false, false);
    PreviewSamples samples;
    samples.facts.userName = names.userName;
    samples.facts.computerName = names.computerName;
    GetLocalTime(&samples.facts.dates.now);
    samples.facts.dates.useDate = useDate;
    samples.facts.dates.useTime = useTime;
    samples.facts.dates.dateQuestion = InBrackets(LanguageText(text::kShowsDateQuestion));
    samples.facts.dates.timeQuestion = InBrackets(LanguageText(text::kShowsTimeQuestion));
    samples.selection = LanguageText(text::kSampleSelection);
    samples.selectionHtml = InBrackets(LanguageText(text::kMeansSelectionHtml));
    samples.clipboardText = InBrackets(LanguageText(text::kShowsClipboard));
    samples.clipboardHtml = InBrackets(LanguageText(text::kMeansClipboardHtml));
    return samples;
}

std::vector<PreviewPiece> PreviewPieces(std::wstring_view storedText, const PreviewSamples& samples) {
    Preview preview(samples);
    preview.Of(storedText);
    return preview.Take();
}

std::wstring PreviewText(const std::vector<PreviewPiece>& pieces) {
    std::wstring shown;
    for (const PreviewPiece& piece : pieces) {
        if (shown.size() > kMostShown) break;
        const std::wstring marked = WithMarks(std::wstring_view(piece.text).substr(0, kMostShown));
        switch (piece.kind) {
            case PreviewKind::kPasted: shown += marked; break;
            case PreviewKind::kStep: shown += InBrackets(marked); break;
            case PreviewKind::kSentence: shown.append(shown.empty() ? L"" : L"\r\n").append(marked); break;
        }
    }
    if (shown.size() > kMostShown) shown.replace(kMostShown, std::wstring::npos, L" ...");
    return shown;
}

}  // namespace verbatix
