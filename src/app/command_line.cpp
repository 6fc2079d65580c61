#include "app/command_line.h"

#include <algorithm>

#include "base/text.h"

namespace verbatix {

StartOptions startOptions;

// Blanks at both ends, so that every argument ends at a blank; blanks inside quotes as tabs, so that
// cutting does not see them; no quotes. A quote that is never closed holds to the end, the added blanks
// included.
static std::vector<wchar_t> ProtectQuoted(std::wstring_view commandLine) {
    std::wstring padded = L" ";
    padded.append(commandLine).append(L"    ");
    std::vector<wchar_t> result;
    result.reserve(padded.size() + 1);
    bool insideQuotes = false;
    for (const wchar_t c : padded) {
        if (c == L'"') {
            insideQuotes = !insideQuotes;
        } else {
            result.push_back(c == L' ' && insideQuotes ? L'\t' : c);
        }
    }
    result.push_back(L'\0');
    return result;
}

int SplitCommandLine(ArgumentList& list, std::wstring_view commandLine, wchar_t separator) {
    list.count = 0;
    list.workingCopy = ProtectQuoted(commandLine);
    wchar_t* const end = list.workingCopy.data() + list.workingCopy.size() - 1;
    for (wchar_t* at = list.workingCopy.data(); at != end && list.count < kMaxArguments;) {
        wchar_t* const pieceEnd = std::find(at, end, L' ');
        if (pieceEnd != at) {
            wchar_t* const found = std::find(at, pieceEnd, separator);
            list.arguments[list.count++] = {at, found != pieceEnd ? found + 1 : nullptr};
            *found = L'\0';
        }
        at = pieceEnd;
        if (at != end) *at++ = L'\0';
    }
    std::replace_if(
        list.workingCopy.data(), end, [](wchar_t c) { return c == L'\t' || c == L'\n'; }, L' ');
    return list.count;
}

static bool HasArgument(const ArgumentList& list, std::wstring_view name) {
    return std::any_of(list.begin(), list.end(),
                       [=](const Argument& argument) { return EqualsIgnoreCase(argument.name, name); });
}

StartOptions ReadStartOptions(const ArgumentList& list) {
    StartOptions options;
    options.startInBackground = HasArgument(list, L"-bg");
    options.hideRequested = HasArgument(list, L"hide");
    options.updateService = HasArgument(list, L"AutoupdateService_2020");
    if (HasArgument(list, L"RESTART_Branwell_2018")) options.skipInstanceCheck = false;
    // Unlike the others this one is compared with its case: "-INI:" is not the option.
    const Argument* const ini = std::find_if(list.begin(), list.end(), [](const Argument& argument) {
        return std::wstring_view(argument.name) == L"-ini" && argument.value;
    });
    if (ini != list.end()) options.iniPathOverride += ini->value;
    return options;
}

std::wstring RestartArguments(const StartOptions& options) {
    std::wstring arguments;
    if (!options.iniPathOverride.empty()) arguments = L"\"-ini:" + options.iniPathOverride + L"\"";
    if (options.hideRequested) arguments += arguments.empty() ? L"hide" : L" hide";
    return arguments;
}

}  // namespace verbatix
