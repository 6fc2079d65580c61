// The pass over a text and the variables: one row each.
#include "paste/text/date_codes.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "paste/text/date_operations.h"

namespace verbatix {
namespace {

// Stands behind the text while it is cut and rebuilt, so that a code at the very end is a piece like any
// other. It never reaches the output.
constexpr std::wstring_view kEndMark = L"_HJ_UTREAEWRE_FDFDF";
constexpr std::wstring_view kNoCodes = L"%no_time_fun%";

enum class CaseMode { kNone, kUpper, kLower };

struct State {
    const DateTimePass& pass;
    SYSTEMTIME date;
    CaseMode caseMode = CaseMode::kNone;
    std::wstring result = {};
};

struct Variable {
    const wchar_t* name;
    void (*apply)(State& state);
};

constexpr Variable kVariables[] = {
    {L"C",
     [](State& state) {
         if (state.pass.chooseDate) state.pass.chooseDate(state.date);
         state.result += state.pass.dateQuestion;
     }},
    {L"T",
     [](State& state) {
         if (state.pass.chooseTime) state.pass.chooseTime(state.date);
         state.result += state.pass.timeQuestion;
     }},
    {L"nmfd", [](State& state) { state.date = FirstDayOfNextMonth(state.date); }},
    {L"mld", [](State& state) { state.date = LastDayOfMonth(state.date); }},
    {L"mfd", [](State& state) { state.date = FirstDayOfMonth(state.date); }},
    {L"mfwd", [](State& state) { state.date = WorkdayFrom(FirstDayOfMonth(state.date), false); }},
    {L"mfWD", [](State& state) { state.date = WorkdayFrom(FirstDayOfMonth(state.date), true); }},
    {L"qfd", [](State& state) { state.date = FirstDayOfQuarter(state.date); }},
    {L"qfwd", [](State& state) { state.date = WorkdayFrom(FirstDayOfQuarter(state.date), false); }},
    {L"qfWD", [](State& state) { state.date = WorkdayFrom(FirstDayOfQuarter(state.date), true); }},
    {L"mlwd", [](State& state) { state.date = LastWorkdayOfMonth(state.date, false); }},
    {L"mlWD", [](State& state) { state.date = LastWorkdayOfMonth(state.date, true); }},
    {L"qlwd", [](State& state) { state.date = LastWorkdayOfQuarter(state.date, false); }},
    {L"qlWD", [](State& state) { state.date = LastWorkdayOfQuarter(state.date, true); }},
    {L"qld", [](State& state) { state.date = LastDayOfQuarter(state.date); }},
    {L"uc", [](State& state) { state.caseMode = CaseMode::kUpper; }},
    {L"lc", [](State& state) { state.caseMode = CaseMode::kLower; }},
    {L"dc", [](State& state) { state.caseMode = CaseMode::kNone; }},
    {L"ldim", [](State& state) { state.date = LastDayInMonthAhead(state.date); }},
};

struct NumberedVariable {
    const wchar_t* prefix;
    void (*apply)(State& state, int number);
};

constexpr NumberedVariable kNumberedVariables[] = {
    // Counted from today, whatever moved the date before.
    {L"d+", [](State& state, int number) { state.date = AddDays(state.pass.now, number); }},
    {L"wd:", [](State& state, int number) { state.date = NextWeekday(state.date, number); }},
    {L"addd+", [](State& state, int number) { state.date = AddDays(state.date, number); }},
    {L"lwdim:", [](State& state, int number) { state.date = LastWeekdayInMonth(state.date, number); }},
    {L"lwdiq:", [](State& state, int number) { state.date = LastWeekdayInQuarter(state.date, number); }},
};

// Whether `piece` is a variable; it is then carried out.
bool ApplyVariable(State& state, std::wstring_view piece) {
    for (const Variable& variable : kVariables) {
        if (piece == variable.name) {
            variable.apply(state);
            return true;
        }
    }
    for (const NumberedVariable& variable : kNumberedVariables) {
        const std::wstring_view prefix = variable.prefix;
        if (!piece.starts_with(prefix)) continue;
        const std::wstring_view digits = piece.substr(prefix.size());
        const int number = ToInt(digits);
        // Only as the number itself would be written: "d+02" and "d+2x" are plain text.
        if (digits != std::to_wstring(number)) continue;
        variable.apply(state, number);
        return true;
    }
    return false;
}

std::wstring InCaseMode(const std::wstring& text, CaseMode mode) {
    if (mode == CaseMode::kUpper) return UpperCase(text);
    return mode == CaseMode::kLower ? LowerCase(text) : text;
}

// Whether `piece` is a printing code; its output is then appended.
bool AppendFormatted(State& state, std::wstring_view piece) {
    const std::wstring output = FormatDateCode(piece, state.date, state.pass.useTime, state.pass.useDate);
    if (output == piece) return false;
    state.result += InCaseMode(output, state.caseMode);
    return true;
}

template <typename Row, std::size_t count>
constexpr std::array<const wchar_t*, count> Names(const Row (&rows)[count], const wchar_t* Row::*name) {
    std::array<const wchar_t*, count> names = {};
    for (std::size_t i = 0; i < count; ++i) names[i] = rows[i].*name;
    return names;
}

}  // namespace

bool HasTwoPercentSigns(std::wstring_view text) {
    const std::size_t first = text.find(L'%');
    return first != std::wstring_view::npos && text.find(L'%', first + 1) != std::wstring_view::npos;
}

bool MayAskForDate(std::wstring_view text) {
    const auto asks = [](std::wstring_view piece) { return piece == L"C" || piece == L"T"; };
    return HasTwoPercentSigns(text) && std::ranges::any_of(Split(text, L'%'), asks);
}

void ExpandDateTimeCodes(std::wstring& text, const DateTimePass& pass) {
    if (!HasTwoPercentSigns(text)) return;
    // At the very beginning it is deliberately not honoured and stays, being no code.
    const std::size_t switchedOff = text.find(kNoCodes, 1);
    if (switchedOff != std::wstring::npos) {
        ReplaceAll(text, kNoCodes, L"");
        return;
    }
    text.append(L"%").append(kEndMark);
    State state{pass, pass.now};
    std::wstring& result = state.result;
    result.reserve(text.size());
    bool previousConsumed = true;  // nothing stands before the first piece that could have lost its sign
    for (const std::wstring_view piece : Split(text, L'%')) {
        const bool consumed = ApplyVariable(state, piece) || AppendFormatted(state, piece);
        if (!consumed) {
            if (!previousConsumed) result += L'%';
            result += piece;
        }
        previousConsumed = consumed;
    }
    ReplaceAll(result, std::wstring(L"%").append(kEndMark), L"");
    ReplaceAll(result, kEndMark, L"");
    text = std::move(result);
}

std::span<const wchar_t* const> DateVariables() {
    static constexpr auto kNames = Names(kVariables, &Variable::name);
    return kNames;
}

std::span<const wchar_t* const> NumberedDateVariables() {
    static constexpr auto kNames = Names(kNumberedVariables, &NumberedVariable::prefix);
    return kNames;
}

}  // namespace verbatix
