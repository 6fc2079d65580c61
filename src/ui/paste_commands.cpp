#include "ui/paste_commands.h"

#include "base/language.h"
#include "base/product.h"
#include "hotkeys/keyboard_hook.h"
#include "menu/menu_popup.h"
#include "paste/executor.h"
#include "paste/expansion.h"
#include "store/settings.h"
#include "ui/list_view.h"
#include "ui/main_window.h"

namespace verbatix {

void ExecuteFromHotkey(const std::wstring& text) {
    executorClient.targetWindow = keyboardHook.target;
    ExecuteEntry(text);
}

// A hotkey pressed while a choice of the menu is carried out is swallowed, as it is while one of the hook's
// own executions runs.
static void ExecuteFromMenu(const std::wstring& text) {
    keyboardHook.trigger.busy = true;
    ExecuteFromHotkey(text);
    keyboardHook.trigger.busy = false;
}

static void DeliverFromMenu(const std::wstring& text) {
    keyboardHook.trigger.busy = true;
    DeliverText(text);
    keyboardHook.trigger.busy = false;
}

static void EditFromMenu(int position) {
    SelectEntry(position);
    ShowWindow(mainWindow.window, SW_SHOWMAXIMIZED);
    ShowMainWindow();
}

static void ExplainTakenWinKey() {
    constexpr int kWinKeyMayNotArrive = 1075;
    MessageBoxW(mainWindow.window, LanguageText(kWinKeyMayNotArrive).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
}

void ShowPasteMenu() {
    const MenuOptions options = {settings.useMenuSort, settings.useIgnoreCase != 0,
                                 settings.useMenuOrder != 0};
    const MenuClient client = {ExecuteFromMenu, DeliverFromMenu, EditFromMenu, ShowMainWindow,
                               ExplainTakenWinKey};
    ShowHotkeyMenu(keyboardHook.menuRequest, mainWindow.entries, options, settings.showMenuTooltip != 0,
                   client);
}

}  // namespace verbatix
