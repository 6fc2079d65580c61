#include "ui/window/timers.h"

#include <commctrl.h>

#include <ctime>

#include "base/debug.h"
#include "hotkeys/hook_upkeep.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/executor.h"
#include "ui/editor/editor.h"
#include "ui/entries/cell_click.h"
#include "ui/entries/drag_entry.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/window/hook_watch.h"
#include "ui/window/store_watch.h"

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

// A step of an execution. Within another one, or with the paste menu open, its strokes would go into a box
// or the menu; so it waits.
template <UINT_PTR timer, auto step>
void RunStep() {
    constexpr UINT kAgainMilliseconds = 200;
    if (keyboardHook.trigger.busy) {
        SetTimer(mainWindow.window, timer, kAgainMilliseconds, nullptr);
        return;
    }
    const DeferredStep running;
    step();
}

// Something at start may have delayed or displaced the first hook; this one comes when the system has
// settled.
void ReinstallHook() {
    RenewHook();
    DebugLine(L"Reinit Hook\n");
}

// A clock that jumps means that the machine has slept, after which Windows may have dropped the hook.
void WatchClock() {
    WatchForeground();
    // While nobody sees them they wait for the window to be shown.
    if (IsWindowVisible(mainWindow.window) && HaveUsesChanged()) ShowUsesAnew();
    WriteUsesInTime();
    if (!ClockJumped(clockWatch, std::time(nullptr))) return;
    const std::wstring figures = HookStatusText(clockWatch.jumps, keyboardHook.installCount);
    constexpr WPARAM kClockPart = 3;
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, kClockPart, reinterpret_cast<LPARAM>(figures.c_str()));
    RenewHook();
}

constexpr Timer kTimers[] = {
    {TIMER_REINSTALL_HOOK, true, ReinstallHook},
    {TIMER_CLOCK_JUMP, false, WatchClock},
    {TIMER_RESTORE_CLIPBOARD, true, OnRestoreTimer},
    {TIMER_CPY_COPY, true, RunStep<TIMER_CPY_COPY, OnCpyCopyTimer>},
    {TIMER_CPY_LAUNCH, true, RunStep<TIMER_CPY_LAUNCH, OnCpyLaunchTimer>},
    {TIMER_EDITOR_UPDATE, true, OnEditorTimer},
    {TIMER_CELL_EDIT, true, OnCellTimer},
    {TIMER_DRAG_SCROLL, false, OnDragTimer},
    {TIMER_LIST_RETRY, false, OnListRetryTimer},
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
