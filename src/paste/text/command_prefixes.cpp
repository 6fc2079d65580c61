#include "paste/text/command_prefixes.h"

#include "base/text.h"
#include "paste/text/placeholders.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace verbatix {

namespace {

constexpr std::size_t kLongestCommand = 4095;

struct Prefix {
    std::wstring_view name;
    CommandKind kind;
    bool elevate = false;
};

// "run:" and "runx:" cannot be mistaken for each other, so the order is free, except that slots come first
// because they look behind the prefix at fixed places.
constexpr Prefix kPrefixes[] = {
    {L"replace:", CommandKind::Replace},
    {L"copy_slot:", CommandKind::CopySlot},
    {L"paste_slot:", CommandKind::PasteSlots},
    {L"save_slot:", CommandKind::SaveSlot},
    {L"sys:", CommandKind::Builtin},
    {L"runx:", CommandKind::RunLines},
    {L"runX:", CommandKind::RunLines},
    {L"runa:", CommandKind::RunLines, true},
    {L"runA:", CommandKind::RunLines, true},
    {L"img:", CommandKind::Image},
    {L"cmd:", CommandKind::Run},
    {L"run:", CommandKind::Run},
    {L"cpy:", CommandKind::Cpy},
};

wchar_t CharacterAt(std::wstring_view text, std::size_t position) {
    return position < text.size() ? text[position] : L'\0';
}

// Replaces all or, where the text would grow beyond kLongestExpansion, none: a few rules that each make ten
// of one could fill the memory.
std::size_t ReplaceWithinLimit(std::wstring& text, std::wstring_view from, std::wstring_view to) {
    if (from.empty()) return 0;
    std::size_t length = text.size();
    for (std::size_t at = text.find(from); at != std::wstring::npos;
         at = text.find(from, at + from.size())) {
        length += to.size() - from.size();  // wraps where it shrinks, and comes out right
    }
    return length > kLongestExpansion && length > text.size() ? 0 : ReplaceAll(text, from, to);
}

}  // namespace

const wchar_t* KindName(CommandKind kind) {
    const auto row = std::find_if(std::begin(kPrefixes), std::end(kPrefixes),
                                  [kind](const Prefix& prefix) { return prefix.kind == kind; });
    return row == std::end(kPrefixes) ? L"text" : row->name.data();
}

std::span<const wchar_t* const> CommandPrefixes() {
    static constexpr auto kNames = [] {
        std::array<const wchar_t*, std::size(kPrefixes)> names = {};
        for (std::size_t i = 0; i < names.size(); ++i) names[i] = kPrefixes[i].name.data();
        return names;
    }();
    return kNames;
}

ParsedCommand ParseCommand(std::wstring_view text) {
    ParsedCommand command;
    std::wstring plain(text.substr(0, kLongestCommand));
    // Line breaks first: a "%nc%" between backslash and n keeps the two apart.
    std::wstring lines = plain;
    ReplaceAll(lines, L"\\n", L"\n");
    ReplaceAll(lines, L"%nc%", L"");
    ReplaceAll(plain, L"%nc%", L"");
    for (const Prefix& prefix : kPrefixes) {
        const std::wstring_view subject = prefix.kind == CommandKind::Replace    ? text
                                          : prefix.kind == CommandKind::RunLines ? lines
                                                                                 : plain;
        if (!subject.starts_with(prefix.name)) continue;
        command.kind = prefix.kind;
        command.elevate = prefix.elevate;
        command.argument = subject.substr(prefix.name.size());
        break;
    }
    switch (command.kind) {
        case CommandKind::Replace: command.argument = text; break;
        case CommandKind::CopySlot: command.slot = CharacterAt(command.argument, 0); break;
        // One place further than for copying: lists in use are written "save_slot: 3", and "save_slot:3"
        // has always meant slot 1.
        case CommandKind::SaveSlot: command.slot = CharacterAt(command.argument, 1); break;
        default: break;
    }
    return command;
}

ProgramAndParameters SplitProgram(std::wstring_view line) {
    if (line.starts_with(L'"')) {
        if (const std::size_t quote = line.find(L'"', 1); quote != std::wstring_view::npos) {
            const std::size_t parameters = quote + 2;
            return {std::wstring(line.substr(0, quote + 1)),
                    std::wstring(parameters < line.size() ? line.substr(parameters) : std::wstring_view())};
        }
    }
    const std::size_t blank = line.find(L' ');
    if (blank == std::wstring_view::npos) return {std::wstring(line), {}};
    return {std::wstring(line.substr(0, blank)), std::wstring(line.substr(blank + 1))};
}

ProgramAndParameters WithSelection(ProgramAndParameters command, const std::wstring& selection) {
    ReplaceRunTokens(command.program, selection);
    ReplaceRunTokens(command.parameters, selection);
    // Those that the selection brought along; bounded, because it may hold thousands.
    ReplaceToken(command.parameters, L"%cpy%", selection);
    ReplaceAll(command.parameters, L"%nc%", L"");
    return command;
}

std::vector<ReplaceRule> ReplaceRules(std::wstring_view entryText) {
    std::wstring lines(entryText);
    ReplaceAll(lines, L"\r", L"");
    ReplaceAll(lines, L"\\n", L"\n");
    ReplaceAll(lines, L"%nc%", L"");
    std::vector<ReplaceRule> rules;
    constexpr std::wstring_view kArrow = L"=>";
    bool first = true;
    for (const std::wstring_view line : Split(lines, L'\n')) {
        const std::size_t arrow = line.find(kArrow);
        if (first || arrow == std::wstring_view::npos) {
            first = false;
            continue;
        }
        ReplaceRule& rule = rules.emplace_back(std::wstring(line.substr(0, arrow)),
                                               std::wstring(line.substr(arrow + kArrow.size())));
        ReplaceNumberedControlCodes(rule.before);
        ReplaceNumberedControlCodes(rule.after);
    }
    return rules;
}

ReplaceResult ApplyReplaceRules(std::wstring_view entryText, std::wstring subject) {
    ReplaceResult result = {std::move(subject)};
    for (const ReplaceRule& rule : ReplaceRules(entryText)) {
        result.count += ReplaceWithinLimit(result.text, rule.before, rule.after);
    }
    return result;
}

}  // namespace verbatix
