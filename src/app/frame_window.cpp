#include "app/frame_window.h"

#include "app/command_line.h"
#include "app/fault_watch.h"
#include "app/single_instance.h"
#include "base/product.h"
#include "hotkeys/foreground.h"
#include "hotkeys/pause.h"
#include "ids.h"
#include "store/profile.h"
#include "store/settings.h"
#include "ui/shell/tracking_tooltip.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/main_window.h"
#include "ui/window/dialog_keys.h"
#include "ui/window/main_procedure.h"
#include "ui/window/showing.h"
#include "ui/window/tray_menu.h"

namespace verbatix {

static bool isSecondCopy;
static HWND auxiliaryWindow;

// A window for one that draws or listens without being seen; its messages go to the object in its user
// data.
struct AuxiliaryHandler {
    LRESULT (*onMessage)(HWND, UINT, WPARAM, LPARAM);
};

static LRESULT CALLBACK AuxiliaryProcedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) noexcept {
    const auto* handler =
        reinterpret_cast<const AuxiliaryHandler*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (handler && handler->onMessage) return handler->onMessage(window, message, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

static void CreateAuxiliaryWindow(HINSTANCE instance) {
    if (IsWindow(auxiliaryWindow)) return;
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = AuxiliaryProcedure;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = L"5B0C7E12_9D4A_4F6B_A3E8_61D2C94F0B7A";
    RegisterClassW(&windowClass);
    constexpr int kSide = 200;
    auxiliaryWindow = CreateWindowExW(WS_EX_TOOLWINDOW, windowClass.lpszClassName, L"", WS_POPUP, 0, 0,
                                      kSide, kSide, nullptr, nullptr, instance, nullptr);
}

// Creates the main dialog and decides between window, tray and hidden. The dialog's initialisation has read
// the settings when it returns.
static void ShowStartWindow(HINSTANCE instance) {
    const HWND previousForeground = GetForegroundWindow();
    if (!CreateMainWindow(instance)) return PostQuitMessage(0);
    CreateAuxiliaryWindow(instance);
    if (settings.startTray) {
        SetForegroundWindow(previousForeground);
    } else if (startOptions.startInBackground || startOptions.hideRequested) {
        if (settings.startHidden && previousForeground) SetForegroundWindow(previousForeground);
    } else if (settings.startHidden) {
        if (previousForeground) SetForegroundWindow(previousForeground);
    } else {
        ShowWindow(mainWindow.window, SW_SHOW);
    }
}

// 32-bit programs on 64-bit Windows see a shadow of the system folder unless they say otherwise. The
// functions are looked up because Windows on other processors lacks them.
static void SwitchFileRedirectionOff() {
    const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
    const auto isWow64Process = reinterpret_cast<BOOL(WINAPI*)(HANDLE, PBOOL)>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "IsWow64Process")));
    BOOL isWow64 = FALSE;
    if (!isWow64Process || !isWow64Process(GetCurrentProcess(), &isWow64) || !isWow64) return;
    const auto enableRedirection = reinterpret_cast<BOOLEAN(WINAPI*)(BOOLEAN)>(
        reinterpret_cast<void*>(GetProcAddress(kernel, "Wow64EnableWow64FsRedirection")));
    if (enableRedirection) enableRedirection(FALSE);
}

static void FinishStart(HWND frame) {
    WatchForHangs(frame);
    TellOfCrashInStart();
    const HINSTANCE instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(frame, GWLP_HINSTANCE));
    TrayIcon& tray = trayIcon;
    tray.owner = frame;
    tray.id = IDI_VERBATIX;
    tray.iconResource = IDI_VERBATIX;
    tray.callbackMessage = WM_TRAY_CALLBACK;
    tray.tip = kProductName;
    AddTrayIcon(tray);
    settings.startHidden = ReadProgramNumber(L"start_hiden", settings.startHidden);
    if (startOptions.hideRequested || settings.startHidden) RemoveTrayIcon(tray);
    SwitchFileRedirectionOff();
    ShowStartWindow(instance);
    TellOfFault(mainWindow.window);
}

static LRESULT AnswerOtherCopy(WPARAM wParam, LPARAM lParam) {
    if (wParam == InstanceMessage() && lParam == static_cast<LPARAM>(InstanceMessage())) {
        PostQuitMessage(0);
    } else {
        ShowMainWindow();
    }
    return InstanceMessage();
}

static LRESULT CALLBACK FrameProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    static const UINT taskbarCreated = RegisterWindowMessageW(L"TaskbarCreated");
    if (message == InstanceMessage()) return AnswerOtherCopy(wParam, lParam);
    if (message == taskbarCreated) return RestoreTrayIcon(trayIcon), 0;
    switch (message) {
        case WM_CREATE: return PostMessageW(window, WM_COMMAND, CMD_FINISH_START, 0), 0;
        case WM_COMMAND:
            // Posted messages come before the quit message: a second copy must not hook the keyboard and
            // add an icon on its way out.
            if (LOWORD(wParam) == CMD_FINISH_START && !mainWindow.window && !isSecondCopy)
                FinishStart(window);
            return 0;
        case WM_CLOSE:
        case WM_DESTROY: return PostQuitMessage(0), 0;
        case WM_TRAY_CALLBACK:
            if (lParam == WM_LBUTTONDOWN || lParam == WM_RBUTTONDOWN)
                OnTrayClick(static_cast<UINT>(lParam));
            return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

HWND CreateFrameWindow(HINSTANCE instance) {
    wchar_t frameClass[256] = {};
    wchar_t frameTitle[256] = {};
    LoadStringW(instance, IDS_FRAME_CLASS, frameTitle, 255);
    LoadStringW(instance, IDS_FRAME_CLASS, frameClass, 255);

    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = FrameProcedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_VERBATIX));
    windowClass.hIconSm = windowClass.hIcon;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszMenuName = MAKEINTRESOURCEW(IDR_FRAME);
    windowClass.lpszClassName = frameClass;
    RegisterClassExW(&windowClass);

    isSecondCopy = !ClaimSession();
    if (isSecondCopy) {
        FindRunningCopy();
        PostQuitMessage(kSecondCopyExitCode);
    }
    constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_DISABLED | 2;
    const HWND frame = CreateWindowExW(0, frameClass, frameTitle, kStyle, CW_USEDEFAULT, 0, -100, -100,
                                       nullptr, nullptr, instance, nullptr);
    if (!frame) return nullptr;
    // With more rights than the desktop the messages of the task bar and of a second copy would be kept
    // out.
    ChangeWindowMessageFilterEx(frame, InstanceMessage(), MSGFLT_ALLOW, nullptr);
    ChangeWindowMessageFilterEx(frame, RegisterWindowMessageW(L"TaskbarCreated"), MSGFLT_ALLOW, nullptr);
    ShowWindow(frame, SW_HIDE);
    UpdateWindow(frame);
    SetTimer(frame, TIMER_FRAME, 1000, nullptr);
    return frame;
}

// Messages that mean the user has turned to something else, so that a tip at the mouse is in the way.
static bool DismissesTooltip(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONDBLCLK:
        case WM_MBUTTONDOWN:
        case WM_MBUTTONDBLCLK:
        case WM_NCLBUTTONDOWN:
        case WM_NCLBUTTONDBLCLK:
        case WM_NCRBUTTONDOWN:
        case WM_NCRBUTTONDBLCLK:
        case WM_NCMBUTTONDOWN:
        case WM_NCMBUTTONDBLCLK: return true;
        default: return message >= WM_KEYFIRST && message <= WM_SYSDEADCHAR + 1;
    }
}

// The dialog that Tab, Enter and Esc belong to: the main one, or the one that it waits for.
static HWND DialogOfKeys(HWND target) {
    const HWND main = mainWindow.window;
    return main && !IsWindowEnabled(main) ? GetAncestor(target, GA_ROOT) : main;
}

static void Dispatch(MSG& message) {
    if (DismissesTooltip(message.message)) HideTrackingTooltip(noticeTooltip);
    if (HandleDialogKey(message)) return;
    const HWND dialog = DialogOfKeys(message.hwnd);
    if (dialog && IsDialogMessageW(dialog, &message)) return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

int RunMessageLoop() {
    dispatchMessage = Dispatch;
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
    return static_cast<int>(message.wParam);
}

}  // namespace verbatix
