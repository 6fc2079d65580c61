// The icon in the notification area. What is wanted and what is shown are kept apart: the task bar may
// come up after this program, and it may restart and forget every icon.
#pragma once

#include <windows.h>

#include <string>

#include "base/handle.h"
#include "ui/shell/tray_picture.h"

namespace verbatix {

// One icon that belongs to `owner`, which receives `callbackMessage` with `id` as wParam and the mouse
// message as lParam. Everything but the adding itself happens on the thread that owns `owner`.
struct TrayIcon {
    HWND owner = nullptr;
    UINT id = 0;
    UINT callbackMessage = 0;
    WORD iconResource = 0;
    std::wstring tip;  // at most 63 characters are shown
    std::wstring shownTip;
    TrayLook look;
    TrayLook shownLook;
    bool wanted = false;
    UniqueKernelObject stopRequest;  // of the worker that adds the icon now
    UniqueKernelObject worker;
};

// The program's one icon, which app/ fills in at start.
extern TrayIcon trayIcon;

// Adds the icon from a worker thread, which tries again every second until the task bar takes it, so that
// a shell that is not up yet holds nobody up. Called again (the task bar has restarted) it adds anew.
void AddTrayIcon(TrayIcon& icon);

// Shows the icon's tip and look where they have changed. Where the icon is not there yet, a later call does
// it.
void RefreshTrayIcon(TrayIcon& icon);

// Shows a balloon with a title of at most 63 and a text of at most 255 characters at the icon. False where
// the icon is not there yet, or the shell shows none.
bool ShowTrayBalloon(const TrayIcon& icon, const std::wstring& title, const std::wstring& text);

// Takes the icon away and stops the worker.
void RemoveTrayIcon(TrayIcon& icon);

// Adds the icon again if it is wanted: for the "TaskbarCreated" message.
void RestoreTrayIcon(TrayIcon& icon);

// Shows a window shrinking into the notification area. Only a picture; the window is not changed.
void AnimateIntoTray(HWND window);

}  // namespace verbatix
