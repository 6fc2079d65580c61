#include "ui/entries/ask_hotkey.h"

#include <windows.h>

#include <utility>

#include "base/language.h"
#include "base/message_font.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/key_decision.h"
#include "hotkeys/keyboard_layout.h"
#include "ids.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/hotkey_controls.h"
#include "ui/editor/hotkey_field.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Question {
    HWND dialog = nullptr;
    std::wstring subject;
    AskedHotkey now;
    int position = -1;
    AskedHotkey asked;  // the last one that was one
    bool isKey = true;  // the name in the drop-down
};

Question question;

HWND Control(int id) {
    return GetDlgItem(question.dialog, id);
}

std::wstring TypedKey() {
    wchar_t name[64] = {};
    GetWindowTextW(Control(IDC_ASKED_KEY), name, 64);
    return name;
}

void Say(const std::wstring& advice) {
    SetWindowTextW(Control(IDC_ASKED_ADVICE), advice.c_str());
}

// What the field shows and what there is to say of it.
void ShowAsked() {
    const AskedHotkey& asked = question.asked;
    ShowHotkeyInField(Control(IDC_ASKED_HOTKEY),
                      FormatHotkeyForReading(asked.key, asked.modifier, KeyLabel(asked.key)));
    EnableWindow(Control(IDOK), question.isKey);
    if (!question.isKey) return Say(FillIn(LanguageText(text::kNotAKey), {TypedKey()}));
    // They share it with each other already.
    if (asked == question.now) return Say({});
    const KeyFacts facts = FactsOfHotkey(asked.key, asked.modifier);
    Say(JudgeHotkey(mainWindow.entries, question.position, asked.key, asked.modifier, facts, true).text);
}

void ShowInDropDowns() {
    SendMessageW(Control(IDC_ASKED_MODIFIER), CB_SETCURSEL, question.asked.modifier, 0);
    SetWindowTextW(Control(IDC_ASKED_KEY), FormatKeyName(question.asked.key).c_str());
    question.isKey = true;
}

bool TakePressed(const PressedKeys& pressed) {
    const std::wstring refusal = WhyNoHotkey(pressed.key, pressed.held, KeyLabel(pressed.key));
    if (!refusal.empty()) return Say(refusal), false;
    question.asked = {RecordKey(pressed.key), static_cast<unsigned>(ModifierCodeOf(pressed.held))};
    ShowInDropDowns();
    ShowAsked();
    return true;
}

void ClearKey() {
    question.asked.key = 0;
    ShowInDropDowns();
    ShowAsked();
}

void OnChosen(int control, int code) {
    if (control == IDC_ASKED_MODIFIER && code == CBN_SELCHANGE) {
        const LRESULT chosen = SendMessageW(Control(control), CB_GETCURSEL, 0, 0);
        if (chosen >= 0) question.asked.modifier = static_cast<unsigned>(chosen);
        return ShowAsked();
    }
    if (control != IDC_ASKED_KEY || (code != CBN_SELCHANGE && code != CBN_EDITCHANGE)) return;
    if (code == CBN_SELCHANGE) ShowChosenKey(Control(control));
    const std::optional<unsigned> key = KeyFromInput(TypedKey());
    question.isKey = key.has_value();
    if (key) question.asked.key = *key;
    ShowAsked();
}

void SetUp(HWND dialog) {
    question.dialog = dialog;
    DressWindow(dialog);
    SetWindowTextW(dialog, LanguageText(text::kAskHotkey).c_str());
    SetDlgItemTextW(dialog, IDC_ASKED_HOTKEY_CAPTION,
                    FillIn(LanguageText(text::kAskHotkeyText), {question.subject}).c_str());
    const std::pair<int, int> captions[] = {
        {IDOK, text::kOk},
        {IDCANCEL, text::kCancel},
        // Unseen: by them a screen reader tells what the drop-downs are.
        {IDC_ASKED_MODIFIER_CAPTION, text::kModifierCaption},
        {IDC_ASKED_KEY_CAPTION, text::kKeyCaption},
    };
    for (const auto& [control, caption] : captions)
        SetDlgItemTextW(dialog, control, LanguageText(caption).c_str());
    FillWithModifiers(Control(IDC_ASKED_MODIFIER));
    FillWithKeys(Control(IDC_ASKED_KEY));
    SetHotkeyFieldClient(Control(IDC_ASKED_HOTKEY), {TakePressed, ClearKey, nullptr});
    ShowInDropDowns();
    ShowAsked();
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM) noexcept {
    const int control = LOWORD(wParam);
    switch (message) {
        case WM_INITDIALOG: return SetUp(dialog), TRUE;
        case WM_COMMAND:
            if (control != IDOK && control != IDCANCEL) return OnChosen(control, HIWORD(wParam)), TRUE;
            if (control == IDCANCEL || question.isKey) EndDialog(dialog, control);
            return TRUE;
        default: return FALSE;
    }
}

}  // namespace

std::optional<AskedHotkey> AskHotkey(const std::wstring& subject, const AskedHotkey& now, int position) {
    question = {nullptr, subject, now, position, now};
    const bool isAnswered = RunDialog(IDD_HOTKEY, mainWindow.window, Procedure, 0) == IDOK;
    const AskedHotkey asked = std::exchange(question, {}).asked;
    return isAnswered && asked != now ? std::optional(asked) : std::nullopt;
}

}  // namespace verbatix
