#include "hotkeys/press_log.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>
#include <optional>

#include "base/handle.h"

namespace verbatix {

namespace {

struct PressLog {
    std::array<LoggedPress, kLoggedPresses> presses;
    std::size_t begun = 0;
    std::optional<std::size_t> current;  // counted as `begun`
};

PressLog log;

}  // namespace

static void NoteProgram(LoggedPress& press, HWND foreground) {
    DWORD id = 0;
    GetWindowThreadProcessId(foreground, &id);
    const UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    wchar_t path[MAX_PATH] = {};
    DWORD length = MAX_PATH;
    if (!process || !QueryFullProcessImageNameW(process.Get(), 0, path, &length)) return;
    const wchar_t* name = wcsrchr(path, L'\\');
    wcsncpy(press.program, name ? name + 1 : path, std::size(press.program) - 1);
}

void BeginPress(unsigned modifier, unsigned key, HWND foreground, PressWay way, PressEnd end) {
    LoggedPress press;
    GetLocalTime(&press.at);
    press.modifier = modifier;
    press.key = key;
    press.way = way;
    press.end = end;
    NoteProgram(press, foreground);
    if (end == PressEnd::kNotYet) log.current = log.begun;
    log.presses[log.begun++ % kLoggedPresses] = press;
}

void DetachPress() {
    log.current.reset();
}

LoggedPress& CurrentPress() {
    static LoggedPress nobodySees;
    const bool isKept = log.current && log.begun - *log.current <= kLoggedPresses;
    return isKept ? log.presses[*log.current % kLoggedPresses] : nobodySees;
}

void EndPress(PressEnd end) {
    LoggedPress& press = CurrentPress();
    if (press.end == PressEnd::kNotYet) press.end = end;
}

std::vector<LoggedPress> LoggedPresses() {
    std::vector<LoggedPress> presses;
    const std::size_t count = std::min(log.begun, kLoggedPresses);
    for (std::size_t i = log.begun - count; i < log.begun; ++i)
        presses.push_back(log.presses[i % kLoggedPresses]);
    return presses;
}

}  // namespace verbatix
