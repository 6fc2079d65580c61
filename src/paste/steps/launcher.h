// Starting programs, documents, folders and shell locations. Each function returns when the shell has done
// its part, or is still at it after 10 s, which counts as failed; until then messages sent to this thread
// are served. Failures are not reported to the user.
#pragma once

#include <string>
#include <string_view>

namespace verbatix {

// How a command line is handed to the shell.
struct LaunchPlan {
    std::wstring file;
    std::wstring parameters;
    std::wstring folder;  // working folder
    bool operator==(const LaunchPlan&) const = default;
};

// Decides what to start. `exists` tells whether a text names an existing file or folder. A line that as a
// whole is such a path, environment references expanded or not, is one file, blanks and all; "shell:"
// starts a shell location; everything else is a program with parameters.
LaunchPlan PlanLaunch(std::wstring_view line, bool (*exists)(const std::wstring& path));

// Replaces each %NAME% whose variable exists by its value; values beyond 520 characters are left out.
std::wstring ExpandEnvironment(std::wstring_view text);

// The command line as it is started: the selection put in, blanks at its ends gone. Empty when there is
// nothing to start, or more than Windows passes to a program.
std::wstring LaunchedLine(std::wstring line, const std::wstring& selection);

// Starts the command line, with elevated rights when asked to or while Ctrl is held on purpose. An empty
// line does nothing. The result is the shell's, for those who want it.
bool LaunchCommandLine(bool elevate, const std::wstring& line);

// Opens a file with the shell as LaunchCommandLine does, with that verb (null for the default).
bool ShellLaunch(const LaunchPlan& launch, const wchar_t* verb);

// Opens a program, document or page with the verb "open" and those parameters, its window shown.
bool OpenWithShell(const std::wstring& file, const std::wstring& parameters = {});

}  // namespace verbatix
