// The watch over the keyboard hook. Windows drops a hook that was slow without a word, and most likely one
// of a session that was locked or asleep. So it is installed anew after such times, and when a key passes
// it by: raw input tells of every key that reached a program. What state the hotkeys are in stands in the
// status bar and in the tip of the tray icon. Main thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Starts the watch for the main window: asks for raw input of the keyboard and for changes of the session.
// What Windows refuses is done without.
void StartHookWatch(HWND window);

// Installs the hook anew, unless the user has paused it, and shows what came of it.
void RenewHook();

// The main window's WM_INPUT (its time is the message's), WM_WTSSESSION_CHANGE and WM_POWERBROADCAST.
void OnRawKey();
void OnSessionChange(WPARAM change);
void OnPowerChange(WPARAM change);

// The task bar may have another colour or size now (WM_SETTINGCHANGE, WM_DISPLAYCHANGE).
void OnTaskBarChange();

// Ten times a second: looks which program is in front, whether a pause is over, and tells the tray icon.
void WatchForeground();

}  // namespace verbatix
