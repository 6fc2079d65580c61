#include "ui/window/showing.h"

#include <windows.h>

#include "hotkeys/foreground.h"
#include "hotkeys/keyboard_hook.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"

namespace verbatix {

void ShowMainWindow() {
    if (!mainWindow.window) return;
    if (!IsWindowVisible(mainWindow.window)) InstallKeyboardHookUnlessOff();
    UpdateStatusBar();
    // Minimised all the same, by the task bar's "show desktop" for one, it would come up as a button.
    ShowWindow(mainWindow.window, IsIconic(mainWindow.window) ? SW_RESTORE : SW_SHOW);
    mainWindow.broughtToFrontAt = GetTickCount64();
    // Behind a question of its own it could not be used.
    const bool isEnabled = IsWindowEnabled(mainWindow.window) != FALSE;
    BringToFront(isEnabled ? mainWindow.window : GetLastActivePopup(mainWindow.window));
    if (isEnabled && settings.setFocus) SetFocus(ShownView());
}

void ApplyTopmost() {
    SetWindowPos(mainWindow.window, settings.topmost > 0 ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

}  // namespace verbatix
