// The one low-level keyboard hook of the process: it catches the entries' hotkeys, swallows them and runs
// the entry or asks the main window for the menu. All of it belongs to the thread that installs the hook,
// which must dispatch messages. A hook that cannot be installed is told in a message box, and the program
// goes on without hotkeys until a later install succeeds.
#pragma once

#include <windows.h>

#include <string>

#include "base/handle.h"
#include "hotkeys/hotkey_tables.h"
#include "hotkeys/key_decision.h"

namespace verbatix {

// What the hook needs from above. Set once, before the hook is installed; a null member does nothing.
struct HookClient {
    HWND mainWindow = nullptr;  // gets WM_COMMAND CMD_SHOW_PASTE_MENU (posted), CMD_RENAME_ENTRY (sent)
    void (*executeEntry)(const std::wstring& text) = nullptr;
    bool (*wantsRename)() = nullptr;  // whether F2 now means "rename the selected entry"
};

// The hotkey whose menu is asked for, and the windows that had the keyboard when it was pressed.
struct MenuRequest {
    unsigned key = 0;
    unsigned modifier = 0;
    HWND focus = nullptr;       // of this thread; null when another program has the keyboard
    HWND foreground = nullptr;  // of the system
    HWND target = nullptr;      // the control in `foreground` that has the keyboard, else `foreground`
};

struct KeyboardHook {
    HookClient client;
    HotkeyTables tables;
    DisabledHotkeys disabled;
    TriggerState trigger;
    MenuRequest menuRequest;
    HWND target = nullptr;      // of the last trigger, as in MenuRequest
    bool off = false;           // switched off by the user; nothing but the switch installs it then
    unsigned installCount = 0;  // installs since the count was last set to 0
    UniqueHandle<HHOOK, UnhookWindowsHookEx> handle;
};

extern KeyboardHook keyboardHook;

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
