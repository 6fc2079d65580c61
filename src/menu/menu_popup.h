// The popup menu of the entries that share a hotkey, from the request of the keyboard hook until the chosen
// row has been carried out. Main thread only; there is one menu at a time. What is chosen goes to the
// window that had the keyboard when the hotkey was pressed: it is in front again before anything is
// executed.
#pragma once

#include <windows.h>

#include <string>

#include "hotkeys/keyboard_hook.h"
#include "menu/menu_model.h"
#include "store/entry.h"

namespace verbatix {

// What the menu needs from above; a null member does nothing.
struct MenuClient {
    // `press` is the request, whose windows may be gone by now or may not have come back to the front.
    void (*executeEntry)(const std::wstring& text, const HotkeyPress& press) = nullptr;
    // Onto the clipboard, and the paste stroke.
    void (*deliverText)(const std::wstring& text, const HotkeyPress& press) = nullptr;
    void (*editEntry)(int position) = nullptr;  // shows the main window maximised, that entry selected
    void (*showMainWindow)() = nullptr;
    void (*explainTakenWinKey)() = nullptr;
    void (*noteUse)(int position) = nullptr;  // before the entry there, or a piece of it, is carried out
};

// Shows the menu of the request's hotkey and carries the choice out; returns when that is done. Messages of
// the thread are dispatched while the menu is open. Called again meanwhile it closes the open menu, which
// is then replaced only where the hotkey is another one; while a choice is carried out, or
// the hook executes an entry, it does nothing.
// More than kMaximumMenuRows rows are refused with a message. With `showTooltips` the text of the
// highlighted row stands beside it.
//
// The list may change while the menu is open: a row whose entry is gone does nothing. Where Windows does
// not let the menu have the keyboard, it does not open, and a notice says so: no key and no click elsewhere
// would close it.
void ShowHotkeyMenu(const HotkeyPress& request, const EntryList& list, const MenuOptions& options,
                    bool showTooltips, const MenuClient& client);

// Closes an open menu without a choice. To be called before the list goes.
void CloseHotkeyMenu();

}  // namespace verbatix
