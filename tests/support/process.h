// Starting other programs for a test, and never leaving one behind.
#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "base/handle.h"
#include "base/text.h"
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

// The first top-level window of that class, shown or not, which `fits`; null when there is none.
template <typename Fits>
HWND FindTopWindow(std::wstring_view className, Fits fits) {
    struct Search {
        std::wstring_view className;
        Fits& fits;
        HWND found;
    } search = {className, fits, nullptr};
    const auto look = [](HWND window, LPARAM parameter) -> BOOL {
        Search& wanted = *reinterpret_cast<Search*>(parameter);
        wchar_t name[256] = {};
        GetClassNameW(window, name, 256);
        if (name == wanted.className && wanted.fits(window)) wanted.found = window;
        return wanted.found == nullptr;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The tooltip in sight of whatever program; null when there is none.
inline HWND ShownTooltip() {
    return FindTopWindow(L"tooltips_class32", [](HWND window) { return IsWindowVisible(window) != FALSE; });
}

// For the message of a test that has failed: handle, class, text.
inline std::wstring NameOf(HWND window) {
    wchar_t className[64] = {};
    GetClassNameW(window, className, 64);
    return Format(L"%p %ls \"%ls\"", static_cast<void*>(window), className, WindowText(window).c_str());
}

inline DWORD ProcessOf(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

// A started program; ended by force when the object goes and it still runs.
class Process {
  public:
    // Starts `commandLine`, whose first word is the program (quoted where it holds blanks). False in a
    // boolean test when it could not be started.
    explicit Process(std::wstring commandLine) {
        STARTUPINFOW startup = {};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION started = {};
        // On the bench a program may be gone before it has begun (scripts/on-desktop tells why); nothing of
        // it has run then.
        DWORD error = ERROR_INTERNAL_ERROR;
        for (int starts = 0; error == ERROR_INTERNAL_ERROR && starts < 3; ++starts) {
            const BOOL isStarted = CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0,
                                                  nullptr, nullptr, &startup, &started);
            error = isStarted ? ERROR_SUCCESS : GetLastError();
        }
        if (error != ERROR_SUCCESS) {
            std::printf("not started (%lu): %ls\n", error, commandLine.c_str());
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
            process_ &&
            WaitFor([&] { return WaitForSingleObject(process_.Get(), 0) == WAIT_OBJECT_0; }, milliseconds);
        DWORD code = 0;
        if (!ended || !GetExitCodeProcess(process_.Get(), &code)) return std::nullopt;
        return code;
    }

    // The top-level window of that class in this process, shown or not; null when none comes up in time.
    HWND WaitForWindow(const wchar_t* className, DWORD milliseconds = 10000) const {
        return Find(
            className, [](HWND) { return true; }, milliseconds);
    }

    // The same by class and visible state; `title` null for any.
    HWND WaitForVisibleWindow(const wchar_t* className, const wchar_t* title = nullptr,
                              DWORD milliseconds = 10000) const {
        const auto fits = [title](HWND window) {
            return IsWindowVisible(window) && (!title || WindowText(window) == title);
        };
        return Find(className, fits, milliseconds);
    }

    // Waits until the process has emptied its input queue once.
    void WaitForIdle() const { WaitForInputIdle(process_.Get(), 10000); }

  private:
    template <typename Fits>
    HWND Find(const wchar_t* className, Fits fits, DWORD milliseconds) const {
        HWND found = nullptr;
        const auto isOurs = [&](HWND window) { return ProcessOf(window) == id_ && fits(window); };
        if (process_)
            WaitFor([&] { return (found = FindTopWindow(className, isOurs)) != nullptr; }, milliseconds);
        return found;
    }

    UniqueKernelObject process_;
    DWORD id_ = 0;
};

}  // namespace verbatix::test
