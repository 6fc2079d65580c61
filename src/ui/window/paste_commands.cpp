#include "ui/window/paste_commands.h"

#include "base/language.h"
#include "base/product.h"
#include "clipboard/clipboard_session.h"
#include "hotkeys/keyboard_hook.h"
#include "menu/menu_popup.h"
#include "paste/execution_time.h"
#include "paste/executor.h"
#include "store/settings.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"

namespace verbatix {

static void ExecuteInTarget(const std::wstring& text, HWND target) {
    executorClient.targetWindow = target;
    ExecuteEntry(text);
}

void ExecuteFromHotkey(const std::wstring& text) {
    ExecuteInTarget(text, keyboardHook.press.target);
}

bool FitsInsideHook(const std::wstring& text, DWORD limit) {
    const ExecutionFacts facts = {settings.restoreOldClipboard != 0, !ClipboardSession()};
    return FitsWell(EstimateExecution(text, facts), limit);
}

static void EditFromMenu(int position) {
    // Shown first: coming from the tray is what installs the hook anew.
    ShowMainWindow();
    SelectEntry(position);
    ShowWindow(mainWindow.window, SW_SHOWMAXIMIZED);
}

static void ExplainTakenWinKey() {
    constexpr int kWinKeyMayNotArrive = 1075;
    MessageBoxW(mainWindow.window, LanguageText(kWinKeyMayNotArrive).c_str(), kProductName,
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
