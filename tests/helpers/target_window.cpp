// Somebody else's program: a window with one multi-line edit control that holds the keyboard. Tests read
// the control with WM_GETTEXT. Below it lies a strip where clicks do nothing. WM_APP keeps it busy
// until the event "VerbatixTestGoOn" is set, at most 20 s. Arguments: the window's title (optional).
#include <windows.h>

static HWND edit;

static void Hang() {
    const HANDLE goOn = OpenEventW(SYNCHRONIZE, FALSE, L"VerbatixTestGoOn");
    WaitForSingleObject(goOn, 20000);
    CloseHandle(goOn);
}

static LRESULT CALLBACK TargetProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETFOCUS: SetFocus(edit); return 0;
        case WM_SIZE: MoveWindow(edit, 0, 0, LOWORD(lParam), HIWORD(lParam) - 12, TRUE); return 0;
        case WM_APP: return Hang(), 0;
        case WM_DESTROY: PostQuitMessage(0); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int) {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = TargetProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"VerbatixTestTarget";
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    RegisterClassW(&windowClass);
    const HWND window =
        CreateWindowExW(0, windowClass.lpszClassName, *commandLine ? commandLine : L"Target",
                        WS_OVERLAPPEDWINDOW, 700, 60, 520, 400, nullptr, nullptr, instance, nullptr);
    edit =
        CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL,
                        0, 0, 10, 10, window, reinterpret_cast<HMENU>(1), instance, nullptr);
    SendMessageW(edit, EM_SETLIMITTEXT, 16 << 20, 0);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    SetFocus(edit);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
