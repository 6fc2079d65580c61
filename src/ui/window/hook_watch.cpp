#include "ui/window/hook_watch.h"

#include <wtsapi32.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <string>
#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/system_library.h"
#include "hotkeys/hook_upkeep.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "ui/entries/test_target.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/notice.h"
#include "ui/state/status_bar.h"
#include "ui/state/timed_pause.h"

namespace verbatix {

// Looked up, like every library that not each Windows must have.
static void AskForSessionChanges(HWND window) {
    static const UniqueModule library = LoadSystemLibrary(L"wtsapi32.dll");
    const auto ask =
        FindFunction<BOOL(WINAPI*)(HWND, DWORD)>(library.Get(), "WTSRegisterSessionNotification");
    if (ask) ask(window, NOTIFY_FOR_THIS_SESSION);
}

static void CALLBACK OnDesktopSwitch(HWINEVENTHOOK, DWORD, HWND, LONG, LONG, DWORD, DWORD) noexcept {
    ForgetCapturedKeys();
}

void StartHookWatch(HWND window) {
    constexpr USHORT kGenericDesktop = 1;
    constexpr USHORT kKeyboard = 6;
    const RAWINPUTDEVICE keyboard = {kGenericDesktop, kKeyboard, RIDEV_INPUTSINK, window};
    RegisterRawInputDevices(&keyboard, 1, sizeof keyboard);
    AskForSessionChanges(window);
    // It lasts as long as the process.
    SetWinEventHook(EVENT_SYSTEM_DESKTOPSWITCH, EVENT_SYSTEM_DESKTOPSWITCH, nullptr, OnDesktopSwitch, 0, 0,
                    WINEVENT_OUTOFCONTEXT);
    OnTaskBarChange();
    // Where the user was before the program's own window came up.
    NoteFrontWindow(GetForegroundWindow());
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
    ForgetHeldKeys();
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

// The task bar and what it opens are in front while the user is on his way to the icon.
static bool IsTaskBars(HWND window) {
    constexpr const wchar_t* kClasses[] = {L"Shell_TrayWnd", L"Shell_SecondaryTrayWnd",
                                           L"NotifyIconOverflowWindow", L"TopLevelWindowForOverflowTray"};
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return std::any_of(std::begin(kClasses), std::end(kClasses),
                       [&](const wchar_t* known) { return wcscmp(name, known) == 0; });
}

static bool IsDesktop(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return window &&
           (window == GetDesktopWindow() || window == GetShellWindow() || wcscmp(name, L"WorkerW") == 0);
}

static bool IsOurs(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == 0 || process == GetCurrentProcessId();
}

static void OnOtherInFront(HWND front) {
    NoteFrontWindow(front);
    if (IsDesktop(front)) {
        hotkeyState.lastFront = nullptr;
        hotkeyState.lastProgram.clear();
    } else if (!IsOurs(front) && !IsTaskBars(front)) {
        hotkeyState.lastFront = front;
        hotkeyState.lastProgram = ProgramOfWindow(front);
    }
    hotkeyState.frontIsOutOfReach = KeepsKeysFromUs(front);
    if (hotkeyState.frontIsOutOfReach) keyboardHook.trigger.claims.Clear();
}

static TrayMark MarkNow() {
    const HotkeyCondition condition = ConditionOfHotkeys();
    const bool isFailing = condition == HotkeyCondition::kRefused || IsNoticeUp(Notice::kListUnread) ||
                           IsNoticeUp(Notice::kNotSaved);
    if (isFailing) return TrayMark::kFailing;
    switch (condition) {
        case HotkeyCondition::kPaused:
        case HotkeyCondition::kPausedInFront: return TrayMark::kPaused;
        case HotkeyCondition::kOutOfReach: return TrayMark::kOutOfReach;
        default: return TrayMark::kNone;
    }
}

static std::wstring TipNow() {
    if (IsNoticeUp(Notice::kListUnread)) return LanguageText(text::kTipListUnread);
    return IsNoticeUp(Notice::kNotSaved) ? LanguageText(text::kTipNotSaved) : HotkeyStateText();
}

void OnTaskBarChange() {
    const TrayMark mark = trayIcon.look.mark;
    trayIcon.look = LookOnTaskBar();
    trayIcon.look.mark = mark;
}

void WatchForeground() {
    static HWND lastInFront = nullptr;
    const HWND front = GetForegroundWindow();
    const HotkeyCondition before = ConditionOfHotkeys();
    if (std::exchange(lastInFront, front) != front) OnOtherInFront(front);
    hotkeyState.frontIsPaused = front && front == hotkeyState.lastFront &&
                                HasProgram(keyboardHook.pausedPrograms, hotkeyState.lastProgram);
    if (EndPauseInTime() || ConditionOfHotkeys() != before) UpdateStatusBar();
    trayIcon.tip = std::wstring(kProductName) + L"\n" + TipNow();
    trayIcon.look.mark = MarkNow();
    RefreshTrayIcon(trayIcon);
}

}  // namespace verbatix
