#include "paste/steps/expansion.h"

#include <windows.h>

#include <utility>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/html_clipboard.h"
#include "clipboard/paste_content.h"
#include "clipboard/saved_clipboard.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"
#include "paste/steps/date_dialogs.h"
#include "paste/text/placeholders.h"

namespace verbatix {

std::wstring CapturedText;
bool PasteAsHtml = false;

static std::wstring UserName() {
    wchar_t name[1024] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetUserNameW(name, &size) ? name : L"";
}

static std::wstring ComputerName() {
    wchar_t name[1024] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetComputerNameW(name, &size) ? name : L"";
}

KnownFacts FetchKnownFacts(std::wstring_view text, bool useDate, bool useTime) {
    KnownFacts facts;
    if (UsesNames(text)) {
        facts.userName = UserName();
        facts.computerName = ComputerName();
    }
    GetLocalTime(&facts.dates.now);
    facts.dates.useDate = useDate;
    facts.dates.useTime = useTime;
    facts.dates.chooseDate = ChooseDate;
    facts.dates.chooseTime = ChooseTime;
    return facts;
}

static std::wstring ClipboardText() {
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

static std::wstring UsersText() {
    std::wstring text;
    GetUsersText(text);
    return text;
}

static std::wstring ClipboardHtml() {
    std::wstring fragment;
    std::wstring raw;
    HtmlClipboardGet(fragment, raw);
    return fragment;
}

static std::wstring CopySelection() {
    Pause(10);
    if (!SendCopy()) return {};
    AwaitCopy(200);
    return ClipboardText();
}

static std::wstring CopySelectionAsHtml() {
    if (!MaySendStroke() || !ClearForCopy()) return {};
    SendCopy();
    AwaitCopy(100);
    return ClipboardHtml();
}

static void TraceReplacement(const wchar_t* token, const std::wstring& text) {
    OutputDebugStringW(token);
    OutputDebugStringW(L"<-----------\n");
    OutputDebugStringW(text.c_str());
    OutputDebugStringW(L"<-\n");
}

static ExpansionSources SystemSources(bool useDate, bool useTime) {
    return {[=](std::wstring_view text) { return FetchKnownFacts(text, useDate, useTime); },
            ClipboardText,
            ClipboardHtml,
            CopySelection,
            CopySelectionAsHtml,
            TraceReplacement};
}

std::wstring ExpandPlaceholders(std::wstring& text, bool useDateFormat, bool useTimeFormat) {
    ExpansionSources sources = SystemSources(useDateFormat, useTimeFormat);
    // A run entry has copied the selection by now, and that is what it means.
    sources.clipboardText = UsersText;
    if (ExpandFrom(text, sources)) PasteAsHtml = true;
    return text;
}

int ExpandRunEntry(bool elevate, const std::wstring& text, Launcher launch, bool useDateFormat,
                   bool useTimeFormat) {
    if (!MaySendStroke() || !ClearForCopy()) return 0;
    SendCopy();
    AwaitCopy(150);
    const std::wstring copied = ClipboardText();
    const std::wstring_view selection = TrimBlanks(copied);
    if (!selection.empty()) CapturedText = selection;
    const ExpansionSources sources = SystemSources(useDateFormat, useTimeFormat);
    for (const std::wstring_view piece : Split(text, L'\n')) {
        const std::wstring line = ExpandedRunLine(piece, sources, CapturedText);
        if (!line.empty()) launch(elevate, line);
    }
    return 0;
}

bool FinishForDelivery(const std::wstring& text) {
    const bool asHtml = std::exchange(PasteAsHtml, false);
    if (text.empty()) return true;
    const std::wstring delivered = DeliveredText(text);
    return asHtml ? PutHtmlToPaste(delivered) : PutTextToPaste(delivered);
}

}  // namespace verbatix
