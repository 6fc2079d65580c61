// Kills the program at random moments, or fills its disk, and says what became of the settings file:
//
//     kill_program kill ENTRIES KILLS [SEED]
//     kill_program full ENTRIES ROUNDS FOLDER
//
// Ends with 0 when every file was whole.
#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

#include "bench/reliability/kill_driver.h"

using namespace verbatix;

static void Print(const std::wstring& line) {
    const std::string bytes = ToBytes(line + L"\n", CP_UTF8);
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
              nullptr);
}

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    // The folder may have blanks in its name.
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::vector<std::wstring> words(arguments + 1, arguments + count);
    LocalFree(arguments);
    if (words.size() < 3) return 2;
    test::KillOptions options;
    options.entries = ToInt(words[1]);
    options.kills = ToInt(words[2]);
    const bool isFull = words[0] == L"full";
    if (isFull && words.size() > 3) options.settingsFolder = words[3];
    if (!isFull && words.size() > 3) options.seed = static_cast<unsigned>(ToInt(words[3]));
    const test::KillResult result =
        isFull ? test::FillDiskWhileWorking(options) : test::KillWhileWorking(options);
    Print(Format(L"%d entries: %d files looked at after %d actions, %d kills inside a commit; broken: %ls",
                 options.entries, result.files, result.actions, result.insideCommits,
                 result.broken.empty() ? L"none" : result.broken.c_str()));
    return result.broken.empty() ? 0 : 1;
}
