#include "paste/steps/launcher.h"

#include <windows.h>

#include <shellapi.h>

#include <atomic>
#include <memory>
#include <optional>
#include <utility>

#include "base/aside.h"
#include "base/com_apartment.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/press_log.h"
#include "paste/steps/expansion.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/placeholders.h"

namespace verbatix {

// The value of the environment variable, which may be empty; none when there is no such variable or it is
// too long.
static std::optional<std::wstring> ValueOf(const std::wstring& name) {
    constexpr DWORD kLongestValue = 520;
    wchar_t value[kLongestValue + 1] = L"";
    if (name.empty()) return std::nullopt;
    SetLastError(ERROR_SUCCESS);  // an empty value leaves it as it is
    const DWORD length = GetEnvironmentVariableW(name.c_str(), value, kLongestValue + 1);
    if (length > kLongestValue || (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND)) {
        return std::nullopt;
    }
    return std::wstring(value, length);
}

std::wstring ExpandEnvironment(std::wstring_view text) {
    std::wstring result;
    for (;;) {
        const std::size_t start = text.find(L'%');
        const std::size_t end = start == std::wstring_view::npos ? start : text.find(L'%', start + 1);
        if (end == std::wstring_view::npos) return result.append(text);
        const auto value = ValueOf(std::wstring(text.substr(start + 1, end - start - 1)));
        if (!value) {
            // The second percent sign may begin the next reference.
            result.append(text.substr(0, end));
            text.remove_prefix(end);
            continue;
        }
        result.append(text.substr(0, start)).append(*value);
        text.remove_prefix(end + 1);
    }
}

// The working folder is the file's own path where that holds a dot. No folder has that name, and the shell
// then starts the program in its own folder; this is what programs started so far rely on.
static std::wstring WorkingFolder(const std::wstring& file) {
    return file.find(L'.') == std::wstring::npos ? L"%UserProfile%" : file;
}

static bool IsShellLocation(std::wstring_view line) {
    constexpr std::wstring_view kShell = L"shell:";
    return EqualsIgnoreCase(line.substr(0, kShell.size()), kShell);
}

LaunchPlan PlanLaunch(std::wstring_view line, bool (*exists)(const std::wstring& path)) {
    const std::wstring whole(line);
    const std::wstring expanded = ExpandEnvironment(line);
    if (exists(expanded)) return {expanded, {}, WorkingFolder(expanded)};
    if (exists(whole) || IsShellLocation(line)) return {whole, {}, WorkingFolder(whole)};
    const ProgramAndParameters parts = SplitProgram(line);
    return {parts.program, ExpandEnvironment(parts.parameters), WorkingFolder(parts.program)};
}

static bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

static const wchar_t* NullIfEmpty(const std::wstring& text) {
    return text.empty() ? nullptr : text.c_str();
}

namespace {

struct ShellCall {
    LaunchPlan launch;
    std::wstring verb;  // empty for the default
    ULONG mask;
    int show;
};

}  // namespace

static bool ExecuteInApartment(const ShellCall& call) {
    // The shell would open some folder for it.
    if (call.launch.file.empty()) return false;
    const ComApartment apartment;
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    // Launches are not reported: neither a missing program nor a refused elevation opens a box. And nothing
    // may be left to do when the shell returns: this thread ends then.
    info.fMask = call.mask | SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    info.lpVerb = NullIfEmpty(call.verb);
    info.lpFile = call.launch.file.c_str();
    info.lpParameters = NullIfEmpty(call.launch.parameters);
    info.lpDirectory = NullIfEmpty(call.launch.folder);
    info.nShow = call.show;
    return ShellExecuteExW(&info) != FALSE;
}

// Most launches come from inside the keyboard hook, and there the system refuses this thread every call to
// another process by COM, which is how the shell starts many programs and pages. So a thread of its own
// makes the call, and looks for the file before. It is waited for, so that launches keep their order; but a
// shell that asks for rights, or a file on a computer that does not answer, takes minutes, and so long no
// hotkey would do anything.
static bool Execute(std::function<ShellCall()> plan) {
    constexpr DWORD kLongestWait = 10000;
    const auto started = std::make_shared<std::atomic<bool>>(false);
    const bool done = DoAside([plan = std::move(plan), started] { *started = ExecuteInApartment(plan()); },
                              kLongestWait) &&
                      *started;
    if (!done) EndPress(PressEnd::kStartFailed);
    return done;
}

static ShellCall LaunchCall(const LaunchPlan& launch, const std::wstring& verb) {
    return {launch, verb, SEE_MASK_DOENVSUBST, SW_SHOWNORMAL};
}

bool ShellLaunch(const LaunchPlan& launch, const wchar_t* verb) {
    return Execute([call = LaunchCall(launch, verb ? verb : L"")] { return call; });
}

bool OpenWithShell(const std::wstring& file, const std::wstring& parameters) {
    return Execute([=] { return ShellCall{{file, parameters, {}}, L"open", 0, SW_SHOW}; });
}

std::wstring LaunchedLine(std::wstring line, const std::wstring& selection) {
    ReplaceRunTokens(line, selection);
    line = TrimBlanks(line);
    // What Windows passes to no program need not be looked into: a selection of megabytes, each "%PATH%" in
    // it made a hundred times longer, would fill the memory.
    constexpr std::size_t kLongestCommandLine = 32767;
    return line.size() > kLongestCommandLine ? std::wstring() : line;
}

bool LaunchCommandLine(bool elevate, const std::wstring& line) {
    const std::wstring command = LaunchedLine(line, CapturedText);
    if (command.empty()) return false;
    const std::wstring verb = elevate || IsControlHeldOnPurpose() ? L"runas" : L"";
    return Execute([=] { return LaunchCall(PlanLaunch(command, Exists), verb); });
}

}  // namespace verbatix
