#include "ui/entries/undo.h"

#include <windows.h>

#include <optional>

#include "base/language.h"
#include "base/text.h"
#include "ui/editor/editor.h"
#include "ui/entries/move_entry.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/state/undo_texts.h"

namespace verbatix {

// What is typed becomes a step, and whatever else has changed the list without a word.
static bool IsReady() {
    if (mainWindow.listCommandsBlocked || !SaveEdits(Warn::kAlways)) return false;
    NoteAction({});
    return true;
}

void Undo() {
    if (!IsReady()) return;
    const std::optional<Action> action = UndoStepIn(undoHistory, mainWindow.entries);
    if (!action) return;
    ShowKept(action->before);
    OfferInStatusBar(FillIn(LanguageText(text::kUndone), {ActionName(*action)}), Offer::kRedo);
}

void Redo() {
    if (!IsReady()) return;
    const std::optional<Action> action = RedoStepIn(undoHistory, mainWindow.entries);
    if (!action) return;
    ShowKept(action->after, action->act == Act::kDelete ? Hidden::kStay : Hidden::kBringUp);
    const std::wstring done = DoneText(*action);
    if (!done.empty()) OfferInStatusBar(done, Offer::kUndo);
}

void FollowOffer() {
    const std::optional<Offer> offer = StandingOffer();
    if (!offer) return OnStatusBarClick();
    return *offer == Offer::kUndo ? Undo() : Redo();
}

}  // namespace verbatix
