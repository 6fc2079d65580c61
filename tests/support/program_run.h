// The whole program on the desktop: a copy of Verbatix.exe in a folder of its own, with a settings file
// that the test wrote, and somebody else's window to paste into.
#pragma once

#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "support/folder.h"
#include "support/process.h"

namespace verbatix::test {

// The exit code of a second copy, which leaves the place to the first one.
inline constexpr DWORD kSecondCopyExitCode = 45054;

// A list entry as it stands in a settings file.
struct StoredLine {
    std::wstring hotkey;  // stored form: L"Ctrl-Alt+W"
    std::wstring text;    // line breaks as backslash-n
    std::wstring label = {};
};

// A settings file with that list and the given further lines of section "Program".
std::wstring SettingsText(const std::vector<StoredLine>& lines, std::wstring_view programLines = {});

// One run of the program. It is ended by force when the object goes.
class ProgramRun {
  public:
    // Copies the program into a new folder under that name. Nothing is started yet.
    explicit ProgramRun(std::wstring_view programName = L"Verbatix.exe");

    // The settings file that Start() names on the command line.
    std::wstring SettingsFile() const { return folder_.File(L"list.ini"); }
    const Folder& Place() const { return folder_; }

    // Writes the settings file as UTF-16 with mark.
    bool WriteSettings(std::wstring_view text) const;

    // Starts with "-ini:" and the settings file, and further arguments. True when the hook is in: the main
    // dialog exists and has set its watch.
    bool Start(std::wstring_view arguments = {});
    // Starts with exactly these arguments and waits for nothing.
    void StartPlain(std::wstring_view arguments);
    // Ends the program by its exit command and waits for the end; the exit code, or -1 when it hangs.
    int Exit();

    HWND Frame() const;
    HWND MainDialog() const;
    // What the program itself says of its last presses: for the message of a test that has failed, because
    // it opens a window.
    std::string Diagnostics() const;
    // Whether the program gets through with all that was posted to it, also where an execution is under
    // way. Says nothing of keys that are still on their way from the keyboard.
    bool IsThrough() const;
    // As the program does it, so that the task bar takes it for the program's word. NIM_MODIFY, which
    // changes nothing, asks whether the icon is there: one that is not cannot be changed.
    bool ChangeTrayIcon(DWORD message) const;
    const Process& Program() const { return *process_; }

  private:
    Folder folder_;
    std::wstring programName_;
    std::unique_ptr<Process> process_;
};

// Somebody else's window with an edit control, in front and with the keyboard.
class Target {
  public:
    explicit Target(std::wstring_view title = L"Target");
    HWND Window() const { return window_; }
    HWND Edit() const { return edit_; }
    // Height on the screen, within the window, at which a click of any button does nothing.
    int QuietHeight() const;
    std::wstring Text() const { return WindowText(edit_); }
    // Replaces the text, unselected, caret at the end.
    void SetText(std::wstring_view text) const;
    // Makes the window the foreground window again. False when that does not happen.
    bool Activate() const;

  private:
    Process process_;
    HWND window_ = nullptr;
    HWND edit_ = nullptr;
};

}  // namespace verbatix::test
