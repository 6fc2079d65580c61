#include "ui/shell/import.h"

#include <windows.h>

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "store/list_exchange.h"
#include "ui/editor/editor.h"
#include "ui/editor/editor_fields.h"
#include "ui/shell/file_dialog.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"

namespace verbatix {

static void Import(const std::wstring& path) {
    if (!SaveEdits(Warn::kAlways)) return;
    const std::size_t before = mainWindow.entries.size();
    ImportListFile(mainWindow.entries, mainWindow.listClient, path);
    if (mainWindow.entries.size() == before) return;
    Action action = {Act::kImport};
    if (SelectedEntry() >= 0) action.before = {SelectedEntry()};
    for (auto added = static_cast<int>(before); added < static_cast<int>(mainWindow.entries.size());
         ++added)
        action.after.push_back(added);
    action.subject = NameOfEntries(mainWindow.entries, action.after);
    NoteAction(std::move(action));
    RebuildHotkeyTables();
    RefreshViews(true);
}

void ImportFromFile() {
    const std::wstring path = AskFileToRead(mainWindow.window);
    if (!path.empty()) Import(path);
}

void ImportExchangeFile() {
    const std::wstring path = ExchangeFilePath();
    if (GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) return Import(path);
    MessageBoxW(mainWindow.window, LanguageText(text::kNoExchangeFile).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

}  // namespace verbatix
