#include "ui/editor/code_examples.h"

#include <string_view>

#include "base/language.h"
#include "ui/editor/preview.h"

namespace verbatix {

// What moves the date, or changes letters, shows in what follows it.
static std::wstring TextWith(const CodeItem& item) {
    if (item.atStart) return {};
    switch (item.group) {
        case text::kInsertDates:
        case text::kInsertSelection: return item.token;
        case text::kInsertDateMoves: {
            const std::wstring_view token = item.token;
            if (token == L"%C%" || token == L"%T%") return item.token;
            const bool isCase = token == L"%uc%" || token == L"%lc%" || token == L"%dc%";
            return item.token + (isCase ? L"%MMMM%" : L"%LDF%");
        }
        case text::kInsertKeys: return item.token.starts_with(L"%send_") ? item.token : std::wstring();
        default: return {};
    }
}

std::vector<std::wstring> CodeExamples(std::span<const CodeItem> items) {
    // Whatever the options say of codes in entries: they are offered here.
    const PreviewSamples samples = CurrentSamples(true, true);
    std::vector<std::wstring> examples;
    for (const CodeItem& item : items) {
        const std::wstring text = TextWith(item);
        examples.push_back(text.empty() ? text : PreviewText(PreviewPieces(text, samples)));
    }
    return examples;
}

}  // namespace verbatix
