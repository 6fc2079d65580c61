#include "ui/shell/language_menu.h"

#include "base/handle.h"
#include "base/text.h"
#include "ids.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "ui/editor/editor.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"

namespace verbatix {

static constexpr int kMostLanguages = CMD_LANGUAGE_LAST - CMD_LANGUAGE_FIRST + 1;

void AppendLanguages(HMENU menu) {
    if (!programClient.languageNames || !programClient.activeLanguage) return;
    for (const auto& [number, name] : programClient.languageNames()) {
        if (number < 0 || number >= kMostLanguages) continue;
        // A language of a user's file may have no name, and a name is no place for an access key.
        std::wstring caption = name.empty() ? Format(L"%d", number) : name;
        ReplaceAll(caption, L"&", L"&&");
        const auto command = static_cast<UINT>(CMD_LANGUAGE_FIRST + number);
        AppendMenuW(menu, MF_STRING, command, caption.c_str());
        if (number == programClient.activeLanguage()) {
            CheckMenuRadioItem(menu, command, command, command, MF_BYCOMMAND);
        }
    }
}

void ShowLanguageMenu() {
    const UniqueMenu menu(CreatePopupMenu());
    AppendLanguages(menu.Get());
    POINT mouse = {};
    GetCursorPos(&mouse);
    SetForegroundWindow(mainWindow.window);
    const int chosen =
        TrackPopupMenu(menu.Get(), TPM_RETURNCMD, mouse.x, mouse.y, 0, mainWindow.window, nullptr);
    PostMessageW(mainWindow.window, WM_NULL, 0, 0);
    RunLanguageCommand(chosen);
}

bool RunLanguageCommand(int command) {
    if (command < CMD_LANGUAGE_FIRST || command > CMD_LANGUAGE_LAST || !programClient.useLanguage)
        return false;
    const int number = command - CMD_LANGUAGE_FIRST;
    if (!programClient.languageNames().contains(number)) return true;
    if (!programClient.useLanguage(number)) return SaveEdits(Warn::kNever), true;
    {
        const SettingsBatch together;
        ChangeSetting(&Settings::language, number);
        SaveEdits(Warn::kNever);
    }
    SendMessageW(mainWindow.window, WM_LANGUAGE_CHANGED, 0, 0);
    return true;
}

}  // namespace verbatix
