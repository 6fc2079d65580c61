#include "ui/shell/about.h"

#include <windows.h>

#include "base/language.h"
#include "base/message_font.h"
#include "base/product.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "clipboard/clipboard_text.h"
#include "ids.h"
#include "store/settings_path.h"
#include "ui/shell/press_report.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Words {
    int control;
    int text;
};

constexpr Words kWords[] = {{IDC_ABOUT_FILE_CAPTION, text::kSettingsFileCaption},
                            {IDC_ABOUT_COPY, text::kCopyDetails},
                            {IDOK, text::kClose}};

void FillAbout(HWND dialog) {
    SetWindowTextW(dialog, LanguageText(text::kAboutTitle).c_str());
    for (const Words& row : kWords) SetDlgItemTextW(dialog, row.control, LanguageText(row.text).c_str());
    const std::wstring state =
        std::wstring(kProductName) + L' ' + kProductVersion + L"\r\n" + HotkeyStateText();
    SetDlgItemTextW(dialog, IDC_ABOUT_STATE, state.c_str());
    SetDlgItemTextW(dialog, IDC_ABOUT_FILE, settingsPath.c_str());
    DressWindow(dialog);
}

INT_PTR CALLBACK AboutProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) noexcept {
    switch (message) {
        case WM_INITDIALOG: return FillAbout(dialog), TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_ABOUT_COPY) {
                const bool copied = ClipboardPutText(ProgramReport());
                SetDlgItemTextW(dialog, IDC_ABOUT_COPY,
                                LanguageText(copied ? text::kDetailsCopied : text::kClipboardBusy).c_str());
            }
            if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) EndDialog(dialog, IDOK);
            return TRUE;
        default: return FALSE;
    }
}

}  // namespace

void ShowAbout() {
    RunDialog(IDD_ABOUT, mainWindow.window, AboutProcedure, 0);
}

}  // namespace verbatix
