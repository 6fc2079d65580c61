// Shows the main job for real: starts Verbatix with a new settings file, opens Notepad, presses one of the
// first-run hotkeys the way a keyboard would, and waits until the stored text stands in Notepad. Both
// programs stay open, to be looked at. Arguments: Verbatix.exe, the settings file to use; a third one, any,
// says that the program finds that file by itself.
//
// Exit code 0 only when Notepad is in front and holds exactly the stored text.
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/text.h"
#include "support/keys.h"
#include "support/process.h"
#include "support/wait.h"

using namespace verbatix;
using namespace verbatix::test;

namespace {

constexpr DWORD kPatienceMilliseconds = 30000;

// Starts a program that outlives this one; its process id, or 0.
DWORD Start(std::wstring commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started)) {
        return 0;
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return started.dwProcessId;
}

void Say(const std::wstring& line) {
    std::fputs((ToBytes(line, CP_UTF8) + "\n").c_str(), stdout);
    std::fflush(stdout);
}

int Fail(const wchar_t* what) {
    Say(std::wstring(L"FAILED: ") + what);
    return 1;
}

// The stored text of the first entry on Ctrl-Alt and a letter, with the letter; false when there is none.
bool FindDemoEntry(const wchar_t* settingsFile, wchar_t& letter, std::wstring& text) {
    constexpr std::wstring_view kStart = L"Ctrl-Alt+";
    constexpr std::wstring_view kEnd = L"<E<N<D|";
    for (int number = 0; number < 20; ++number) {
        wchar_t value[4096] = {};
        GetPrivateProfileStringW(L"list_text", Format(L"text_%03d", number).c_str(), L"", value, 4096,
                                 settingsFile);
        const std::wstring_view stored = value;
        if (!stored.starts_with(kStart) || !stored.ends_with(kEnd)) continue;
        if (stored.size() < kStart.size() + 2 || stored[kStart.size() + 1] != L'=') continue;
        text = stored.substr(kStart.size() + 2, stored.size() - kStart.size() - 2 - kEnd.size());
        if (text.find(L'%') != std::wstring::npos) continue;
        ReplaceAll(text, L"\\n", L"\r\n");
        letter = stored[kStart.size()];
        return true;
    }
    return false;
}

// Notepad and its edit control, once both are there.
struct Notepad {
    HWND window = nullptr;
    HWND edit = nullptr;
};

bool FindNotepad(DWORD process, Notepad& notepad) {
    for (HWND window = nullptr;
         (window = FindWindowExW(nullptr, window, L"Notepad", nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner != process) continue;
        notepad = {window, FindWindowExW(window, nullptr, L"Edit", nullptr)};
        return notepad.edit && IsWindowVisible(notepad.window);
    }
    return false;
}

// In front, at its place, nothing over its text, with the keyboard, and its program answers: what a press
// needs to arrive.
bool IsReady(const Notepad& notepad, const RECT& place) {
    RECT now = {};
    GetWindowRect(notepad.window, &now);
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    POINT inText = {20, 20};
    ClientToScreen(notepad.edit, &inText);
    DWORD_PTR answer = 0;
    return EqualRect(&now, &place) && GetForegroundWindow() == notepad.window &&
           WindowFromPoint(inText) == notepad.edit &&
           GetGUIThreadInfo(GetWindowThreadProcessId(notepad.window, nullptr), &info) &&
           info.hwndFocus == notepad.edit &&
           SendMessageTimeoutW(notepad.edit, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 2000, &answer);
}

// Out of the way of every window: one that is moved under the mouse makes the system read the keyboard anew
// and let go what only a program holds down.
void ParkMouse() {
    RECT free = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &free, 0);
    SetCursorPos(free.right - 2, free.bottom - 2);
}

// Beside the program's window as far as the screen allows, so that the picture shows both.
RECT PlaceForNotepad() {
    RECT free = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &free, 0);
    return {free.right - 720, free.bottom - 300, free.right - 60, free.bottom - 30};
}

// A stroke as fast as a hand's. Only when both modifiers are still down the letter follows: alone it would
// be typed. False when it did not.
bool PressCtrlAlt(wchar_t letter) {
    constexpr DWORD kHeld = 70;
    constexpr BYTE modifiers[] = {VK_LCONTROL, VK_LMENU};
    for (const BYTE modifier : modifiers) HoldDown(modifier);
    Linger(kHeld);
    const bool bothDown = GetAsyncKeyState(VK_LCONTROL) < 0 && GetAsyncKeyState(VK_LMENU) < 0;
    if (bothDown) {
        PressKeyDown(static_cast<BYTE>(letter));
        Linger(kHeld);
        LetKeyUp(static_cast<BYTE>(letter));
    }
    for (const BYTE modifier : {modifiers[1], modifiers[0]}) LetKeyUp(modifier);
    return bothDown;
}

// Presses until the edit control is no longer empty, and tells of every time that took more than one press.
bool PressUntilSomethingComes(const Notepad& notepad, const RECT& place, wchar_t letter) {
    constexpr int kTimes = 5;
    constexpr DWORD kUntilPasted = 5000;
    for (int times = 0; times < kTimes; ++times) {
        if (!WaitFor([&] { return IsReady(notepad, place) && KeepsModifiers(); }, kPatienceMilliseconds)) {
            return false;
        }
        if (times > 0) Say(L"Nothing came; pressing again.");
        const bool pressed = PressCtrlAlt(letter);
        if (pressed && WaitFor([&] { return !WindowText(notepad.edit).empty(); }, kUntilPasted))
            return true;
    }
    return false;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3 && count != 4) return Fail(L"usage: demo Verbatix.exe settings.ini [own]");
    const std::wstring settingsFile = arguments[2];
    ParkMouse();
    const std::wstring option = count == 3 ? L" \"-ini:" + settingsFile + L"\"" : L"";
    if (!Start(L"\"" + std::wstring(arguments[1]) + L"\"" + option)) {
        return Fail(L"Verbatix does not start");
    }
    wchar_t letter = 0;
    std::wstring expected;
    const auto mainDialogIsUp = [] {
        const HWND dialog = FindWindowW(L"#32770", L"Verbatix");
        return IsWindowVisible(dialog) && GetForegroundWindow() == dialog;
    };
    if (!WaitFor(mainDialogIsUp, kPatienceMilliseconds)) {
        return Fail(L"the window of Verbatix does not come up");
    }
    if (!FindDemoEntry(settingsFile.c_str(), letter, expected)) return Fail(L"no first-run list");

    const DWORD process = Start(L"notepad.exe");
    if (!process) return Fail(L"Notepad does not start");
    Notepad notepad;
    if (!WaitFor([&] { return FindNotepad(process, notepad); }, kPatienceMilliseconds)) {
        return Fail(L"Notepad does not come up");
    }
    const RECT place = PlaceForNotepad();
    MoveWindow(notepad.window, place.left, place.top, place.right - place.left, place.bottom - place.top,
               TRUE);
    if (!WaitFor([&] { return IsReady(notepad, place); }, kPatienceMilliseconds)) {
        return Fail(L"Notepad does not come to the front");
    }
    Say(std::wstring(L"Pressing Ctrl+Alt+") + letter + L" in Notepad.");
    PressUntilSomethingComes(notepad, place, letter);
    WaitFor([&] { return WindowText(notepad.edit) == expected; });
    const std::wstring found = WindowText(notepad.edit);
    Say(L"Notepad now holds: " + found);
    if (found != expected) return Fail((L"expected: " + expected).c_str());
    return IsReady(notepad, place) ? 0 : Fail(L"Notepad is not in front");
}
