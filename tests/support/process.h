// Starting other programs for a test, and never leaving one behind.
#pragma once

#include <optional>
#include <string>

#include "base/handle.h"

namespace verbatix::test {

// A started program; ended by force when the object goes and it still runs.
class Process {
  public:
    // Starts `commandLine`, whose first word is the program (quoted where it holds blanks). False in a
    // boolean test when it could not be started.
    explicit Process(std::wstring commandLine, const std::wstring& workingFolder = {});
    ~Process();
    Process(Process&&) = default;
    Process& operator=(Process&&) = delete;

    explicit operator bool() const { return static_cast<bool>(process_); }
    DWORD Id() const { return id_; }
    HANDLE Handle() const { return process_.Get(); }

    // The exit code, or nothing when the program still runs after that time. Messages are dispatched.
    std::optional<DWORD> WaitForExit(DWORD milliseconds = 10000) const;

    // The top-level window of that class in this process, shown or not; null when none comes up in time.
    HWND WaitForWindow(const wchar_t* className, DWORD milliseconds = 10000) const;

    // The same by class and visible state; `title` null for any.
    HWND WaitForVisibleWindow(const wchar_t* className, const wchar_t* title = nullptr,
                              DWORD milliseconds = 10000) const;

    // Waits until the process has emptied its input queue once.
    void WaitForIdle() const { WaitForInputIdle(process_.Get(), 10000); }

  private:
    UniqueKernelObject process_;
    DWORD id_ = 0;
};

// Text of a window or control of any process, asked for with WM_GETTEXT.
std::wstring WindowText(HWND window);

}  // namespace verbatix::test
