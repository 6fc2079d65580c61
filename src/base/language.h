// The texts the user sees, by number. The store lives here so that every room can look a text up; app/
// fills it at start from the language archive.
#pragma once

#include <map>
#include <string>

#include "base/language_texts.h"

namespace verbatix {

using LanguageTexts = std::map<int, std::wstring>;

// The text with that number (see language_texts.h) in the active language, else in English, else an empty
// text.
const std::wstring& LanguageText(int number);

// Replaces the active texts and the English ones that stand in where the active language has none.
void SetLanguageTexts(LanguageTexts active, LanguageTexts english);

}  // namespace verbatix
