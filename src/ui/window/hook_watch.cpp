#include "ui/window/hook_watch.h"

#include <commctrl.h>
#include <wtsapi32.h>

#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "base/system_library.h"
#include "base/text.h"
#include "hotkeys/hook_upkeep.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct HookWatch {
    HWND front = nullptr;
    bool frontIsOutOfReach = false;
    unsigned restored = 0;  // times that the hook was found gone
};

HookWatch watch;

}  // namespace

// Looked up, like every library that not each Windows must have.
static void AskForSessionChanges(HWND window) {
    static const UniqueModule library = LoadSystemLibrary(L"wtsapi32.dll");
    if (!library) return;
    const auto ask = reinterpret_cast<BOOL(WINAPI*)(HWND, DWORD)>(
        reinterpret_cast<void*>(GetProcAddress(library.Get(), "WTSRegisterSessionNotification")));
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
    ShowHookState();
}

void OnRawKey() {
    const bool isWatched = keyboardHook.handle && !watch.frontIsOutOfReach;
    const auto time = static_cast<DWORD>(GetMessageTime());
    if (!isWatched || !HookWasPassedBy(time, keyboardHook.lastEventAt)) return;
    ++watch.restored;
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
    const HWND front = GetForegroundWindow();
    if (front != watch.front) {
        watch.front = front;
        const bool before = std::exchange(watch.frontIsOutOfReach, KeepsKeysFromUs(front));
        if (watch.frontIsOutOfReach) keyboardHook.trigger.claims.Clear();
        if (watch.frontIsOutOfReach != before) ShowHookState();
    }
    RefreshTrayTip(mainWindow.tray);
}

static std::wstring HookState() {
    constexpr int kActive = 1058;
    constexpr int kPaused = 1059;
    constexpr int kRefused = 1060;
    constexpr int kRestored = 1370;
    constexpr int kOutOfReach = 1371;
    if (keyboardHook.off) return LanguageText(kPaused);
    if (!keyboardHook.handle) return LanguageText(kRefused);
    if (watch.frontIsOutOfReach) return LanguageText(kOutOfReach);
    if (watch.restored == 0) return LanguageText(kActive);
    return FillIn(LanguageText(kRestored), {std::to_wstring(watch.restored)});
}

void ShowHookState() {
    constexpr WPARAM kHookPart = 1;
    const std::wstring state = HookState();
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, kHookPart, reinterpret_cast<LPARAM>(state.c_str()));
    mainWindow.tray.tip = std::wstring(kProductName) + L"\n" + state;
    RefreshTrayTip(mainWindow.tray);
}

}  // namespace verbatix
