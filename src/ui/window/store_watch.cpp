#include "ui/window/store_watch.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <string>
#include <utility>

#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "store/list_file.h"
#include "store/list_hotkeys.h"
#include "store/list_restore.h"
#include "store/paused_programs.h"
#include "store/settings.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"
#include "ui/editor/editor.h"
#include "ui/editor/word_completion.h"
#include "ui/look/dark_theme.h"
#include "ui/look/view_look.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"
#include "ui/state/notice.h"
#include "ui/state/program_client.h"
#include "ui/state/status_bar.h"
#include "ui/views/entry_views.h"
#include "ui/views/list_view.h"
#include "ui/window/menu_bar.h"
#include "ui/window/showing.h"

namespace verbatix {

namespace {

// The lists that other programs had put into the file; the latest one is offered first.
std::wstring keptList;

// What Windows says about an error, on one line.
std::wstring ErrorText(DWORD error) {
    std::wstring text(512, L'\0');
    text.resize(FormatMessageW(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
        error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr));
    return text.empty() ? std::to_wstring(error) : std::wstring(TrimSpace(text));
}

void ShowList() {
    ForgetActions();
    RebuildHotkeyTables();
    RefreshViews(false);
    SelectFirstEntry();
    ShowInEditor(SelectedEntry());
    OnListRead();
}

// What was read before the file could be, or of another content, in the places where it is used.
void TakeSettingsOver() {
    const HWND window = mainWindow.window;
    keyboardHook.disabled = LoadDisabledHotkeys();
    keyboardHook.pausedPrograms = LoadPausedPrograms();
    StartWordCompletion();
    ApplyTopmost();
    ApplyViewLook(window);
    ApplyTheme();
    ShowChosenView();
    RefreshMenuChecks(mainWindow.menuBar);
    const bool isOther = programClient.activeLanguage && programClient.useLanguage &&
                         programClient.activeLanguage() != settings.language;
    if (isOther && programClient.useLanguage(settings.language))
        SendMessageW(window, WM_LANGUAGE_CHANGED, 0, 0);
}

void OfferKept() {
    if (!SaveEdits(Warn::kAlways)) return;
    TakeNoticeDown(Notice::kOtherList);
    if (OfferKeptList(mainWindow.entries, mainWindow.listClient, keptList)) ShowList();
    UpdateStatusBar();
}

void OnWritten() {
    if (!TakeNoticeDown(Notice::kNotSaved)) return;
    if (mainWindow.statusBar) UpdateStatusBar();
    // It may have been an option alone: entries that could not be written before can be now.
    PostMessageW(mainWindow.window, WM_COMMAND, CMD_SAVE_REST, 0);
}

void OnNotWritten(DWORD error) {
    PutNotice(Notice::kNotSaved,
              FillIn(LanguageText(text::kNotSaved), {ErrorText(error), FileNameOf(settingsPath)}));
    if (mainWindow.statusBar) UpdateStatusBar();
}

void OnOtherListKept(const std::wstring& copy) {
    keptList = copy;
    PutNotice(Notice::kOtherList, FillIn(LanguageText(text::kOtherListKept), {FileNameOf(settingsPath)}),
              {text::kOtherListHelp, OfferKept});
}

void Tell(int text, UINT icon) {
    MessageBoxW(mainWindow.window, FillIn(LanguageText(text), {settingsPath}).c_str(), kProductName,
                MB_OK | icon);
}

}  // namespace

void WatchStore() {
    storeNotices = {OnWritten, OnNotWritten, OnOtherListKept};
}

void OnListRead() {
    constexpr UINT kRetryMilliseconds = 1000;
    if (IsListUnread()) {
        PutNotice(Notice::kListUnread, FillIn(LanguageText(text::kListUnread), {FileNameOf(settingsPath)}));
        SetTimer(mainWindow.window, TIMER_LIST_RETRY, kRetryMilliseconds, nullptr);
    } else {
        TakeNoticeDown(Notice::kListUnread);
        KillTimer(mainWindow.window, TIMER_LIST_RETRY);
    }
    if (MisreadLines() > 0) {
        PutNotice(Notice::kMisreadLines,
                  FillIn(LanguageText(text::kMisreadLines),
                         {std::to_wstring(MisreadLines()), FileNameOf(settingsPath)}),
                  {text::kMisreadHelp, OpenSettingsFile});
    } else {
        TakeNoticeDown(Notice::kMisreadLines);
    }
    UpdateStatusBar();
}

void OnListRetryTimer() {
    // Positions change: not under a menu, a drag, a question or a rename. What is being typed goes into the
    // list first; not while that cannot take it. The timer comes again.
    const UINT nameEditor = ShownView() == mainWindow.tree ? TVM_GETEDITCONTROL : LVM_GETEDITCONTROL;
    const bool isInUse = mainWindow.listCommandsBlocked || !IsWindowEnabled(mainWindow.window) ||
                         SendMessageW(ShownView(), nameEditor, 0, 0) != 0;
    if (isInUse || !TakeEditsOver(Warn::kNever)) return;
    if (!LoadUnreadList(mainWindow.entries, mainWindow.listClient)) return;
    LoadSettings(SettingGroup::kStart);
    LoadSettings();
    TakeSettingsOver();
    ShowList();
    PostMessageW(mainWindow.window, WM_COMMAND, CMD_LIST_DAMAGE, 0);
}

void AskAboutFoundDamage() {
    if (!AskAboutDamage(mainWindow.entries, mainWindow.listClient)) return;
    TakeSettingsOver();
    ShowList();
}

void OpenSettingsFile() {
    SaveAll(Warn::kNever);
    // Opened for writing once: that tells a file that is there from one that is not, and an editor is not
    // started on nothing.
    UniqueFile check(CreateFileW(settingsPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                 OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = check ? ERROR_SUCCESS : GetLastError();
    check.Reset();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)
        return Tell(text::kNoSettingsFile, MB_ICONWARNING);
    const bool isProtected = (GetFileAttributesW(settingsPath.c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
    if (isProtected || error == ERROR_ACCESS_DENIED) Tell(text::kWriteProtected, MB_ICONINFORMATION);
    ShellExecuteW(mainWindow.window, L"open", settingsPath.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace verbatix
