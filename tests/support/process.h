// Starting other programs for a test, and never leaving one behind.
#pragma once

#include <optional>
#include <string>

#include "base/handle.h"
#include "support/wait.h"

namespace verbatix::test {

// Text of a window or control of any process, asked for with WM_GETTEXT.
inline std::wstring WindowText(HWND window) {
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

// A started program; ended by force when the object goes and it still runs.
class Process {
  public:
    // Starts `commandLine`, whose first word is the program (quoted where it holds blanks). False in a
    // boolean test when it could not be started.
    explicit Process(std::wstring commandLine, const std::wstring& workingFolder = {}) {
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
    ~Process() {
        if (!process_ || WaitForSingleObject(process_.Get(), 0) != WAIT_TIMEOUT) return;
        TerminateProcess(process_.Get(), 99);
        WaitForSingleObject(process_.Get(), 5000);
    }
    Process(Process&&) = default;
    Process& operator=(Process&&) = delete;

    explicit operator bool() const { return static_cast<bool>(process_); }
    DWORD Id() const { return id_; }
    HANDLE Handle() const { return process_.Get(); }

    // The exit code, or nothing when the program still runs after that time. Messages are dispatched.
    std::optional<DWORD> WaitForExit(DWORD milliseconds = 10000) const {
        const bool ended =
            WaitFor([&] { return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0; }, milliseconds);
        DWORD code = 0;
        if (!ended || !GetExitCodeProcess(process_.Get(), &code)) return std::nullopt;
        return code;
    }

    // The top-level window of that class in this process, shown or not; null when none comes up in time.
    HWND WaitForWindow(const wchar_t* className, DWORD milliseconds = 10000) const {
        return Find({id_, className, nullptr, false, nullptr}, milliseconds);
    }

    // The same by class and visible state; `title` null for any.
    HWND WaitForVisibleWindow(const wchar_t* className, const wchar_t* title = nullptr,
                              DWORD milliseconds = 10000) const {
        return Find({id_, className, title, true, nullptr}, milliseconds);
    }

    // Waits until the process has emptied its input queue once.
    void WaitForIdle() const { WaitForInputIdle(process_.Get(), 10000); }

  private:
    struct Search {
        DWORD processId;
        const wchar_t* className;
        const wchar_t* title;
        bool visibleOnly;
        HWND found;
    };

    static BOOL CALLBACK Match(HWND window, LPARAM parameter) {
        Search& search = *reinterpret_cast<Search*>(parameter);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        wchar_t className[256] = {};
        GetClassNameW(window, className, 256);
        if (owner != search.processId || std::wstring_view(className) != search.className ||
            (search.visibleOnly && !IsWindowVisible(window)) ||
            (search.title && WindowText(window) != search.title)) {
            return TRUE;
        }
        search.found = window;
        return FALSE;
    }

    static HWND Find(Search search, DWORD milliseconds) {
        WaitFor(
            [&] {
                EnumWindows(Match, reinterpret_cast<LPARAM>(&search));
                return search.found != nullptr;
            },
            milliseconds);
        return search.found;
    }

    UniqueKernelObject process_;
    DWORD id_ = 0;
};

}  // namespace verbatix::test
