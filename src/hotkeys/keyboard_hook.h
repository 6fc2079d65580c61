// The one low-level keyboard hook of the process: it catches the entries' hotkeys, swallows them and runs
// the entry, at once or from a posted message, or asks the main window for the menu. All of it belongs to
// the thread that installs the hook, which must dispatch messages. A hook that cannot be installed is told
// in a message box, and the program goes on without hotkeys until a later install succeeds.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "base/handle.h"
#include "hotkeys/hotkey_tables.h"
#include "hotkeys/key_capture.h"
#include "hotkeys/key_decision.h"
#include "hotkeys/press_log.h"
#include "hotkeys/program_of_window.h"

namespace verbatix {

// What the hook needs from above. Set once, before the hook is installed; a null member does nothing.
struct HookClient {
    // Gets WM_COMMAND, posted: CMD_SHOW_PASTE_MENU, CMD_RENAME_ENTRY, CMD_RUN_ENTRY, CMD_REINSTALL_HOOK.
    HWND mainWindow = nullptr;
    void (*executeEntry)(const std::wstring& text) = nullptr;
    bool (*wantsRename)() = nullptr;  // whether F2 now means "rename the selected entry"
    // Whether the entry is executed well before the hook has to answer, after `limit` milliseconds. One
    // that is not is executed when the hook has answered. Null: all are.
    bool (*fitsInsideHook)(const std::wstring& text, DWORD limit) = nullptr;
};

// A hotkey that was pressed, and the windows that had the keyboard then.
struct HotkeyPress {
    unsigned key = 0;
    unsigned modifier = 0;
    HWND focus = nullptr;       // of this thread; null when another program has the keyboard
    HWND foreground = nullptr;  // of the system
    HWND target = nullptr;      // the control in `foreground` that has the keyboard, else `foreground`
    PressNumber number = kNoPress;
};

// The window that asks for a hotkey to be pressed.
struct KeyCapture {
    HWND window = nullptr;
    CaptureState state;
};

struct KeyboardHook {
    HookClient client;
    HotkeyTables tables;
    DisabledHotkeys disabled;
    ProgramNames pausedPrograms;  // no hotkey does anything while one of them is in front
    TriggerState trigger;
    KeyCapture capture;
    std::optional<HotkeyPress> menuRequest;  // whose menu is asked for; taken out by who shows it
    HotkeyPress press;                       // of the entry that is executed, or was last
    bool rightControlIsHotkeys = false;      // a hotkey with right Ctrl was pressed, which is held since
    bool stepIsRunning = false;              // see DeferredStep
    DWORD limit = 300;                       // milliseconds that Windows waits for the hook
    bool off = false;           // switched off by the user; nothing but the switch installs it then
    DWORD lastEventAt = 0;      // message time at which the hook was last asked, or installed
    unsigned installCount = 0;  // installs since the count was last set to 0
    UniqueHandle<HHOOK, UnhookWindowsHookEx> handle;
};

extern KeyboardHook keyboardHook;

// An execution, or what else no entry may be executed in the middle of: a hotkey pressed meanwhile is
// swallowed. One that took long may have cost the hook, which is then installed anew.
class HookIsBusy {
  public:
    HookIsBusy();
    ~HookIsBusy();
    HookIsBusy(const HookIsBusy&) = delete;
    HookIsBusy& operator=(const HookIsBusy&) = delete;

  private:
    bool before_;
    ULONGLONG start_;
};

// An execution's step outside of the hook, from a timer or a posted message. A hotkey pressed meanwhile is
// not executed in the middle of it, but behind it.
class DeferredStep {
  public:
    DeferredStep() { keyboardHook.stepIsRunning = true; }
    ~DeferredStep() { keyboardHook.stepIsRunning = false; }
    DeferredStep(const DeferredStep&) = delete;
    DeferredStep& operator=(const DeferredStep&) = delete;
};

// Executes the entry whose hotkey was pressed and that did not fit into the hook: for CMD_RUN_ENTRY.
// Without one it does nothing.
void RunPressedEntry();

// Waits until the keys of the hotkey have come up and no key was seen for a moment, at most a second.
void AwaitReleases();

// Whether the user holds Ctrl for something else than the hotkey that he pressed: letting the right one go
// for him does not reach the system's right Ctrl.
bool IsControlHeldOnPurpose();

// From now on, while this window of the hook's thread has the keyboard and no menu is open, the keys are
// its own and no hotkey runs, also while the user has the hook switched off. For each the window gets
// WM_KEYS_PRESSED: action and key in the words of wParam, what is held as state word in lParam.
void BeginCapture(HWND window);

// To be called when the window loses the keyboard or goes; without a capture of that window it does
// nothing. What is still held stays the hook's until it comes up.
void EndCapture(HWND window);

// Nobody knows what is held any more: the session was away, and keys came up unseen.
void ForgetHeldKeys();

// The same for a field that asks for a hotkey alone: on the desktop of Ctrl+Alt+Del, or of a question for
// rights, keys have come up unseen.
void ForgetCapturedKeys();

// How long Windows waits for a hook, in milliseconds, by what the registry holds (nothing: not set).
DWORD HookTimeLimit(std::optional<DWORD> registryValue);

// Replaces an installed hook by a new one. False when that fails; the user has then been told.
bool InstallKeyboardHook();
void RemoveKeyboardHook();

// The same for every routine re-installation: does nothing while the user has the hook switched off.
void InstallKeyboardHookUnlessOff();

// The user's switch: flips `off` and removes or installs the hook.
void ToggleKeyboardHook();

// Shows the system's text for that error code as the reason why there is no hook.
void ReportHookFailure(DWORD error);

}  // namespace verbatix
