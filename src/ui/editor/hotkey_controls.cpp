#include "ui/editor/hotkey_controls.h"

#include <string>
#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/key_decision.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/keyboard_layout.h"
#include "ids.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/hotkey_field.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct HotkeyControls {
    HotkeyControlsClient client = {};
    bool hasEntry = false;
    unsigned key = 0;        // as the record holds it, and
    std::wstring keyName;    // its name in the field; another one there is still being typed
    bool chooses = false;    // one of the controls has the keyboard
    std::wstring refusal;    // why what was pressed last is no hotkey
    bool isFilling = false;  // by the program; what the controls tell then is none of the user's doing
};

HotkeyControls controls;

// In the field that takes keys as they are pressed, what the two drop-downs say.
void ShowChosenHotkey() {
    const HWND field = DialogControl(IDC_HOTKEY);
    if (!controls.hasEntry) return ShowHotkeyInField(field, {});
    const unsigned key = ChosenKey().value_or(controls.key);
    ShowHotkeyInField(field, FormatHotkeyForReading(key, ChosenModifier(), KeyLabel(key)));
}

// The hotkey's key is that one now, whatever was being typed.
void ShowKey(unsigned key) {
    const bool wasFilling = std::exchange(controls.isFilling, true);
    controls.key = key;
    controls.keyName = FormatKeyName(key);
    if (FieldText(IDC_KEY) != controls.keyName)
        SetWindowTextW(DialogControl(IDC_KEY), controls.keyName.c_str());
    controls.isFilling = wasFilling;
    ShowChosenHotkey();
}

void ChooseHotkey(bool chooses) {
    controls.chooses = chooses;
    controls.refusal.clear();
    controls.client.verdictChanged();
}

void ShowChange() {
    controls.refusal.clear();
    ShowChosenHotkey();
    controls.client.verdictChanged();
}

void OnKeyField(int code) {
    switch (code) {
        case CBN_SETFOCUS: ChooseHotkey(true); break;
        case CBN_SELCHANGE:
            ShowChosenKey(DialogControl(IDC_KEY));
            controls.client.changed();
            ShowChange();
            break;
        case CBN_EDITCHANGE:
            if (controls.isFilling) break;
            controls.client.edited();
            ShowChange();
            break;
        case CBN_KILLFOCUS:
            // What is no key gives way to the one that the entry has.
            ShowKey(ChosenKey().value_or(controls.key));
            ChooseHotkey(false);
            controls.client.settled();
            break;
        default: break;
    }
}

void OnModifierField(int code) {
    if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS) ChooseHotkey(code == CBN_SETFOCUS);
    if (code != CBN_SELCHANGE) return;
    controls.client.changed();
    ShowChange();
}

void SetHotkey(unsigned key, unsigned modifier) {
    SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    ShowKey(RecordKey(key));
    controls.client.changed();
    ShowChange();
}

bool TakePressed(const PressedKeys& pressed) {
    if (!controls.hasEntry) return false;
    const std::wstring refusal = WhyNoHotkey(pressed.key, pressed.held, KeyLabel(pressed.key));
    if (refusal.empty()) SetHotkey(pressed.key, static_cast<unsigned>(ModifierCodeOf(pressed.held)));
    controls.refusal = refusal;
    controls.client.verdictChanged();
    return refusal.empty();
}

void ClearHotkey() {
    SetHotkey(0, ChosenModifier());
}

}  // namespace

void FillWithModifiers(HWND box) {
    for (unsigned code = 0; code < kModifierCount; ++code) {
        std::wstring name;
        AppendModifierDisplayName(code, name);
        SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
}

void FillWithKeys(HWND box) {
    for (const std::wstring& name : OfferedKeyNames())
        SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

void ShowChosenKey(HWND box) {
    const LRESULT chosen = SendMessageW(box, CB_GETCURSEL, 0, 0);
    wchar_t name[64] = {};
    if (chosen < 0 || SendMessageW(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(chosen), 0) > 60) return;
    SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(chosen), reinterpret_cast<LPARAM>(name));
    SetWindowTextW(box, name);
}

// Asked anew only for another hotkey, and when one is being chosen: typing a text changes nothing here.
// What the settings file says costs nothing, and another program may change it.
const KeyFacts& FactsOfHotkey(unsigned key, unsigned modifier) {
    static KeyFacts facts;
    static std::pair<unsigned, unsigned> known = {0U, 0U};
    if (controls.chooses || known != std::pair(key, modifier)) {
        known = {key, modifier};
        facts = {KeyLabel(key)};
        if (modifier == kModifierCtrlAlt || modifier == kModifierAltGr) facts.typed = TypedWithCtrlAlt(key);
        const bool withWin = modifier == kModifierLeftWin || modifier == kModifierRightWin;
        facts.isTaken = withWin && key != 0 && IsWinHotkeyTaken(mainWindow.window, key, false);
    }
    facts.isOff = IsHotkeyDisabled(keyboardHook.disabled, modifier, key & 0xff);
    return facts;
}

void SetUpHotkeyControls(HWND dialog, const HotkeyControlsClient& client) {
    controls.client = client;
    SetHotkeyFieldClient(GetDlgItem(dialog, IDC_HOTKEY), {TakePressed, ClearHotkey, ChooseHotkey});
    FillWithKeys(GetDlgItem(dialog, IDC_KEY));
}

void RelabelHotkeyControls() {
    const HWND modifiers = DialogControl(IDC_MODIFIER);
    const LRESULT chosen = SendMessageW(modifiers, CB_GETCURSEL, 0, 0);
    SendMessageW(modifiers, CB_RESETCONTENT, 0, 0);
    FillWithModifiers(modifiers);
    SendMessageW(modifiers, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    ShowChosenHotkey();
    RelabelHotkeyField(DialogControl(IDC_HOTKEY));
}

static void Show(bool hasEntry, unsigned key, WPARAM modifier) {
    controls.hasEntry = hasEntry;
    controls.refusal.clear();
    SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    ShowKey(key);
}

void ShowHotkey(unsigned key, unsigned modifier) {
    Show(true, key, modifier < kModifierCount ? modifier : 0U);
}

void ShowNoHotkey() {
    Show(false, 0, static_cast<WPARAM>(-1));
}

std::optional<unsigned> ChosenKey() {
    const std::wstring input = FieldText(IDC_KEY);
    if (input == controls.keyName) return controls.key;
    const std::optional<unsigned> key = KeyFromInput(input);
    return key && *key && !IsOnKeyboard(*key) ? std::nullopt : key;
}

unsigned ChosenModifier() {
    const LRESULT chosen = SendMessageW(DialogControl(IDC_MODIFIER), CB_GETCURSEL, 0, 0);
    return chosen < 0 ? 0U : static_cast<unsigned>(chosen);
}

bool ChoosesHotkey() {
    return controls.chooses;
}

HotkeyVerdict VerdictOnHotkey(const EntryList& list, int position) {
    if (!controls.hasEntry) return {};
    if (!controls.refusal.empty()) return {.text = controls.refusal};
    const std::optional<unsigned> key = ChosenKey();
    if (!key) return {.text = FillIn(LanguageText(text::kNotAKey), {FieldText(IDC_KEY)})};
    const unsigned modifier = ChosenModifier();
    return JudgeHotkey(list, position, *key, modifier, FactsOfHotkey(*key, modifier), controls.chooses);
}

bool OnHotkeyNotification(int control, int code) {
    switch (control) {
        case IDC_MODIFIER: return OnModifierField(code), true;
        case IDC_KEY: return OnKeyField(code), true;
        default: return false;
    }
}

}  // namespace verbatix
