#include "app/language_default.h"

#include <windows.h>

namespace verbatix {

constexpr int kAnySublanguage = -1;

// The numbers are stored in settings files and never change. Rows for one sublanguage stand before the row
// for the rest of the language.
static constexpr struct {
    int primary;
    int sublanguage;
    int number;
} kDefaults[] = {
    {LANG_GERMAN, kAnySublanguage, kLanguageGerman},
    {LANG_ENGLISH, kAnySublanguage, kLanguageEnglish},
    {LANG_ITALIAN, kAnySublanguage, 2},
    {LANG_SWEDISH, kAnySublanguage, 3},
    {LANG_SERBIAN, kAnySublanguage, 4},  // Croatian and Bosnian share the primary language
    {LANG_GREEK, kAnySublanguage, 5},
    {LANG_ROMANIAN, kAnySublanguage, 6},
    {LANG_RUSSIAN, kAnySublanguage, 7},
    {LANG_DUTCH, SUBLANG_DUTCH_BELGIAN, 18},
    {LANG_DUTCH, kAnySublanguage, 8},
    {LANG_CATALAN, kAnySublanguage, 9},
    {LANG_SPANISH, kAnySublanguage, 10},
    {LANG_PERSIAN, kAnySublanguage, 11},
    {LANG_INDONESIAN, kAnySublanguage, 12},
    {LANG_CHINESE, SUBLANG_CHINESE_TRADITIONAL, 15},
    {LANG_CHINESE, kAnySublanguage, 13},
    {LANG_PORTUGUESE, kAnySublanguage, 14},
    {LANG_FRENCH, kAnySublanguage, 16},
    {LANG_VIETNAMESE, kAnySublanguage, 17},
    {LANG_KOREAN, kAnySublanguage, 19},
    {LANG_POLISH, kAnySublanguage, 20},
    {LANG_TURKISH, kAnySublanguage, 21},
    {LANG_HUNGARIAN, kAnySublanguage, 22},
    {LANG_CZECH, kAnySublanguage, 23},
    {LANG_ARABIC, kAnySublanguage, 24},
    {LANG_JAPANESE, kAnySublanguage, 25},
};

int DefaultLanguageNumber(unsigned short languageId) {
    const int primary = languageId & 0x3FF;
    const int sublanguage = languageId >> 10;
    for (const auto& row : kDefaults) {
        if (row.primary == primary &&
            (row.sublanguage == kAnySublanguage || row.sublanguage == sublanguage))
            return row.number;
    }
    return kLanguageEnglish;
}

bool IsGerman(unsigned short languageId) {
    return (languageId & 0x3FF) == LANG_GERMAN;
}

}  // namespace verbatix
