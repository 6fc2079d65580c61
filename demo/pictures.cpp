// Brings up the windows of the documents' pictures one after another. For each it prints name and place on
// the screen, "window 40 40 900 600", and goes on when a line comes from whoever takes the picture.
// Arguments: Verbatix.exe, the settings file to use, "light" or "dark".
#include <windows.h>

#include <cstdio>
#include <string>

#include "base/text.h"
#include "ids.h"
#include "support/keys.h"
#include "support/process.h"
#include "support/wait.h"

using namespace verbatix;
using namespace verbatix::test;

namespace {

constexpr wchar_t kThemeKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";

RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

RECT Around(const RECT& one, const RECT& other) {
    RECT both = {};
    UnionRect(&both, &one, &other);
    return both;
}

void Shoot(const char* name, const RECT& place) {
    constexpr DWORD kUntilDrawn = 400;
    Linger(kUntilDrawn);
    std::printf("%s %ld %ld %ld %ld\n", name, place.left, place.top, place.right - place.left,
                place.bottom - place.top);
    std::fflush(stdout);
    for (int letter = 0; letter != '\n' && letter != EOF;) letter = std::getchar();
}

// The visible dialog with that control in it; null when none comes up.
HWND DialogWith(int control) {
    HWND found = nullptr;
    WaitFor([&] {
        found = FindTopWindow(
            L"#32770", [=](HWND window) { return IsWindowVisible(window) && GetDlgItem(window, control); });
        return found != nullptr;
    });
    return found;
}

void ShootDialog(const char* name, int control, int button) {
    const HWND dialog = DialogWith(control);
    if (!dialog) return;
    Shoot(name, PlaceOf(dialog));
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(button), 0);
    WaitFor([&] { return !IsWindowVisible(dialog); });
}

void Command(HWND dialog, int command) {
    constexpr LPARAM kFromMenuBar = 0xAFFE0000;
    PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(command), kFromMenuBar);
}

HWND OpenMenu() {
    HWND menu = nullptr;
    WaitFor([&] {
        menu = FindTopWindow(L"#32768", [](HWND window) { return IsWindowVisible(window) != FALSE; });
        return menu != nullptr;
    });
    return menu;
}

void ShootMainWindow(HWND dialog) {
    const RECT place = PlaceOf(dialog);
    Shoot("window", place);
    Command(dialog, CMD_SHOW_TREE);
    Shoot("tree", PlaceOf(dialog));
    Command(dialog, CMD_SHOW_TREE);
    // With no room below it and to the right, the list stands in the window.
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    SetWindowPos(dialog, nullptr, work.right - (place.right - place.left),
                 work.bottom - (place.bottom - place.top), 0, 0, SWP_NOSIZE);
    PostMessageW(GetDlgItem(dialog, IDC_INSERT), BM_CLICK, 0, 0);
    if (const HWND codes = DialogWith(IDC_CODE_SEARCH)) {
        Shoot("codes", Around(PlaceOf(dialog), PlaceOf(codes)));
        PostMessageW(codes, WM_COMMAND, IDCANCEL, 0);
    }
    Command(dialog, CMD_ABOUT);
    ShootDialog("about", IDC_ABOUT_FILE, IDOK);
    SetForegroundWindow(dialog);
    SetCursorPos(PlaceOf(dialog).left + 100, PlaceOf(dialog).top + 200);
    PostMessageW(dialog, WM_COMMAND, CMD_GROUP_MENU, 0);
    if (OpenMenu()) {
        // From the end: show groups, a line, a new group.
        for (const BYTE key : {BYTE{VK_UP}, BYTE{VK_UP}, BYTE{VK_RETURN}}) PlayStroke({}, key);
        ShootDialog("group", IDC_GROUP_NAME, IDCANCEL);
    }
}

void ShootQuestion(HWND dialog) {
    const std::wstring tooLong(4000, L'x');
    SendDlgItemMessageW(dialog, IDC_TEXT, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(tooLong.c_str()));
    Command(dialog, CMD_NEW_ENTRY);
    ShootDialog("question", IDC_CUT_OFF, IDC_DISCARD);
}

// Where a user works: the paste menu and what an entry asks for.
void ShootPasting() {
    const Process notepad(L"notepad.exe");
    const HWND window = notepad.WaitForVisibleWindow(L"Notepad");
    MoveWindow(window, 60, 60, 640, 360, TRUE);
    SetForegroundWindow(window);
    SettlesInFront(window);
    const HWND edit = FindWindowExW(window, nullptr, L"Edit", nullptr);
    SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"Dear Ms Miller,\r\n\r\n"));
    SendMessageW(edit, EM_SETSEL, 99, 99);
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'L');
    if (const HWND menu = OpenMenu()) {
        Shoot("menu", Around(PlaceOf(window), PlaceOf(menu)));
        PlayStroke({}, VK_ESCAPE);
        WaitFor([&] { return !IsWindowVisible(menu); });
    }
    SettlesInFront(window);
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'C');
    ShootDialog("calendar", IDC_CALENDAR, IDCANCEL);
    SettlesInFront(window);
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'T');
    ShootDialog("time", IDC_HOURS, IDCANCEL);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 4) return 2;
    const DWORD light = std::wstring(arguments[3]) != L"dark";
    RegSetKeyValueW(HKEY_CURRENT_USER, kThemeKey, L"AppsUseLightTheme", REG_DWORD, &light, sizeof light);
    const Process program(L"\"" + std::wstring(arguments[1]) + L"\" \"-ini:" + arguments[2] + L"\"");
    const HWND dialog = DialogWith(IDC_LIST);
    if (dialog) {
        ShootMainWindow(dialog);
        ShootPasting();
        ShootQuestion(dialog);
        Command(dialog, CMD_EXIT);
        program.WaitForExit();
    }
    RegDeleteKeyValueW(HKEY_CURRENT_USER, kThemeKey, L"AppsUseLightTheme");
    return dialog ? 0 : 1;
}
