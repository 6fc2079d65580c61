#include "paste/launcher.h"

#include <windows.h>

#include <shellapi.h>

#include <optional>

#include "base/com_apartment.h"
#include "base/handle.h"
#include "base/text.h"
#include "paste/command_prefixes.h"
#include "paste/expansion.h"
#include "paste/placeholders.h"

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

static DWORD WINAPI ExecuteInApartment(void* info) noexcept {
    const ComApartment apartment;
    return ShellExecuteExW(static_cast<SHELLEXECUTEINFOW*>(info)) ? 1 : 0;
}

// Most launches come from inside the keyboard hook, and there the system refuses this thread every call to
// another process by COM, which is how the shell starts many programs and pages. So a thread of its own
// makes the call. It is waited for, so that launches keep their order; the messages that it may send to
// this thread's windows on the way are served meanwhile.
static bool Execute(SHELLEXECUTEINFOW& info) {
    const UniqueKernelObject thread(CreateThread(nullptr, 0, ExecuteInApartment, &info, 0, nullptr));
    if (!thread) return false;
    const HANDLE handle = thread.Get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    DWORD started = 0;
    return GetExitCodeThread(handle, &started) && started != 0;
}

bool ShellLaunch(const LaunchPlan& launch, const wchar_t* verb) {
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    // Launches are not reported: neither a missing program nor a refused elevation opens a box.
    info.fMask = SEE_MASK_DOENVSUBST | SEE_MASK_FLAG_NO_UI;
    info.lpVerb = verb;
    info.lpFile = launch.file.c_str();
    info.lpParameters = launch.parameters.empty() ? nullptr : launch.parameters.c_str();
    info.lpDirectory = launch.folder.c_str();
    info.nShow = SW_SHOWNORMAL;
    return Execute(info);
}

bool OpenWithShell(const std::wstring& file, const std::wstring& parameters) {
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = SEE_MASK_FLAG_NO_UI;
    info.lpVerb = L"open";
    info.lpFile = file.c_str();
    info.lpParameters = parameters.c_str();
    info.nShow = SW_SHOW;
    return Execute(info);
}

bool LaunchCommandLine(bool elevate, const std::wstring& line) {
    std::wstring command = line;
    ReplaceRunTokens(command, CapturedText);
    command = TrimBlanks(command);
    if (command.empty()) return false;
    const bool withRights = elevate || (GetAsyncKeyState(VK_CONTROL) & 0x8000) != 0;
    return ShellLaunch(PlanLaunch(command, Exists), withRights ? L"runas" : nullptr);
}

}  // namespace verbatix
