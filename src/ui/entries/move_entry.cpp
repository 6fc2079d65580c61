#include "ui/entries/move_entry.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
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
    // Beside what was deleted: what does not clash any more without it does not end the view of clashes.
    const Hidden hidden = action.act == Act::kDelete ? Hidden::kStay : Hidden::kBringUp;
    NoteAction(std::move(action));
    ShowKept(positions, hidden);
}

void ShowKept(const std::vector<int>& positions, Hidden hidden) {
    // The entry that the editor shows may stand at another place now.
    editor.edited = false;
    KeepEntries();
    const bool isShown = std::all_of(positions.begin(), positions.end(), HasListRow);
    if (isShown || hidden == Hidden::kBringUp) {
        SelectEntries(positions);
    } else {
        SelectFirstEntry();
    }
    // What is offered now stands until the user selects something else.
    CountSelected();
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

bool PlaceManyAndShow(const std::vector<Moved>& moved, const Destination& destination, Act act) {
    if (moved.empty() || !SaveEdits(Warn::kAlways)) return false;
    Action action = {act};
    for (const Moved& one : moved) action.before.push_back(one.position);
    action.subject = NameOfEntries(mainWindow.entries, action.before);
    const std::optional<std::vector<int>> landings = PlaceMany(mainWindow.entries, moved, destination);
    if (!landings) {
        MessageBoxW(mainWindow.window, LanguageText(text::kLabelTooLong).c_str(), kProductName,
                    MB_OK | MB_ICONWARNING);
        return false;
    }
    action.after = *landings;
    SaveAndShow(std::move(action));
    return true;
}

static void MoveMany(const std::vector<int>& selected, bool down) {
    const Rearrangement order = IsTreeShown() ? StepManyInTree(ShownTree(), MarkedNodes(), down)
                                              : StepManyInRows(mainWindow.rows, selected, down);
    if (order.places == order.sources || !SaveEdits(Warn::kAlways)) return;
    Action action = {Act::kMove, NameOfEntries(mainWindow.entries, selected), selected};
    action.after = LandingsOf(order, selected);
    Rearrange(mainWindow.entries, order);
    SaveAndShow(std::move(action));
}

void MoveSelected(bool down) {
    // First: the step is made of what the entry is by then.
    if (!SaveEdits(Warn::kAlways)) return;
    const std::vector<int> selected = SelectedEntries();
    if (selected.empty()) return;
    if (!CanMoveInView()) return TellInStatusBar(LanguageText(text::kOrderIsFixed));
    const int position = SelectedEntry();
    if (selected.size() > 1 || position < 0) return MoveMany(selected, down);
    const std::optional<Placement> step =
        IsTreeShown() ? StepInTree(ShownTree(), mainWindow.entries, position, down)
                      : StepInRows(mainWindow.rows, mainWindow.entries, position, down);
    if (step) PlaceAndShow(position, *step, Act::kMove);
}

}  // namespace verbatix
