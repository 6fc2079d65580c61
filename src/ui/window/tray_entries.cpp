#include "ui/window/tray_entries.h"

#include <string>
#include <string_view>
#include <vector>

#include "hotkeys/foreground.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/integrity.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/press_log.h"
#include "ids.h"
#include "menu/menu_model.h"
#include "paste/executor.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/entry_uses.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

// Of the menu that is up, or was last: copies, the list may change under it.
std::vector<ListEntry> offered;

std::wstring Caption(const ListEntry& entry) {
    std::wstring caption = ShownLabel(*entry.label ? entry.label : entry.text, false);
    if (entry.keyCode & 0xff) caption += L'\t' + FormatHotkeyDisplay(entry.keyCode, entry.modifier);
    return caption;
}

bool CanBePastedInto(HWND window) {
    return IsWindowVisible(window) && IsWindowEnabled(window) && !IsIconic(window) &&
           !KeepsKeysFromUs(window);
}

}  // namespace

void AppendLastUsed(HMENU menu) {
    constexpr std::size_t kMost = 5;
    constexpr std::size_t kLookedAt = 20;
    offered.clear();
    for (const int position : LastUsed(mainWindow.entries, kLookedAt)) {
        const ListEntry& entry = mainWindow.entries.at(position).current;
        // Of characters to choose from, which needs a menu of its own.
        const bool isCharacterList = std::wstring_view(entry.text).starts_with(kCharacterListPrefix);
        if (isCharacterList || offered.size() == kMost) continue;
        const auto id = CMD_TRAY_ENTRY_FIRST + offered.size();
        offered.push_back(entry);
        AppendMenuW(menu, MF_STRING, id, Caption(offered.back()).c_str());
    }
    if (!offered.empty()) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
}

bool RunLastUsed(int command, HWND window) {
    const auto place = static_cast<std::size_t>(command - CMD_TRAY_ENTRY_FIRST);
    if (command < CMD_TRAY_ENTRY_FIRST || place >= offered.size()) return false;
    // An entry that shows a box or a dialog is still running.
    if (keyboardHook.trigger.busy) return true;
    const ListEntry entry = offered[place];
    NoteUse(entry.keyCode, entry.modifier, entry.text);
    const HookIsBusy busy;
    const bool isGone = window && !IsWindow(window);
    const bool isInFront = CanBePastedInto(window) && GiveForeground(window);
    executorClient.targetWindow = isInFront ? window : nullptr;
    // The icon's own window never comes to the front: what is aimed at it stays on the clipboard.
    executorClient.pressWindow = isInFront || isGone ? window : trayIcon.owner;
    ContinuePress(kNoPress);
    ExecuteEntry(entry.text);
    return true;
}

}  // namespace verbatix
