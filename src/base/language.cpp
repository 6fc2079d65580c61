#include "base/language.h"

namespace verbatix {

static LanguageTexts activeTexts;
static LanguageTexts englishTexts;

const std::wstring& LanguageText(int number) {
    static const std::wstring none;
    for (const LanguageTexts* texts : {&activeTexts, &englishTexts}) {
        if (const auto found = texts->find(number); found != texts->end()) return found->second;
    }
    return none;
}

void SetLanguageTexts(LanguageTexts active, LanguageTexts english) {
    activeTexts = std::move(active);
    englishTexts = std::move(english);
}

}  // namespace verbatix
