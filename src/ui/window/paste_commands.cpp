#include "ui/window/paste_commands.h"

#include "base/language.h"
#include "base/product.h"
#include "hotkeys/keyboard_hook.h"
#include "menu/menu_popup.h"
#include "paste/executor.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"
#include "ui/window/showing.h"

namespace verbatix {

static void ExecuteInTarget(const std::wstring& text, HWND target) {
    executorClient.targetWindow = target;
    ExecuteEntry(text);
}

void ExecuteFromHotkey(const std::wstring& text) {
    ExecuteInTarget(text, keyboardHook.target);
}

static void EditFromMenu(int position) {
    // Shown first: coming from the tray is what installs the hook anew.
    ShowMainWindow();
    SelectEntry(position);
    ShowWindow(mainWindow.window, SW_SHOWMAXIMIZED);
}

static void ExplainTakenWinKey() {
    MessageBoxW(mainWindow.window, LanguageText(text::kWinKeyMayNotArrive).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

void ShowPasteMenu() {
    const MenuOptions options = {settings.useMenuSort, settings.useIgnoreCase != 0,
                                 settings.useMenuOrder != 0};
    const MenuClient client = {ExecuteInTarget, DeliverText, EditFromMenu, ShowMainWindow,
                               ExplainTakenWinKey};
    ShowHotkeyMenu(keyboardHook.menuRequest, mainWindow.entries, options, settings.showMenuTooltip != 0,
                   client);
}

}  // namespace verbatix
