#include "ui/entries/move_entry.h"

#include <windows.h>

#include <commctrl.h>

#include "base/product.h"
#include "ids.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

void TellInStatusBar(const std::wstring& text) {
    SendMessageW(mainWindow.statusBar, SB_SIMPLE, TRUE, 0);
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, SB_SIMPLEID, reinterpret_cast<LPARAM>(text.c_str()));
}

void SaveAndShow(int position) {
    // The entry that the editor shows may stand at another place now.
    editor.edited = false;
    SaveList(mainWindow.entries, mainWindow.listClient, true, true);
    RebuildHotkeyTables(false);
    if (position >= 0) SelectEntry(position);
    ShowInEditor(position >= 0 ? position : SelectedEntry());
}

void PlaceAndShow(int position, const Placement& placement) {
    constexpr int kLabelTooLong = 1283;
    if (!SaveEdits(Warn::kAlways)) return;
    if (const std::optional<int> landing = PlaceEntry(mainWindow.entries, position, placement)) {
        return SaveAndShow(*landing);
    }
    MessageBoxW(mainWindow.window, LanguageText(kLabelTooLong).c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
}

bool CanMoveInView() {
    const bool filtered = GetWindowTextLengthW(GetDlgItem(mainWindow.window, IDC_FILTER)) > 0;
    return settings.showTree || (settings.sortColumn < 0 && !filtered);
}

void MoveSelected(bool down) {
    const int position = SelectedEntry();
    if (position < 0) return;
    if (!CanMoveInView()) return TellInStatusBar(kOrderIsFixed);
    const std::optional<Placement> step =
        settings.showTree ? StepInTree(ShownTree(), mainWindow.entries, position, down)
                          : StepInRows(mainWindow.rows, mainWindow.entries, position, down);
    if (step) PlaceAndShow(position, *step);
}

}  // namespace verbatix
