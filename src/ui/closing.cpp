#include "ui/closing.h"

#include "base/language.h"
#include "hotkeys/keyboard_hook.h"
#include "menu/menu_popup.h"
#include "store/settings.h"
#include "ui/editor.h"
#include "ui/main_window.h"
#include "ui/window_place.h"

namespace verbatix {

// Hidden without an icon the window would be out of reach.
static void HideBehindIcon() {
    SaveEdits(Warn::kAlways);
    ShowWindow(mainWindow.window, SW_HIDE);
    if (!mainWindow.tray.wanted) AddTrayIcon(mainWindow.tray);
}

void HideMainWindow() {
    if (!settings.hideInfo) {
        ChangeSetting(&Settings::hideInfo, 1);
        MessageBoxW(mainWindow.window, LanguageText(52).c_str(), LanguageText(51).c_str(),
                    MB_OK | MB_ICONINFORMATION);
    }
    HideBehindIcon();
}

void SendToTray() {
    AnimateIntoTray(mainWindow.window);
    InstallKeyboardHookUnlessOff();
    HideBehindIcon();
}

void CloseMainWindow() {
    constexpr int kClosedByUser = 111;
    InstallKeyboardHookUnlessOff();
    if (settings.hideIfClose) {
        HideMainWindow();
    } else if (settings.trayIfClose) {
        AnimateIntoTray(mainWindow.window);
        HideBehindIcon();
    } else {
        ExitProgram(kClosedByUser);
    }
}

void MinimizeMainWindow() {
    InstallKeyboardHookUnlessOff();
    if (!settings.trayIfMinimize || GetActiveWindow() != mainWindow.window) return;
    AnimateIntoTray(mainWindow.window);
    HideBehindIcon();
}

void ExitProgram(int dialogCode) {
    SaveEdits(Warn::kAlways);
    EndDialog(mainWindow.window, dialogCode);
    RememberWindowPlace(mainWindow.window);
    CloseHotkeyMenu();
    PostQuitMessage(1);
    RemoveKeyboardHook();
}

}  // namespace verbatix
