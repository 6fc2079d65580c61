#include "ui/window/hook_watch.h"

#include <wtsapi32.h>

#include <string>
#include <utility>

#include "base/product.h"
#include "base/system_library.h"
#include "hotkeys/hook_upkeep.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "ui/entries/test_target.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/status_bar.h"

namespace verbatix {

// Looked up, like every library that not each Windows must have.
static void AskForSessionChanges(HWND window) {
    static const UniqueModule library = LoadSystemLibrary(L"wtsapi32.dll");
    const auto ask =
        FindFunction<BOOL(WINAPI*)(HWND, DWORD)>(library.Get(), "WTSRegisterSessionNotification");
    if (ask) ask(window, NOTIFY_FOR_THIS_SESSION);
}

void StartHookWatch(HWND window) {
    constexpr USHORT kGenericDesktop = 1;
    constexpr USHORT kKeyboard = 6;
    const RAWINPUTDEVICE keyboard = {kGenericDesktop, kKeyboard, RIDEV_INPUTSINK, window};
    RegisterRawInputDevices(&keyboard, 1, sizeof keyboard);
    AskForSessionChanges(window);
}

void RenewHook() {
    InstallKeyboardHookUnlessOff();
    UpdateStatusBar();
}

void OnRawKey() {
    const bool isWatched = keyboardHook.handle && !hotkeyState.frontIsOutOfReach;
    const auto time = static_cast<DWORD>(GetMessageTime());
    if (!isWatched || !HookWasPassedBy(time, keyboardHook.lastEventAt)) return;
    ++hotkeyState.restored;
    RenewHook();
}

// A key that was held when the session was left has come up since.
static void RenewHookAfterAbsence() {
    keyboardHook.trigger.claims.Clear();
    RenewHook();
}

void OnSessionChange(WPARAM change) {
    if (change == WTS_SESSION_UNLOCK || change == WTS_CONSOLE_CONNECT || change == WTS_REMOTE_CONNECT) {
        RenewHookAfterAbsence();
    }
}

void OnPowerChange(WPARAM change) {
    if (change == PBT_APMRESUMEAUTOMATIC || change == PBT_APMRESUMESUSPEND) RenewHookAfterAbsence();
}

void WatchForeground() {
    static HWND lastInFront = nullptr;
    const HWND front = GetForegroundWindow();
    if (std::exchange(lastInFront, front) != front) {
        NoteFrontWindow(front);
        const bool isOutOfReach = KeepsKeysFromUs(front);
        if (isOutOfReach) keyboardHook.trigger.claims.Clear();
        if (std::exchange(hotkeyState.frontIsOutOfReach, isOutOfReach) != isOutOfReach) UpdateStatusBar();
    }
    trayIcon.tip = std::wstring(kProductName) + L"\n" + HotkeyStateText();
    RefreshTrayTip(trayIcon);
}

}  // namespace verbatix
