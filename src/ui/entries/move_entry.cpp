#include "ui/entries/move_entry.h"

#include <windows.h>

#include <commctrl.h>

#include "base/language.h"
#include "base/product.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

void SaveAndShow(int position) {
    // The entry that the editor shows may stand at another place now.
    editor.edited = false;
    KeepEntries();
    if (position >= 0) SelectEntry(position);
    ShowInEditor(position >= 0 ? position : SelectedEntry());
}

void PlaceAndShow(int position, const Placement& placement) {
    if (!SaveEdits(Warn::kAlways)) return;
    if (const std::optional<int> landing = PlaceEntry(mainWindow.entries, position, placement)) {
        return SaveAndShow(*landing);
    }
    MessageBoxW(mainWindow.window, LanguageText(text::kLabelTooLong).c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
}

bool CanMoveInView() {
    return IsTreeShown() || (settings.sortColumn < 0 && !IsFiltered());
}

void MoveSelected(bool down) {
    const int position = SelectedEntry();
    if (position < 0) return;
    if (!CanMoveInView()) return TellInStatusBar(LanguageText(text::kOrderIsFixed));
    const std::optional<Placement> step =
        IsTreeShown() ? StepInTree(ShownTree(), mainWindow.entries, position, down)
                      : StepInRows(mainWindow.rows, mainWindow.entries, position, down);
    if (step) PlaceAndShow(position, *step);
}

}  // namespace verbatix
