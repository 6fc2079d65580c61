// The command line: how it is cut into arguments, and what the arguments ask for. Nothing here fails; what
// is not understood is passed over.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace verbatix {

constexpr int kMaxArguments = 256;

// One argument "name" or "name<separator>value". `value` is null when the argument had no separator.
struct Argument {
    const wchar_t* name;
    const wchar_t* value;
};

// Names and values point into `workingCopy`; the list can be moved but not copied.
struct ArgumentList {
    ArgumentList() = default;
    ArgumentList(ArgumentList&&) = default;
    ArgumentList& operator=(ArgumentList&&) = default;

    int count = 0;
    Argument arguments[kMaxArguments] = {};
    std::vector<wchar_t> workingCopy;

    const Argument* begin() const { return arguments; }
    const Argument* end() const { return arguments + count; }
};

// Cuts a command line (without the program's name) at blanks outside of double quotes and fills `list`.
// Quotes are dropped wherever they stand. Tabs and line feeds in the result are blanks. What follows
// argument 256 is left out. Returns the number of arguments.
int SplitCommandLine(ArgumentList& list, std::wstring_view commandLine, wchar_t separator);

struct StartOptions {
    bool startInBackground = false;
    bool hideRequested = false;
    // No argument sets it, so the check for a running instance is always made; the restart argument of
    // older helpers, which clears it, stays accepted.
    bool skipInstanceCheck = false;
    bool updateService = false;
    std::wstring iniPathOverride;
};

// What the arguments, split at ":", ask for.
StartOptions ReadStartOptions(const ArgumentList& list);

// The arguments that give another start the same settings file and, where it was asked for, no icon.
// Whether the window is shown is not among them.
std::wstring RestartArguments(const StartOptions& options);

// The options of this run; filled once at start.
extern StartOptions startOptions;

}  // namespace verbatix
