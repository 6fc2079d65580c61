// Shows the main job for real: starts Verbatix with a new settings file, opens Notepad, presses one of the
// first-run hotkeys the way a keyboard would, and waits until the stored text stands in Notepad. Both
// programs stay open, to be looked at. Arguments: Verbatix.exe, the settings file to use.
//
// Exit code 0 only when Notepad holds exactly the stored text.
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string>

#include "base/text.h"

using namespace verbatix;

namespace {

constexpr DWORD kPatienceMilliseconds = 20000;

template <typename Fact>
bool WaitFor(Fact fact) {
    for (const ULONGLONG end = GetTickCount64() + kPatienceMilliseconds; GetTickCount64() < end;
         Sleep(20)) {
        if (fact()) return true;
    }
    return false;
}

bool Start(std::wstring commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &started)) {
        return false;
    }
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return true;
}

void Say(const std::wstring& line) {
    std::fputs((ToBytes(line, CP_UTF8) + "\n").c_str(), stdout);
    std::fflush(stdout);
}

int Fail(const wchar_t* what) {
    Say(std::wstring(L"FAILED: ") + what);
    return 1;
}

std::wstring TextOf(HWND window) {
    std::wstring text(8192, L'\0');
    text.resize(static_cast<std::size_t>(
        SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
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

void PressCtrlAlt(wchar_t letter) {
    const BYTE keys[] = {VK_LCONTROL, VK_LMENU, static_cast<BYTE>(letter)};
    for (const BYTE key : keys) keybd_event(key, static_cast<BYTE>(MapVirtualKeyW(key, 0)), 0, 0);
    for (const BYTE key : {keys[2], keys[1], keys[0]}) {
        keybd_event(key, static_cast<BYTE>(MapVirtualKeyW(key, 0)), KEYEVENTF_KEYUP, 0);
    }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3) return Fail(L"usage: demo Verbatix.exe settings.ini");
    const std::wstring settingsFile = arguments[2];
    if (!Start(L"\"" + std::wstring(arguments[1]) + L"\" -ini:\"" + settingsFile + L"\"")) {
        return Fail(L"Verbatix does not start");
    }
    wchar_t letter = 0;
    std::wstring expected;
    const auto mainDialogIsUp = [] { return IsWindowVisible(FindWindowW(L"#32770", L"Verbatix")); };
    if (!WaitFor(mainDialogIsUp)) return Fail(L"the window of Verbatix does not come up");
    if (!FindDemoEntry(settingsFile.c_str(), letter, expected)) return Fail(L"no first-run list");

    if (!Start(L"notepad.exe")) return Fail(L"Notepad does not start");
    HWND notepad = nullptr;
    HWND edit = nullptr;
    const auto notepadIsInFront = [&] {
        notepad = FindWindowW(L"Notepad", nullptr);
        edit = FindWindowExW(notepad, nullptr, L"Edit", nullptr);
        return edit && GetForegroundWindow() == notepad;
    };
    if (!WaitFor(notepadIsInFront)) return Fail(L"Notepad does not come to the front");
    MoveWindow(notepad, 560, 420, 640, 400, TRUE);

    Say(std::wstring(L"Pressing Ctrl+Alt+") + letter + L" in Notepad.");
    PressCtrlAlt(letter);
    WaitFor([&] { return TextOf(edit) == expected; });
    const std::wstring found = TextOf(edit);
    Say(L"Notepad now holds: " + found);
    return found == expected ? 0 : Fail((L"expected: " + expected).c_str());
}
