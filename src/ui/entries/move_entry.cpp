#include "ui/entries/move_entry.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "ui/editor/editor.h"
#include "ui/editor/editor_fields.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

void SaveAndShow(Action action) {
    const std::vector<int> positions = action.after;
    NoteAction(std::move(action));
    ShowKept(positions);
}

void ShowKept(const std::vector<int>& positions) {
    // The entry that the editor shows may stand at another place now.
    editor.edited = false;
    KeepEntries();
    if (!positions.empty()) SelectEntry(positions.front());
    ShowInEditor(SelectedEntry());
}

void PlaceAndShow(int position, const Placement& placement, Act act) {
    if (!SaveEdits(Warn::kAlways)) return;
    Action action = {act, NameOfEntries(mainWindow.entries, {position}), {position}};
    if (const std::optional<int> landing = PlaceEntry(mainWindow.entries, position, placement)) {
        action.after = {*landing};
        return SaveAndShow(std::move(action));
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
    if (step) PlaceAndShow(position, *step, Act::kMove);
}

}  // namespace verbatix
