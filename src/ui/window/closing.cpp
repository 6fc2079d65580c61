#include "ui/window/closing.h"

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "menu/menu_popup.h"
#include "store/profile.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "ui/editor/editor.h"
#include "ui/editor/long_text.h"
#include "ui/look/window_place.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/views/list_columns.h"
#include "ui/window/showing.h"

namespace verbatix {

// Where a text is that could not be saved; read once, at the next start.
static constexpr const wchar_t* kUnsavedTextKey = L"unsaved_text";
// The file that this run has kept one in.
static std::wstring keptText;

void RememberLook() {
    const SettingsBatch together;
    RememberWindowPlace(mainWindow.window);
    RememberColumns();
}

// Hidden without an icon the window would be out of reach.
static void HideBehindIcon() {
    ShowWindow(mainWindow.window, SW_HIDE);
    if (!trayIcon.wanted) AddTrayIcon(trayIcon);
}

void HideMainWindow() {
    if (!SaveEdits(Warn::kAlways)) return;
    if (!settings.hideInfo) {
        ChangeSetting(&Settings::hideInfo, 1);
        MessageBoxW(mainWindow.window, LanguageText(text::kStillRunning).c_str(),
                    LanguageText(text::kStillRunningTitle).c_str(), MB_OK | MB_ICONINFORMATION);
    }
    HideBehindIcon();
}

static void GoIntoTray() {
    if (!SaveEdits(Warn::kAlways)) return;
    AnimateIntoTray(mainWindow.window);
    HideBehindIcon();
    if (settings.trayInfo) return;
    // The first time, so that nobody takes the program for ended.
    const std::wstring& title = LanguageText(text::kStillRunningTitle);
    if (ShowTrayBalloon(trayIcon, title, LanguageText(text::kInTray)))
        ChangeSetting(&Settings::trayInfo, 1);
}

void SendToTray() {
    GoIntoTray();
    InstallKeyboardHookUnlessOff();
}

void CloseMainWindow() {
    constexpr int kClosedByUser = 111;
    InstallKeyboardHookUnlessOff();
    if (settings.hideIfClose) {
        HideMainWindow();
    } else if (settings.trayIfClose) {
        GoIntoTray();
    } else {
        ExitProgram(kClosedByUser);
    }
}

void MinimizeMainWindow() {
    InstallKeyboardHookUnlessOff();
    if (settings.trayIfMinimize && GetActiveWindow() == mainWindow.window) GoIntoTray();
}

bool SaveForExit() {
    bool isSaved = false;
    {
        const SettingsBatch together;
        RememberLook();
        isSaved = SaveAll(Warn::kAlways);
    }
    if (!isSaved) return ShowMainWindow(), false;
    return !HasUnsaved(mainWindow.entries) ||
           MessageBoxW(mainWindow.window, LanguageText(text::kAskLoseChanges).c_str(), kProductName,
                       MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2) == IDYES;
}

void LeaveProgram(int dialogCode) {
    WriteUses();
    EndDialog(mainWindow.window, dialogCode);
    CloseHotkeyMenu();
    PostQuitMessage(1);
    RemoveKeyboardHook();
}

void ExitProgram(int dialogCode) {
    if (SaveForExit()) LeaveProgram(dialogCode);
}

void SaveWithoutAsking() {
    const SettingsBatch together;
    RememberLook();
    // Whoever ends the program does not wait for an answer.
    const auto showMessage = std::exchange(mainWindow.listClient.showMessage, nullptr);
    if (!SaveEdits(Warn::kNever)) {
        if (!keptText.empty()) DeleteFileW(keptText.c_str());
        keptText = KeepTextInFile(FieldText(IDC_TEXT), KeepPlace::kBesideBackups);
        if (!keptText.empty()) WriteProgramText(kUnsavedTextKey, keptText);
    }
    // The other entries, whatever became of that text.
    if (HasUnsaved(mainWindow.entries)) SaveList(mainWindow.entries, mainWindow.listClient, false, true);
    mainWindow.listClient.showMessage = showMessage;
    WriteUses();
}

void ForgetUnsavedText() {
    const std::wstring path = std::exchange(keptText, {});
    if (path.empty()) return;
    WriteProgramText(kUnsavedTextKey, L"");
    DeleteFileW(path.c_str());
}

void TellOfUnsavedText() {
    const std::wstring path = ReadProgramText(kUnsavedTextKey, MAX_PATH);
    if (path.empty()) return;
    WriteProgramText(kUnsavedTextKey, L"");
    MessageBoxW(mainWindow.window, FillIn(LanguageText(text::kKeptInFile), {path}).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

}  // namespace verbatix
