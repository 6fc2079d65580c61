#include "ui/state/undo_texts.h"

#include <algorithm>
#include <iterator>

#include "base/language.h"
#include "base/text.h"

namespace verbatix {

namespace {

struct Row {
    Act act;
    int name;
    int done;  // 0: nothing is said
};

constexpr Row kRows[] = {
    {Act::kText, text::kTextStep, 0},
    {Act::kNew, text::kNewStep, 0},
    {Act::kDuplicate, text::kDuplicateStep, 0},
    {Act::kDelete, text::kDeleteStep, text::kDeleted},
    {Act::kMove, text::kMoveStep, text::kMoved},
    {Act::kRename, text::kRenameStep, text::kRenamed},
    {Act::kGroup, text::kGroupStep, text::kGrouped},
    {Act::kHotkey, text::kHotkeyStep, text::kHotkeyChanged},
    {Act::kImport, text::kImportStep, text::kImported},
};

const Row& RowOf(Act act) {
    return *std::find_if(std::begin(kRows), std::end(kRows) - 1,
                         [act](const Row& row) { return row.act == act; });
}

}  // namespace

std::wstring ActionName(const Action& action) {
    return FillIn(LanguageText(RowOf(action.act).name), {action.subject});
}

std::wstring DoneText(const Action& action) {
    const int text = action.isTyping ? 0 : RowOf(action.act).done;
    return text == 0 ? std::wstring() : FillIn(LanguageText(text), {action.subject});
}

}  // namespace verbatix
