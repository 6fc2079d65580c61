// What the user can take back: the changes of the list, step by step, in both directions. A step holds the
// entries that differ from the list as it was known before, so whatever changes the list becomes a step,
// and the one who changed it only says what it was. Pure, over the list; it is the caller who saves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "store/entry.h"

namespace verbatix {

enum class Act { kText, kNew, kDuplicate, kDelete, kMove, kRename, kGroup, kHotkey, kImport };

// What was done, for the user.
struct Action {
    Act act = Act::kText;
    std::wstring subject = {};     // to what, as it is shown
    std::vector<int> before = {};  // positions that are shown again when it is undone
    std::vector<int> after = {};   // and when it is redone
    bool isTyping = false;         // goes on in the step before, if that is of the same kind
};

// An entry without its unused room; a step shares it with those before and after.
struct EntryContent {
    std::wstring text;
    std::wstring label;
    uint32_t keyCode = 0;
    uint32_t modifier = 0;
    int32_t order = 0;
    bool operator==(const EntryContent&) const = default;
};
using SharedContent = std::shared_ptr<const EntryContent>;  // null: there was no such entry

struct UndoStep {
    struct Change {
        int position = 0;
        SharedContent before;
        SharedContent after;
    };
    // Of typing, in characters.
    struct Typed {
        std::size_t added = 0;
        std::size_t removed = 0;
    };
    Action action;
    std::vector<Change> changes;
    std::uint64_t time = 0;  // of what was joined last
    std::size_t bytes = 0;
    Typed typed = {};
    std::uint64_t begun = 0;
};

struct UndoHistory {
    std::map<int, SharedContent> known;  // the list as it was last seen
    std::vector<UndoStep> steps;
    std::size_t done = 0;  // the steps from here on have been undone
    bool isSealed = false;
};

// Beyond these the oldest steps are forgotten. The bytes hold a hundred moves across ten thousand entries.
inline constexpr std::size_t kMostUndoSteps = 1000;
inline constexpr std::size_t kMostUndoBytes = std::size_t{64} << 20;
// Typing that goes on within this time is one step, until it is that old or that long: a step is about what
// the user would type again without a sigh. More at once than is typed at once is a step by itself.
inline constexpr std::uint64_t kTypingPauseMilliseconds = 3000;
inline constexpr std::uint64_t kTypingMilliseconds = 10000;
inline constexpr std::size_t kMostTyped = 20;
inline constexpr std::size_t kMostTypedAtOnce = 8;

// Another list: there is nothing to take back any more.
void ForgetSteps(UndoHistory& history, const EntryList& list);

// Makes a step of what differs from the list as it was known. What had been undone can be redone no more.
// False, and nothing happens, when nothing differs. `now` counts milliseconds.
bool NoteStep(UndoHistory& history, const EntryList& list, Action action, std::uint64_t now);

// The user has turned to something else: typing begins a new step.
void SealStep(UndoHistory& history);

// What is undone, or redone, next; null when there is nothing.
const Action* NextUndo(const UndoHistory& history);
const Action* NextRedo(const UndoHistory& history);

// Carries it out in the list, where every entry becomes what it was; one that was not there yet becomes a
// blank one. Nothing when there is no such step. A list that is not what the step left behind is not
// touched: then all steps are forgotten.
std::optional<Action> UndoStepIn(UndoHistory& history, EntryList& list);
std::optional<Action> RedoStepIn(UndoHistory& history, EntryList& list);

}  // namespace verbatix
