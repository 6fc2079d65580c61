#include "ui/window/tray_menu.h"

#include <string>

#include "base/access_letters.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "store/paused_programs.h"
#include "ui/entries/entry_commands.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"
#include "ui/state/status_bar.h"
#include "ui/state/timed_pause.h"
#include "ui/window/closing.h"
#include "ui/window/commands.h"
#include "ui/window/menu_bar.h"
#include "ui/window/showing.h"
#include "ui/window/tray_entries.h"

namespace verbatix {

// A name from outside in a menu, which would take "&" for the mark of an access key.
static std::wstring MenuName(std::wstring name) {
    ReplaceAll(name, L"&", L"&&");
    return name;
}

static void AppendPausedPrograms(HMENU menu) {
    if (keyboardHook.pausedPrograms.empty()) return;
    const HMENU programs = CreatePopupMenu();
    UINT_PTR id = CMD_TRAY_PROGRAM_FIRST;
    for (const std::wstring& program : keyboardHook.pausedPrograms)
        AppendMenuW(programs, MF_STRING | MF_CHECKED, id++, MenuName(program).c_str());
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(programs),
                LanguageText(text::kPausedPrograms).c_str());
}

static void AppendPauses(HMENU menu) {
    const auto append = [menu](UINT id, bool isOn, const std::wstring& text) {
        AppendMenuW(menu, MF_STRING | (isOn ? MF_CHECKED : 0U), id, text.c_str());
    };
    const std::wstring& program = hotkeyState.lastProgram;
    append(CMD_TRAY_PAUSE, keyboardHook.off && !IsPausedForATime(), LanguageText(text::kPauseHotkeys));
    append(CMD_TRAY_HOUR, IsPausedForATime(), LanguageText(text::kPauseForAnHour));
    if (!program.empty()) {
        append(CMD_TRAY_PROGRAM, HasProgram(keyboardHook.pausedPrograms, program),
               FillIn(LanguageText(text::kPauseInProgram), {MenuName(program)}));
    }
    AppendPausedPrograms(menu);
}

static UniqueMenu CreateTrayMenu() {
    UniqueMenu menu(CreatePopupMenu());
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_SHOW, LanguageText(text::kShowVerbatix).c_str());
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_NEW, LanguageText(text::kTrayNewEntry).c_str());
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendLastUsed(menu.Get());
    AppendPauses(menu.Get());
    AppendMenuW(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(CreateOptionsMenu()),
                LanguageText(text::kTrayOptions).c_str());
    AppendMenuW(menu.Get(), MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu.Get(), MF_STRING, CMD_TRAY_EXIT, LanguageText(text::kTrayExit).c_str());
    GiveAccessLetters(menu.Get());
    SetMenuDefaultItem(menu.Get(), CMD_TRAY_SHOW, FALSE);
    return menu;
}

// What is paused is let work again.
static void SwitchPause() {
    PauseHotkeys(!keyboardHook.off);
    UpdateStatusBar();
}

static void SwitchPauseForAnHour() {
    if (IsPausedForATime()) return SwitchPause();
    PauseHotkeysForAnHour();
    UpdateStatusBar();
}

static void SwitchProgram(const std::wstring& program) {
    ToggleProgram(keyboardHook.pausedPrograms, program);
    SavePausedPrograms(keyboardHook.pausedPrograms);
}

// One of the programs in the menu of those that are paused.
static bool SwitchProgramOf(int command) {
    const auto place = static_cast<std::size_t>(command - CMD_TRAY_PROGRAM_FIRST);
    if (command < CMD_TRAY_PROGRAM_FIRST || place >= keyboardHook.pausedPrograms.size()) return false;
    SwitchProgram(std::wstring(keyboardHook.pausedPrograms[place]));
    return true;
}

// What was in front before the menu.
struct Front {
    HWND window = nullptr;
    std::wstring program;
};

static void RunTrayCommand(int command, const Front& front) {
    switch (command) {
        case 0: break;
        case CMD_TRAY_SHOW: ShowMainWindow(); break;
        case CMD_TRAY_NEW:
            ShowMainWindow();
            NewEntry();
            break;
        case CMD_TRAY_PAUSE: SwitchPause(); break;
        case CMD_TRAY_HOUR: SwitchPauseForAnHour(); break;
        case CMD_TRAY_PROGRAM: SwitchProgram(front.program); break;
        case CMD_TRAY_EXIT: ExitProgram(CMD_EXIT); break;
        default:
            if (SwitchProgramOf(command) || RunLastUsed(command, front.window)) break;
            // One of the options.
            RouteCommand(static_cast<WPARAM>(command), kMenuBarMarker);
            break;
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
    const Front front = {hotkeyState.lastFront, hotkeyState.lastProgram};
    const UniqueMenu menu = CreateTrayMenu();
    // A menu whose owner is not in front does not close when the user clicks elsewhere, and without the
    // message behind it the next one would close at once.
    SetForegroundWindow(owner);
    DropAltPress();
    const int chosen =
        TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, mouse.x, mouse.y, 0, owner, nullptr);
    PostMessageW(owner, WM_NULL, 0, 0);
    RunTrayCommand(chosen, front);
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
