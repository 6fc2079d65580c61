// What the main window needs from the program around it. Set once, before the window is created; a null
// function is left out.
#pragma once

#include <map>
#include <string>

namespace verbatix {

struct ProgramClient {
    // Names of the languages that there are, each in itself, by their numbers.
    const std::map<int, std::wstring>& (*languageNames)() = nullptr;
    // Number of the language in use.
    int (*activeLanguage)() = nullptr;
    // Reads that language's texts, and user files, anew and uses them. False when that failed.
    bool (*useLanguage)(int number) = nullptr;
    // Lets another copy of the program start, and forbids it again.
    void (*releaseSession)() = nullptr;
    void (*claimSession)() = nullptr;
    // Lines about the system, for reports.
    std::wstring systemReport;
    // Command line that starts the program again with the same settings file.
    std::wstring startArguments;
};

extern ProgramClient programClient;

// Full path of the running program.
std::wstring ProgramFile();

}  // namespace verbatix
