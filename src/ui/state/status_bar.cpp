#include "ui/state/status_bar.h"

#include <windows.h>

#include <commctrl.h>

#include "base/language.h"
#include "base/text.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"
#include "ui/state/notice.h"

namespace verbatix {

void UpdateStatusBar() {
    const std::wstring notice = ShownNotice();
    if (!notice.empty()) return TellInStatusBar(notice);
    SendMessageW(mainWindow.statusBar, SB_SIMPLE, FALSE, 0);
    const std::wstring total = std::to_wstring(mainWindow.entryCount);
    const std::wstring count = IsFiltered() ? FillIn(LanguageText(text::kShownCount),
                                                     {std::to_wstring(mainWindow.rows.size()), total})
                                            : FillIn(LanguageText(text::kEntryCount), {total});
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(count.c_str()));
    const std::wstring hook = HotkeyStateText();
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, 1, reinterpret_cast<LPARAM>(hook.c_str()));
}

void TellInStatusBar(const std::wstring& text) {
    SendMessageW(mainWindow.statusBar, SB_SIMPLE, TRUE, 0);
    SendMessageW(mainWindow.statusBar, SB_SETTEXTW, SB_SIMPLEID, reinterpret_cast<LPARAM>(text.c_str()));
}

}  // namespace verbatix
