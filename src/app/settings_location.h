// Which INI file is the settings file of this run: one beside the program (portable use), one named on the
// command line, or one in the user's application-data folder. Runs once at start, before the language and
// any setting are read. Whatever fails, there is a path afterwards; with an unwritable one the program runs
// on its defaults.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

// What the choice depends on. Full paths, of any length; what the system did not tell is empty.
struct SettingsFacts {
    std::wstring modulePath;
    std::wstring temporaryFolder;
    std::wstring appDataFolder;
    std::wstring iniPathOverride;
};

// What the choice does to the disk, in the order it needs it.
struct SettingsProbe {
    // Whether a value written to that file reads back; the value is a time stamp less `secondsBack`.
    std::function<bool(const std::wstring& path, int secondsBack)> canWrite;
    std::function<bool(const std::wstring& path)> isPlainFile;
    std::function<void(const std::wstring& path)> createFolder;
};

struct StartMessage {
    enum Kind { kWriteError, kWrongExtension } kind;
    std::wstring path;
};

struct SettingsChoice {
    std::wstring path;
    bool portableRequested = false;
    bool portableActive = false;
    std::vector<StartMessage> messages;  // in the order in which they are to be shown
};

// The decision itself. A file named on the command line is taken only when the file beside the program
// passes the write test, and is not tested itself: whoever may write there is trusted to know the path.
SettingsChoice DecideSettingsPath(const SettingsFacts& facts, const SettingsProbe& probe);

// Whether the program's own file name asks for portable use: "_p" anywhere but at its beginning.
bool AsksForPortableUse(std::wstring_view modulePath);

// Decides by the running program and startOptions.iniPathOverride, which it makes a full path, shows what
// is to be shown and sets settingsPath and the two flags below. Returns 1.
int ChooseSettingsPath();

// The program's file name asks for portable use; portable use also passed its write test.
extern bool portableRequested;
extern bool portableActive;

// Shows "Write Error" with the path and opens the page about write errors, the first time in a run; after
// that it does nothing.
void ReportWriteError(const std::wstring& path);

extern bool writeErrorShown;

// Address of the page about write errors. The languages are not loaded yet when it is needed at start, so
// it stands in for the site addresses they would give.
std::wstring WriteErrorPage(bool germanUser);

// How a page is opened: in the default browser. Tests put something quieter here.
extern void (*openWebPage)(const std::wstring& address);

// Makes that file the settings file, writes a time stamp, less `secondsBack`, as "TestIni" to section
// "Program" and reads it back. A file that another program keeps locked is tried for 2 s and passes then.
bool WriteTest(const std::wstring& path, int secondsBack);

}  // namespace verbatix
