// Which of the program's languages a user gets who never chose one.
#pragma once

namespace verbatix {

constexpr int kLanguageGerman = 0;
constexpr int kLanguageEnglish = 1;

// The language number for a Windows language id (GetUserDefaultLangID); English when there is none of its
// own for it.
int DefaultLanguageNumber(unsigned short languageId);

// Whether that language id is German of any country.
bool IsGerman(unsigned short languageId);

}  // namespace verbatix
