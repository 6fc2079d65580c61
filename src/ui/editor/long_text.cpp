#include "ui/editor/long_text.h"

#include <windows.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "base/language.h"
#include "base/message_font.h"
#include "base/product.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "ids.h"
#include "store/backup.h"
#include "store/entry.h"
#include "store/list_exchange.h"
#include "store/settings_path.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Choice {
    int button;
    int text;
    LongText answer;
};

constexpr Choice kChoices[] = {
    {IDCANCEL, text::kBackToText, LongText::kGoBack},
    {IDC_CUT_OFF, text::kCutOff, LongText::kCutOff},
    {IDC_KEEP_IN_FILE, text::kKeepTextInFile, LongText::kKeepInFile},
    {IDC_DISCARD, text::kDiscardText, LongText::kDiscard},
};

void FillQuestion(HWND dialog, std::size_t tooMany) {
    DressWindow(dialog);
    SetWindowTextW(dialog, kProductName);
    SendDlgItemMessageW(dialog, IDC_WARNING, STM_SETICON,
                        reinterpret_cast<WPARAM>(LoadIconW(nullptr, IDI_WARNING)), 0);
    const std::wstring question = LanguageText(text::kTextTooLong) + L": " +
                                  std::to_wstring(kEditorTextLimit) + L"\n\n" +
                                  FillIn(LanguageText(text::kWhatOfLongText), {std::to_wstring(tooMany)});
    SetDlgItemTextW(dialog, IDC_STATIC_TEXT, question.c_str());
    for (const Choice& choice : kChoices) {
        SetDlgItemTextW(dialog, choice.button, LanguageText(choice.text).c_str());
    }
}

INT_PTR CALLBACK QuestionProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) return FillQuestion(dialog, static_cast<std::size_t>(lParam)), TRUE;
    if (message != WM_COMMAND) return FALSE;
    const int button = LOWORD(wParam);
    const bool isChoice = std::any_of(std::begin(kChoices), std::end(kChoices),
                                      [=](const Choice& choice) { return choice.button == button; });
    return isChoice && EndDialog(dialog, button);
}

}  // namespace

LongText AskAboutLongText(std::size_t tooMany) {
    const INT_PTR button =
        RunDialog(IDD_LONG_TEXT, mainWindow.window, QuestionProcedure, static_cast<LPARAM>(tooMany));
    for (const Choice& choice : kChoices) {
        if (choice.button == button) return choice.answer;
    }
    return LongText::kGoBack;
}

std::wstring CutToLimit(std::wstring_view editorText) {
    std::size_t length = std::min(editorText.size(), kEditorTextLimit);
    if (length == editorText.size() || length == 0) return std::wstring(editorText);
    const bool isHalf = IS_SURROGATE_PAIR(editorText[length - 1], editorText[length]) ||
                        (editorText[length - 1] == L'\r' && editorText[length] == L'\n');
    if (isHalf) --length;
    return std::wstring(editorText.substr(0, length));
}

std::wstring KeepTextInFile(const std::wstring& text, KeepPlace place) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const std::wstring name = L"\\" + BackupFileName(now) + L"_unsaved.txt";
    PrepareBackupFolder();
    std::wstring folders[] = {backupFolder, settingsPath.substr(0, settingsPath.rfind(L'\\'))};
    if (place == KeepPlace::kBesideSettings) std::swap(folders[0], folders[1]);
    for (const std::wstring& folder : folders) {
        if (!folder.empty() && WriteExportFile(folder + name, text)) return folder + name;
    }
    return {};
}

}  // namespace verbatix
