#include "hotkeys/program_of_window.h"

#include <algorithm>
#include <iterator>

#include "base/handle.h"
#include "base/text.h"

namespace verbatix {

static std::wstring FileNameOf(DWORD processId) {
    constexpr DWORD kLongestPath = 0x400;
    wchar_t path[kLongestPath] = {};
    DWORD length = kLongestPath;
    const UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (!process || !QueryFullProcessImageNameW(process.Get(), 0, path, &length)) return {};
    const std::wstring_view whole(path, length);
    return std::wstring(whole.substr(whole.rfind(L'\\') + 1));
}

static DWORD ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

// The first window inside of another process than its frame's.
static BOOL CALLBACK TakeInnerProcess(HWND window, LPARAM process) noexcept {
    DWORD& found = *reinterpret_cast<DWORD*>(process);
    const DWORD own = ProcessOf(window);
    if (own == found || own == 0) return TRUE;
    found = own;
    return FALSE;
}

std::wstring ProgramOfWindow(HWND window) {
    DWORD process = ProcessOf(window);
    if (process == 0) return {};
    const std::wstring name = FileNameOf(process);
    if (!EqualsIgnoreCase(name, L"ApplicationFrameHost.exe")) return name;
    EnumChildWindows(window, TakeInnerProcess, reinterpret_cast<LPARAM>(&process));
    return FileNameOf(process);
}

static auto Find(const ProgramNames& programs, std::wstring_view name) {
    return std::find_if(programs.begin(), programs.end(),
                        [=](const std::wstring& program) { return EqualsIgnoreCase(program, name); });
}

bool HasProgram(const ProgramNames& programs, std::wstring_view name) {
    return Find(programs, name) != programs.end();
}

void ToggleProgram(ProgramNames& programs, std::wstring_view name) {
    if (const auto found = Find(programs, name); found != programs.end()) {
        programs.erase(found);
        return;
    }
    const bool isName = !name.empty() && name.size() < MAX_PATH &&
                        name.find_first_of(L"\\/:*?\"<>|\r\n") == std::wstring_view::npos;
    if (isName && programs.size() < kMostProgramNames) programs.emplace_back(name);
}

}  // namespace verbatix
