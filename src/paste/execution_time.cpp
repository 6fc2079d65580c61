#include "paste/execution_time.h"

#include <algorithm>
#include <array>
#include <string>

#include "paste/builtin/builtin_commands.h"
#include "paste/steps/key_tokens.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/placeholders.h"

namespace verbatix {

namespace {

constexpr DWORD kStroke = 5;  // its events pass through every program that has a hook
constexpr DWORD kPaste = 20 + kStroke;
constexpr DWORD kAnswers = 6;  // of a program that comes to its stroke at once

bool Contains(std::wstring_view text, std::wstring_view part) {
    return text.find(part) != std::wstring_view::npos;
}

// Boxes, the launch of a page, and what another program has on the clipboard.
constexpr std::array<std::wstring_view, 4> kTakeTheirTime = {
    L"%plain_text_to_tmp_html%", kPreviousClipboardToken, kClipboardHtmlToken, kSelectionHtmlToken};

DWORD TokenTime(std::wstring_view text) {
    DWORD time = 10 + 50;
    const KeySteps plan = SplitAtKeyTokens(text);
    for (const KeyStep& step : plan.steps)
        time += 20 + kStroke + kAnswers + (step.key ? kStroke : step.milliseconds);
    return time + 20 + kStroke;
}

std::optional<DWORD> TextTime(std::wstring_view text) {
    if (MayAskForDate(text)) return std::nullopt;
    for (const std::wstring_view token : kTakeTheirTime) {
        if (Contains(text, token)) return std::nullopt;
    }
    DWORD time = 0;
    if (UsesCopiedText(text)) time += 210 + kStroke;
    if (HoldsKeyToken(text)) return time + TokenTime(text);
    if (Contains(text, L"%mix_the_string%")) return time + 225 + kStroke + kPaste;
    if (Contains(text, L"%mix_al_rows%")) return time + 150 + kStroke + kPaste;
    return time + kPaste;
}

DWORD SlotsTime(std::wstring_view digits) {
    constexpr DWORD kBetween = 500;
    const auto count = std::ranges::count_if(digits, [](wchar_t c) { return c >= L'1' && c <= L'9'; });
    const auto pastes = static_cast<DWORD>(count);
    return pastes * kPaste + (pastes > 1 ? (pastes - 1) * kBetween : 0);
}

// The commands that only post a message; the others copy, ask or show something.
std::optional<DWORD> BuiltinTime(std::wstring_view text) {
    const BuiltinCommand* const command = FindBuiltinCommand(text);
    const std::wstring_view name = command ? command->name : L"";
    const bool posts = name == L"MonitorOn" || name == L"ScreensaverOn";
    return posts ? std::optional<DWORD>(0) : std::nullopt;
}

}  // namespace

std::optional<DWORD> EstimateExecution(std::wstring_view text, const ExecutionFacts& facts) {
    if (facts.savesClipboard || facts.clipboardIsBusy || facts.targetIsOurs) return std::nullopt;
    const ParsedCommand command = ParseCommand(text);
    switch (command.kind) {
        case CommandKind::None: return TextTime(text);
        case CommandKind::Replace: return 125 + kStroke + kPaste;
        case CommandKind::PasteSlots: return SlotsTime(command.argument);
        case CommandKind::Builtin: return BuiltinTime(command.argument);
        // Carried out later, from a message or a timer.
        case CommandKind::CopySlot:
        case CommandKind::SaveSlot:
        case CommandKind::Cpy: return 0;
        case CommandKind::RunLines:
        case CommandKind::Image:
        case CommandKind::Run: break;
    }
    return std::nullopt;
}

bool FitsWell(std::optional<DWORD> estimate, DWORD limit) {
    return estimate && *estimate <= limit / 2;
}

}  // namespace verbatix
