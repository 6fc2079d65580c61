#include "ui/window/paste_commands.h"

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "clipboard/clipboard_session.h"
#include "hotkeys/foreground.h"
#include "hotkeys/keyboard_hook.h"
#include "menu/menu_popup.h"
#include "paste/execution_time.h"
#include "paste/executor.h"
#include "store/settings.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"
#include "ui/views/entry_views.h"
#include "ui/window/showing.h"

namespace verbatix {

// A rename box or a find field closes when a menu takes its keyboard; then nothing is left to paste into,
// though the window around it is.
static HWND WindowToBeInFront(const HotkeyPress& press) {
    return IsWindow(press.target) ? press.foreground : press.target;
}

static void ExecuteInTarget(const std::wstring& text, const HotkeyPress& press) {
    executorClient.targetWindow = press.target;
    executorClient.pressWindow = WindowToBeInFront(press);
    ExecuteEntry(text);
}

static void DeliverIntoTarget(const std::wstring& text, const HotkeyPress& press) {
    DeliverInto(text, WindowToBeInFront(press));
}

void ExecuteFromHotkey(const std::wstring& text) {
    NoteUse(keyboardHook.press.key, keyboardHook.press.modifier, text);
    ExecuteInTarget(text, keyboardHook.press);
}

bool FitsInsideHook(const std::wstring& text, DWORD limit) {
    const bool isOurs = GetWindowThreadProcessId(GetForegroundWindow(), nullptr) == GetCurrentThreadId();
    const ExecutionFacts facts = {settings.restoreOldClipboard != 0, !IsClipboardAtHand(), isOurs};
    return FitsWell(EstimateExecution(text, facts), limit);
}

static void NoteUseOf(int position) {
    // The list may have been read anew under the menu.
    const auto found = mainWindow.entries.find(position);
    if (found == mainWindow.entries.end()) return;
    const ListEntry& entry = found->second.current;
    NoteUse(entry.keyCode, entry.modifier, entry.text);
}

static void EditFromMenu(int position) {
    // Shown first: coming from the tray is what installs the hook anew.
    ShowMainWindow();
    SelectEntry(position);
    ShowWindow(mainWindow.window, SW_SHOWMAXIMIZED);
}

static void ExplainTakenWinKey() {
    ShowBoxInFront(mainWindow.window, LanguageText(text::kWinKeyMayNotArrive), kProductName,
                   MB_OK | MB_ICONINFORMATION);
}

void ShowPasteMenu() {
    const auto request = std::exchange(keyboardHook.menuRequest, std::nullopt);
    if (!request) return;
    const MenuOptions options = {settings.useMenuSort, settings.useIgnoreCase != 0,
                                 settings.useMenuOrder != 0};
    const MenuClient client = {ExecuteInTarget, DeliverIntoTarget,  EditFromMenu,
                               ShowMainWindow,  ExplainTakenWinKey, NoteUseOf};
    ShowHotkeyMenu(*request, mainWindow.entries, options, settings.showMenuTooltip != 0, client);
}

}  // namespace verbatix
