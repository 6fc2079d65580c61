#include "ui/shell/export.h"

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "store/file_commit.h"
#include "store/list_exchange.h"
#include "store/settings_path.h"
#include "ui/editor/editor.h"
#include "ui/shell/file_dialog.h"
#include "ui/shell/tracking_tooltip.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"

namespace verbatix {

namespace {

void Confirm(const std::wstring& title, int what, int count) {
    TellWhatWasDone(mainWindow.window, title, ExportNotice(LanguageText(what), count));
}

void Tell(const std::wstring& text) {
    MessageBoxW(mainWindow.window, text.c_str(), kProductName, MB_OK | MB_ICONWARNING);
}

// What has been typed so far is part of what is exported, so it is saved; false where the user goes back to
// a text that is too long.
bool HasAllThatIsTyped() {
    return SaveEdits(Warn::kAlways);
}

void CopyAsText(const std::vector<int>& positions) {
    if (!HasAllThatIsTyped()) return;
    int count = 0;
    const std::wstring text = ExportText(mainWindow.entries, positions, &count);
    if (count == 0) return Tell(LanguageText(text::kNoneSelected));
    if (!ClipboardPutText(text)) return Tell(LanguageText(text::kClipboardBusy));
    Confirm(LanguageText(text::kCopied), text::kEntriesCopied, count);
}

void WriteTo(const std::wstring& path, const std::vector<int>& positions) {
    if (!HasAllThatIsTyped()) return;
    int count = 0;
    const std::wstring text = ExportText(mainWindow.entries, positions, &count);
    // The settings file holds more than the list.
    const bool isOurs = EqualsIgnoreCase(path, settingsPath) || IsSameFile(path, settingsPath);
    if (!isOurs && WriteExportFile(path, text))
        return Confirm(FileNameOf(path), text::kEntriesWritten, count);
    Tell(LanguageText(text::kCannotWrite) + L"\n" + path);
}

void ExportToFile(const std::vector<int>& positions) {
    if (positions.empty()) return Tell(LanguageText(text::kNoneSelected));
    const std::wstring path = AskFileToWrite(mainWindow.window, L"Verbatix_list.txt");
    if (!path.empty()) WriteTo(path, positions);
}

}  // namespace

void ExportAsText() {
    CopyAsText(SelectedEntries());
}

void ExportAllAsText() {
    CopyAsText(AllPositions(mainWindow.entries));
}

void ExportSelectionToFile() {
    ExportToFile(SelectedEntries());
}

void ExportAllToFile() {
    ExportToFile(AllPositions(mainWindow.entries));
}

void WriteExchangeFile() {
    WriteTo(ExchangeFilePath(), AllPositions(mainWindow.entries));
}

std::wstring ExportNotice(const std::wstring& what, int count) {
    constexpr const wchar_t* kLine = L"------------------------";
    return kLine + Format(L"\n%ls\n%ls: %d\n", kProductName, what.c_str(), count) + kLine;
}

}  // namespace verbatix
