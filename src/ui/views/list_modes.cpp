#include "ui/views/list_modes.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "base/language.h"
#include "base/text.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/views/clashes.h"

namespace verbatix {

namespace {

// Of the entries that clash, when they were last looked for.
std::unordered_map<int, unsigned> reasons;

std::vector<int> Unused(std::vector<int> rows, int pinned) {
    std::erase_if(rows, [=](int position) {
        return position != pinned && UsesOf(mainWindow.entries.at(position).current).count != 0;
    });
    return rows;
}

std::vector<int> Clashing(const std::vector<int>& rows, int pinned) {
    std::set<int> left(rows.begin(), rows.end());
    std::vector<int> found;
    reasons.clear();
    for (const ClashRow& row : FindClashes(mainWindow.entries)) {
        reasons[row.position] = row.reasons;
        if (left.erase(row.position)) found.push_back(row.position);
    }
    if (left.count(pinned)) found.push_back(pinned);
    return found;
}

}  // namespace

std::vector<int> RowsOfMode(std::vector<int> rows, int pinned) {
    switch (mainWindow.listMode) {
        case ListMode::kUnused: return Unused(std::move(rows), pinned);
        case ListMode::kClashes: return Clashing(rows, pinned);
        default: return rows;
    }
}

std::wstring ClashText(int position) {
    static constexpr std::pair<unsigned, int> kTexts[] = {
        {kSharesHotkey, text::kSharesHotkey},
        {kSharesText, text::kSharesText},
        {kSharesHotkey | kSharesText, text::kSharesBoth},
        {kLacksHotkey, text::kLacksHotkey},
        {kLacksHotkey | kSharesText, text::kLacksHotkeySharesText},
    };
    const auto found = reasons.find(position);
    if (found == reasons.end()) return {};
    for (const auto& [reason, name] : kTexts) {
        if (found->second == reason) return LanguageText(name);
    }
    return {};
}

std::wstring ModeLine(std::size_t rows) {
    if (mainWindow.listMode == ListMode::kAll) return {};
    const bool isUnused = mainWindow.listMode == ListMode::kUnused;
    return FillIn(LanguageText(isUnused ? text::kUnusedLine : text::kClashLine), {std::to_wstring(rows)});
}

std::wstring ModeEmptyNote() {
    switch (mainWindow.listMode) {
        case ListMode::kUnused: return LanguageText(text::kNoUnused);
        case ListMode::kClashes: return LanguageText(text::kNoClashes);
        default: return {};
    }
}

}  // namespace verbatix
