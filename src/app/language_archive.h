// The program's texts in every language, and the list of the first run: one archive among the resources,
// and user files beside the program that add to it. docs/formats.md describes both. Nothing in a file can
// make the loading fail or hang; lines that are not understood are passed over.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"

namespace verbatix {

struct Language {
    std::wstring name;  // in the language itself
    LanguageTexts texts;
};

struct LanguageArchive {
    std::map<int, Language> languages;
    std::wstring firstRunList;  // lines ending in CR LF; empty when there is none
};

// Reads language lines into `languages`; texts already there are replaced. Lines before the first
// "[language ...]" line belong to language `defaultLanguage`, or to none when that is negative. Languages
// and texts are limited in number, so that a hostile file cannot fill the memory.
void ReadLanguageLines(std::wstring_view text, int defaultLanguage, std::map<int, Language>& languages);

// Reads an archive: language lines, a line that holds a form feed only, the list of the first run.
LanguageArchive ParseLanguageArchive(std::wstring_view text);

// Text of a user file: UTF-16 of either byte order when it begins with the mark, else UTF-8.
std::wstring DecodeTextFile(std::string_view bytes);

// Adds what the "translate_" files of that folder say, in the order of their names. Lines that name no
// language are for the active one, or for English where the active one does not exist. Files beyond 1 MB,
// and more than 64 files, are left out.
void AddTranslateFiles(const std::wstring& folder, int activeLanguage, std::map<int, Language>& languages);

// Reads the archive of the running program and the user files beside it, and gives the texts of that
// language, English for what it lacks, to LanguageText. False when the archive is missing or has no text.
bool LoadLanguageArchive(int languageNumber);

// What the last successful load found: names of the languages by number, the language in use (English when
// the one asked for does not exist), and the list of the first run in the layout of an export.
struct LoadedLanguages {
    std::map<int, std::wstring> names;
    int active = 0;
    std::wstring firstRunList;
};
const LoadedLanguages& CurrentLanguages();

}  // namespace verbatix
