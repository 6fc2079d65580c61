#include "hotkeys/press_log.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iterator>

#include "base/handle.h"

namespace verbatix {

namespace {

struct PressLog {
    std::array<LoggedPress, kLoggedPresses> presses;
    PressNumber begun = 0;  // the next one's number
    PressNumber current = kNoPress;
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

PressNumber BeginPress(unsigned modifier, unsigned key, HWND foreground, PressWay way) {
    LoggedPress press;
    GetLocalTime(&press.at);
    press.modifier = modifier;
    press.key = key;
    press.way = way;
    NoteProgram(press, foreground);
    log.presses[log.begun % kLoggedPresses] = press;
    return log.begun++;
}

void ContinuePress(PressNumber number) {
    log.current = number;
}

PressNumber CurrentPressNumber() {
    return log.current;
}

LoggedPress& PressOf(PressNumber number) {
    static LoggedPress nobodySees;
    const bool isKept = number < log.begun && log.begun - number <= kLoggedPresses;
    return isKept ? log.presses[number % kLoggedPresses] : nobodySees;
}

LoggedPress& CurrentPress() {
    return PressOf(log.current);
}

void EndPress(PressNumber number, PressEnd end) {
    LoggedPress& press = PressOf(number);
    if (press.end == PressEnd::kNotYet || press.end == PressEnd::kDone) press.end = end;
}

void EndPress(PressEnd end) {
    EndPress(log.current, end);
}

std::vector<LoggedPress> LoggedPresses() {
    std::vector<LoggedPress> presses;
    const std::size_t count = std::min(log.begun, kLoggedPresses);
    for (std::size_t i = log.begun - count; i < log.begun; ++i)
        presses.push_back(log.presses[i % kLoggedPresses]);
    return presses;
}

}  // namespace verbatix
