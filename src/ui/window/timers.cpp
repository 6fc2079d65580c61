#include "ui/window/timers.h"

#include <commctrl.h>

#include <ctime>

#include "base/debug.h"
#include "hotkeys/hook_upkeep.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "ui/editor/editor.h"
#include "ui/entries/drag_entry.h"
#include "ui/state/main_window.h"

namespace verbatix {

static ClockWatch clockWatch;

void StartHookUpkeep() {
    constexpr UINT kReinstallMilliseconds = 12000;
    constexpr UINT kClockMilliseconds = 100;
    SetTimer(mainWindow.window, TIMER_REINSTALL_HOOK, kReinstallMilliseconds, nullptr);
    clockWatch = {std::time(nullptr), 0};
    keyboardHook.installCount = 0;
    SetTimer(mainWindow.window, TIMER_CLOCK_JUMP, kClockMilliseconds, nullptr);
}

namespace {

struct Timer {
    UINT_PTR id;
    bool oneShot;
    void (*run)();
};

// Something at start may have delayed or displaced the first hook; this one comes when the system has
// settled.
void ReinstallHook() {
    InstallKeyboardHookUnlessOff();
    UpdateStatusBar();
    DebugLine(L"Reinit Hook\n");
}

// A clock that jumps means that the machine has slept, after which Windows may have dropped the hook.
void WatchClock() {
    if (!ClockJumped(clockWatch, std::time(nullptr))) return;
    const std::wstring figures = HookStatusText(clockWatch.jumps, keyboardHook.installCount);
    constexpr WPARAM kClockPart = 3;
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, kClockPart, reinterpret_cast<LPARAM>(figures.c_str()));
    InstallKeyboardHookUnlessOff();
    UpdateStatusBar();
}

constexpr Timer kTimers[] = {
    {TIMER_REINSTALL_HOOK, true, ReinstallHook},     {TIMER_CLOCK_JUMP, false, WatchClock},
    {TIMER_RESTORE_CLIPBOARD, true, OnRestoreTimer}, {TIMER_CPY_COPY, true, OnCpyCopyTimer},
    {TIMER_CPY_LAUNCH, true, OnCpyLaunchTimer},      {TIMER_EDITOR_UPDATE, true, OnEditorTimer},
    {TIMER_DRAG_SCROLL, false, OnDragTimer},
};

}  // namespace

void OnTimer(UINT_PTR timer) {
    for (const Timer& row : kTimers) {
        if (row.id != timer) continue;
        // First of all, so that what the handler starts anew is not taken away.
        if (row.oneShot) KillTimer(mainWindow.window, timer);
        row.run();
        return;
    }
}

}  // namespace verbatix
