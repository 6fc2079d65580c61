#include "ui/editor/preview_area.h"

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "base/text.h"
#include "ids.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/text/code_hints.h"
#include "store/settings.h"
#include "ui/editor/code_catalogue.h"
#include "ui/editor/insertion.h"
#include "ui/editor/preview.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

constexpr std::wstring_view kBuiltinPrefix = L"sys:";

bool IsVariable(const std::wstring& name) {
    wchar_t value[1];
    SetLastError(ERROR_SUCCESS);
    return GetEnvironmentVariableW(name.c_str(), value, 1) != 0 || GetLastError() == ERROR_SUCCESS;
}

const std::vector<std::wstring>& Codes() {
    static const std::vector<std::wstring> codes = [] {
        // One that is no placeholder, but means something to the dates.
        std::vector<std::wstring> found = {L"%no_time_fun%"};
        for (const CodeItem& item : CodeItems()) {
            if (item.token.starts_with(L'%')) found.push_back(item.token);
        }
        return found;
    }();
    return codes;
}

// A built-in command of which there is none.
std::optional<CodeHint> MistypedCommand(std::wstring_view text) {
    if (!text.starts_with(kBuiltinPrefix)) return std::nullopt;
    const std::wstring_view called = text.substr(kBuiltinPrefix.size());
    if (FindBuiltinCommand(called)) return std::nullopt;
    std::vector<std::wstring> names;
    for (const BuiltinCommand& command : BuiltinCommands()) names.emplace_back(command.name);
    const std::wstring_view name = called.substr(0, called.find_first_of(L": \t\r\n"));
    const std::wstring* const meant = ClosestName(name, names);
    if (!meant) return std::nullopt;
    // What follows a colon stays, and the colon with it.
    const bool takesColon = meant->ends_with(L':') && called.substr(name.size()).starts_with(L':');
    return CodeHint{kBuiltinPrefix.size(), name.size() + (takesColon ? 1 : 0), *meant};
}

std::vector<CodeHint> FindHints(std::wstring_view text) {
    std::vector<CodeHint> hints = FindMistypedCodes(text, Codes(), IsVariable);
    if (std::optional<CodeHint> command = MistypedCommand(text)) hints.insert(hints.begin(), *command);
    return hints;
}

// Names the first, and tells how many there are beside it.
std::wstring HintText(const std::wstring& text, const std::vector<CodeHint>& hints) {
    const CodeHint& first = hints.front();
    const int sentence = first.meant.starts_with(L'%') ? text::kCodeMistyped : text::kCommandMistyped;
    const std::wstring written = text.substr(first.start, first.length);
    std::wstring said = FillIn(LanguageText(sentence), {written, first.meant});
    if (hints.size() == 1) return said;
    return FillIn(LanguageText(text::kAndMore), {said, std::to_wstring(hints.size() - 1)});
}

void SetIfNew(int control, const std::wstring& text) {
    if (text != FieldText(control)) SetWindowTextW(DialogControl(control), text.c_str());
}

void ShowHint(const std::wstring& text) {
    const HWND button = DialogControl(IDC_MEND_CODE);
    const std::vector<CodeHint> hints = FindHints(text);
    if (!hints.empty()) {
        SetIfNew(IDC_MEND_CODE, HintText(text, hints));
    } else if (GetFocus() == button) {
        SetFocus(DialogControl(IDC_TEXT));
    }
    ShowWindow(button, hints.empty() ? SW_HIDE : SW_SHOW);
}

}  // namespace

void ShowPreviewArea() {
    const int show = settings.showPreview ? SW_SHOW : SW_HIDE;
    for (const int control : {IDC_PREVIEW_CAPTION, IDC_PREVIEW}) {
        if (!settings.showPreview && GetFocus() == DialogControl(control)) SetFocus(ShownView());
        ShowWindow(DialogControl(control), show);
    }
    RefreshPreview();
    SendMessageW(mainWindow.window, WM_SIZE, 0, 0);
}

void RefreshPreview() {
    if (!settings.showPreview) return ShowHint({});
    const std::wstring text = FieldText(IDC_TEXT);
    std::wstring stored = text;
    ReplaceAll(stored, L"\r\n", L"\\n");
    const PreviewSamples samples = CurrentSamples(settings.useDateFormat != 0, settings.useTimeFormat != 0);
    SetIfNew(IDC_PREVIEW, PreviewText(PreviewPieces(stored, samples)));
    ShowHint(text);
}

void MendCode() {
    const HWND field = DialogControl(IDC_TEXT);
    const std::vector<CodeHint> hints = FindHints(FieldText(IDC_TEXT));
    if (hints.empty()) return;
    const CodeHint& hint = hints.front();
    SendMessageW(field, EM_SETSEL, hint.start, static_cast<LPARAM>(hint.start + hint.length));
    ReplaceSelectedText(hint.meant);
    SetFocus(field);
}

}  // namespace verbatix
