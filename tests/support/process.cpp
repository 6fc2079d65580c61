#include "support/process.h"

#include "support/wait.h"

namespace verbatix::test {

Process::Process(std::wstring commandLine, const std::wstring& workingFolder) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        workingFolder.empty() ? nullptr : workingFolder.c_str(), &startup, &started)) {
        return;
    }
    CloseHandle(started.hThread);
    process_.Reset(started.hProcess);
    id_ = started.dwProcessId;
}

Process::~Process() {
    if (!process_) return;
    if (WaitForSingleObject(process_.Get(), 0) == WAIT_TIMEOUT) {
        TerminateProcess(process_.Get(), 99);
        WaitForSingleObject(process_.Get(), 5000);
    }
}

std::optional<DWORD> Process::WaitForExit(DWORD milliseconds) const {
    const bool ended =
        WaitFor([&] { return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0; }, milliseconds);
    DWORD code = 0;
    if (!ended || !GetExitCodeProcess(process_.Get(), &code)) return std::nullopt;
    return code;
}

namespace {

struct WindowSearch {
    DWORD processId;
    const wchar_t* className;
    const wchar_t* title;
    bool visibleOnly;
    HWND found;
};

BOOL CALLBACK MatchWindow(HWND window, LPARAM parameter) {
    WindowSearch& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    wchar_t className[256] = {};
    GetClassNameW(window, className, 256);
    if (owner != search.processId || std::wstring_view(className) != search.className) return TRUE;
    if (search.visibleOnly && !IsWindowVisible(window)) return TRUE;
    if (search.title && WindowText(window) != search.title) return TRUE;
    search.found = window;
    return FALSE;
}

HWND Find(WindowSearch search, DWORD milliseconds) {
    WaitFor(
        [&] {
            EnumWindows(MatchWindow, reinterpret_cast<LPARAM>(&search));
            return search.found != nullptr;
        },
        milliseconds);
    return search.found;
}

}  // namespace

HWND Process::WaitForWindow(const wchar_t* className, DWORD milliseconds) const {
    return Find({id_, className, nullptr, false, nullptr}, milliseconds);
}

HWND Process::WaitForVisibleWindow(const wchar_t* className, const wchar_t* title,
                                   DWORD milliseconds) const {
    return Find({id_, className, title, true, nullptr}, milliseconds);
}

std::wstring WindowText(HWND window) {
    DWORD_PTR length = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, 2000, &length)) return {};
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    if (!SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                             SMTO_ABORTIFHUNG, 2000, &copied)) {
        return {};
    }
    text.resize(copied);
    return text;
}

}  // namespace verbatix::test
