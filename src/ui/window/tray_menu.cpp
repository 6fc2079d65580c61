#include "ui/window/tray_menu.h"

#include "base/access_letters.h"
#include "base/handle.h"
#include "base/language.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "ui/entries/entry_commands.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/window/closing.h"
#include "ui/window/commands.h"
#include "ui/window/menu_bar.h"
#include "ui/window/showing.h"

namespace verbatix {

static UniqueMenu CreateTrayMenu() {
    UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_SHOW, LanguageText(text::kShowVerbatix).c_str());
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_NEW, LanguageText(text::kTrayNewEntry).c_str());
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.Get(), MF_STRING | (keyboardHook.off ? MF_CHECKED : 0), CMD_TRAY_PAUSE,
                LanguageText(text::kPauseHotkeys).c_str());
    AppendMenuW(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(CreateOptionsMenu()),
                LanguageText(text::kTrayOptions).c_str());
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_EXIT, LanguageText(text::kTrayExit).c_str());
    GiveAccessLetters(menu.Get());
    SetMenuDefaultItem(menu.Get(), CMD_TRAY_SHOW, FALSE);
    return menu;
}

// Off, or on again.
static void PauseHotkeys() {
    ToggleKeyboardHook();
    UpdateStatusBar();
}

static void RunTrayCommand(int command) {
    switch (command) {
        case 0: break;
        case CMD_TRAY_SHOW: ShowMainWindow(); break;
        case CMD_TRAY_NEW:
            ShowMainWindow();
            NewEntry();
            break;
        case CMD_TRAY_PAUSE: PauseHotkeys(); break;
        case CMD_TRAY_EXIT: ExitProgram(CMD_EXIT); break;
        // One of the options.
        default: RouteCommand(static_cast<WPARAM>(command), kMenuBarMarker); break;
    }
}

// A window that was brought to the front a moment ago has an Alt press in its queue, which would end the
// menu.
static void DropAltPress() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_SYSKEYDOWN, WM_SYSKEYUP, PM_REMOVE)) {
    }
}

static void ShowTrayMenu() {
    InstallKeyboardHookUnlessOff();
    // The frame is disabled and would not get the keyboard.
    const HWND owner = mainWindow.window;
    POINT mouse = {};
    GetCursorPos(&mouse);
    const UniqueMenu menu = CreateTrayMenu();
    // A menu whose owner is not in front does not close when the user clicks elsewhere, and without the
    // message behind it the next one would close at once.
    SetForegroundWindow(owner);
    DropAltPress();
    const int chosen =
        TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
    RunTrayCommand(chosen);
}

void OnTrayClick(UINT mouseMessage) {
    if (!mainWindow.window) return;
    if (mouseMessage == WM_LBUTTONDOWN) {
        ShowMainWindow();
    } else {
        ShowTrayMenu();
    }
}

}  // namespace verbatix
