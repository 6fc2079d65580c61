#include "ui/editor/editor.h"

#include <commctrl.h>

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/key_decision.h"
#include "hotkeys/keyboard_layout.h"
#include "ids.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/path_breaks.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/hotkey_field.h"
#include "ui/editor/hotkey_verdict.h"
#include "ui/editor/word_completion.h"
#include "ui/look/link_line.h"
#include "ui/state/keep_entries.h"
#include "ui/state/main_window.h"

namespace verbatix {

Editor editor;

namespace {

struct Caption {
    int control;
    int text;
};

constexpr Caption kCaptions[] = {
    {IDC_FILTER_CAPTION, text::kFilterCaption},
    {IDC_LIST_CAPTION, text::kEntriesCaption},
    {IDC_TREE_CAPTION, text::kEntriesCaption},
    {IDC_LABEL_CAPTION, text::kLabelCaption},
    {IDC_HOTKEY_CAPTION, text::kHotkeyFieldCaption},
    {IDC_MODIFIER_CAPTION, text::kModifierCaption},
    {IDC_KEY_CAPTION, text::kKeyCaption},
    {IDC_TEXT_CAPTION, text::kTextCaption},
    {CMD_NEW_ENTRY, text::kNew},
    {CMD_COPY_ENTRY, text::kCopy},
    {CMD_DELETE_ENTRY, text::kDelete},
    {CMD_TEST_ENTRY, text::kTest},
    {IDC_INSERT, text::kInsert},
    {IDC_KEEP_PATHS, text::kKeepPath},
};

// What works only with an entry.
constexpr int kEntryControls[] = {IDC_LABEL,      IDC_HOTKEY,       IDC_MODIFIER,   IDC_KEY,   IDC_TEXT,
                                  CMD_COPY_ENTRY, CMD_DELETE_ENTRY, CMD_TEST_ENTRY, IDC_INSERT};

void SetFieldText(int control, const std::wstring& text) {
    SetWindowTextW(DialogControl(control), text.c_str());
}

unsigned ChosenModifier() {
    const LRESULT chosen = SendMessageW(DialogControl(IDC_MODIFIER), CB_GETCURSEL, 0, 0);
    return chosen < 0 ? 0U : static_cast<unsigned>(chosen);
}

void ShowCounter() {
    std::wstring counter;
    if (editor.position >= 0) {
        counter = Format(L"%ls (%d/4000)", LanguageText(text::kCounter).c_str(),
                         GetWindowTextLengthW(DialogControl(IDC_TEXT)));
    }
    SetFieldText(IDC_COUNTER, counter);
}

// What becomes of a path in the text that a backslash-n takes apart: only the entries that run line by line
// take that for a line break, the others run, but show one. 0 where there is none.
int PathAdvice() {
    const std::optional<std::wstring> stored = StoredFromEditorText(FieldText(IDC_TEXT));
    if (editor.position < 0 || !stored || PathBreaks(*stored).empty()) return 0;
    const bool fallsApart = ParseCommand(*stored).kind == CommandKind::RunLines;
    return fallsApart ? text::kPathBreaks : text::kPathShownBroken;
}

// The key in the field; nothing while a name stands there that no key has, or none of this keyboard.
std::optional<unsigned> ChosenKey() {
    const std::wstring input = FieldText(IDC_KEY);
    if (input == editor.keyName) return editor.key;
    const std::optional<unsigned> key = KeyFromInput(input);
    return key && *key && !IsOnKeyboard(*key) ? std::nullopt : key;
}

// Asked anew only for another hotkey, and when one is being chosen: typing a text changes nothing here.
const KeyFacts& FactsOf(unsigned key, unsigned modifier) {
    static KeyFacts facts;
    static std::pair<unsigned, unsigned> known = {0U, 0U};
    if (!editor.choosesHotkey && known == std::pair(key, modifier)) return facts;
    known = {key, modifier};
    facts = {KeyLabel(key)};
    if (modifier == kModifierCtrlAlt || modifier == kModifierAltGr) facts.typed = TypedWithCtrlAlt(key);
    const bool withWin = modifier == kModifierLeftWin || modifier == kModifierRightWin;
    facts.isTaken = withWin && key != 0 && IsWinHotkeyTaken(mainWindow.window, key, false);
    return facts;
}

HotkeyVerdict VerdictOnHotkey() {
    const std::optional<unsigned> key = ChosenKey();
    if (editor.position < 0) return {};
    if (!editor.refusal.empty()) return {editor.refusal};
    if (!key) return {FillIn(LanguageText(text::kNotAKey), {FieldText(IDC_KEY)})};
    return JudgeHotkey(mainWindow.entries, editor.position, *key, ChosenModifier(),
                       FactsOf(*key, ChosenModifier()), editor.choosesHotkey);
}

// What the user should know of the entry: a path that falls apart first, it will not run; but while he
// chooses a hotkey, of that.
void ShowAdvice() {
    const int pathAdvice = PathAdvice();
    HotkeyVerdict verdict = VerdictOnHotkey();
    if (pathAdvice && (!editor.choosesHotkey || verdict.text.empty())) verdict = {LanguageText(pathAdvice)};
    editor.sharer = verdict.other;
    SetLinkLine(DialogControl(IDC_CLASH), verdict.text, verdict.linkStart, verdict.linkLength);
    const HWND button = DialogControl(IDC_KEEP_PATHS);
    const bool isOffered = (GetWindowLongPtrW(button, GWL_STYLE) & WS_VISIBLE) != 0;
    if ((pathAdvice != 0) == isOffered) return;
    if (GetFocus() == button) SetFocus(DialogControl(IDC_TEXT));
    ShowWindow(button, pathAdvice ? SW_SHOW : SW_HIDE);
    // Sizes the two that share the line.
    SendMessageW(mainWindow.window, WM_SIZE, 0, 0);
}

// In the field that takes keys as they are pressed, what the two drop-downs say.
void ShowChosenHotkey() {
    if (editor.position < 0) return ShowHotkeyInField({});
    const unsigned key = ChosenKey().value_or(editor.key);
    ShowHotkeyInField(FormatHotkeyForReading(key, ChosenModifier(), KeyLabel(key)));
}

// The hotkey's key is that one now, whatever was being typed.
void ShowKey(unsigned key) {
    const bool wasFilling = std::exchange(editor.filling, true);
    editor.key = key;
    editor.keyName = FormatKeyName(key);
    if (FieldText(IDC_KEY) != editor.keyName) SetFieldText(IDC_KEY, editor.keyName);
    editor.filling = wasFilling;
    ShowChosenHotkey();
}

// One change, which Ctrl+Z takes back.
void KeepPathsOfText() {
    const std::optional<std::wstring> stored = StoredFromEditorText(FieldText(IDC_TEXT));
    if (!stored) return;
    const HWND field = DialogControl(IDC_TEXT);
    SendMessageW(field, EM_SETSEL, 0, -1);
    SendMessageW(field, EM_REPLACESEL, TRUE,
                 reinterpret_cast<LPARAM>(EditorFromStoredText(KeepPaths(*stored)).c_str()));
    SetFocus(field);
}

void EnableEntryControls(bool enable) {
    // A disabled control with the focus would leave the keyboard nowhere.
    const HWND focus = GetFocus();
    for (const int control : kEntryControls) {
        if (!enable && focus &&
            (focus == DialogControl(control) || GetParent(focus) == DialogControl(control))) {
            SetFocus(ShownView());
        }
        EnableWindow(DialogControl(control), enable);
    }
}

void FillFields(const ListEntry& entry) {
    editor.filling = true;
    SetFieldText(IDC_TEXT, EditorFromStoredText(entry.text));
    SetFieldText(IDC_LABEL, entry.label);
    const unsigned modifier = entry.modifier < kModifierCount ? entry.modifier : 0U;
    SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    ShowKey(entry.keyCode);
    editor.filling = false;
}

// Several notifications of one click may ask for it while the box is up.
void WarnOfLongText() {
    static bool isShown = false;
    editor.warned = true;
    if (std::exchange(isShown, true)) return;
    MessageBoxW(mainWindow.window, (LanguageText(text::kTextTooLong) + L": 4000").c_str(), kProductName,
                MB_OK | MB_ICONWARNING);
    isShown = false;
}

void Changed() {
    if (editor.filling || editor.position < 0) return;
    editor.edited = true;
    constexpr UINT kUpdateMilliseconds = 200;
    SetTimer(mainWindow.window, TIMER_EDITOR_UPDATE, kUpdateMilliseconds, nullptr);
}

// A combo box tells of the choice before it shows it.
void ShowChosenKey() {
    const HWND box = DialogControl(IDC_KEY);
    const LRESULT chosen = SendMessageW(box, CB_GETCURSEL, 0, 0);
    wchar_t name[64] = {};
    if (chosen < 0 || SendMessageW(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(chosen), 0) > 60) return;
    SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(chosen), reinterpret_cast<LPARAM>(name));
    SetWindowTextW(box, name);
}

void ChooseHotkey(bool chooses) {
    editor.choosesHotkey = chooses;
    editor.refusal.clear();
    ShowAdvice();
}

void ShowChange() {
    editor.refusal.clear();
    ShowChosenHotkey();
    ShowAdvice();
}

void OnKeyField(int code) {
    switch (code) {
        case CBN_SETFOCUS: ChooseHotkey(true); break;
        case CBN_SELCHANGE:
            ShowChosenKey();
            Changed();
            ShowChange();
            break;
        // No timer here: "F1" on the way to "F12" is no hotkey that anybody wants.
        case CBN_EDITCHANGE:
            if (editor.filling) break;
            editor.edited = editor.edited || editor.position >= 0;
            ShowChange();
            break;
        case CBN_KILLFOCUS:
            // What is no key gives way to the one that the entry has.
            ShowKey(ChosenKey().value_or(editor.key));
            ChooseHotkey(false);
            if (editor.edited) SaveEdits(Warn::kOnce);
            break;
        default: break;
    }
}

void OnModifierField(int code) {
    if (code == CBN_SETFOCUS || code == CBN_KILLFOCUS) ChooseHotkey(code == CBN_SETFOCUS);
    if (code != CBN_SELCHANGE) return;
    Changed();
    ShowChange();
}

void SetHotkey(unsigned key, unsigned modifier) {
    SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    ShowKey(RecordKey(key));
    Changed();
    ShowChange();
}

bool TakePressed(const PressedKeys& pressed) {
    if (editor.position < 0) return false;
    editor.refusal = WhyNoHotkey(pressed.key, pressed.held, KeyLabel(pressed.key));
    const bool isHotkey = editor.refusal.empty();
    if (isHotkey) SetHotkey(pressed.key, static_cast<unsigned>(ModifierCodeOf(pressed.held)));
    ShowAdvice();
    return isHotkey;
}

void ClearHotkey() {
    SetHotkey(0, ChosenModifier());
}

// Another command's business: the selection is what decides which entry is shown.
void OnLink(int code) {
    if (code != BN_CLICKED || editor.sharer < 0) return;
    PostMessageW(mainWindow.window, WM_COMMAND, CMD_SHOW_ENTRY, editor.sharer);
}

void OnTextField(int code) {
    if (code == EN_KILLFOCUS || code == EN_VSCROLL) CloseSuggestions();
    if (code != EN_CHANGE) return;
    ShowCounter();
    Changed();
    if (editor.filling) return;
    ShowAdvice();
    OnTextTyped();
}

}  // namespace

void RelabelEditor() {
    for (const Caption& caption : kCaptions) SetFieldText(caption.control, LanguageText(caption.text));
    // By the name a screen reader finds the view itself; the access key is its caption's.
    std::wstring views = LanguageText(text::kEntriesCaption);
    ReplaceAll(views, L"&", L"");
    for (const int view : {IDC_LIST, IDC_TREE}) SetFieldText(view, views);
    const HWND modifiers = DialogControl(IDC_MODIFIER);
    const LRESULT chosen = SendMessageW(modifiers, CB_GETCURSEL, 0, 0);
    SendMessageW(modifiers, CB_RESETCONTENT, 0, 0);
    for (unsigned code = 0; code < kModifierCount; ++code) {
        std::wstring name;
        AppendModifierDisplayName(code, name);
        SendMessageW(modifiers, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    SendMessageW(modifiers, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    SendMessageW(DialogControl(IDC_FILTER), EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(LanguageText(text::kFilterCue).c_str()));
    ShowCounter();
    ShowChosenHotkey();
    RelabelHotkeyField();
    ShowAdvice();
}

void SetUpEditor(HWND dialog) {
    SetHotkeyFieldClient({TakePressed, ClearHotkey, ChooseHotkey});
    RelabelEditor();
    for (const std::wstring& name : OfferedKeyNames()) {
        SendDlgItemMessageW(dialog, IDC_KEY, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    SendDlgItemMessageW(dialog, IDC_LABEL, EM_SETLIMITTEXT, kLabelLimit - 1, 0);
    // More than is accepted, so that a long text that is pasted is told of and not cut without a word.
    constexpr WPARAM kFieldLimit = 60000;
    SendDlgItemMessageW(dialog, IDC_TEXT, EM_SETLIMITTEXT, kFieldLimit, 0);
    ShowInEditor(-1);
}

void ShowInEditor(int position) {
    const auto found = mainWindow.entries.find(position);
    const bool exists = found != mainWindow.entries.end();
    static constexpr ListEntry kNothing = {};
    editor.position = exists ? position : -1;
    FillFields(exists ? found->second.current : kNothing);
    editor.edited = false;
    editor.warned = false;
    editor.refusal.clear();
    if (!exists) SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    EnableEntryControls(exists);
    ShowCounter();
    ShowAdvice();
}

bool TakeEditsOver(Warn warn) {
    if (!editor.edited) return true;
    const auto found = mainWindow.entries.find(editor.position);
    if (found == mainWindow.entries.end()) return true;
    const EditorFields fields = {FieldText(IDC_TEXT), FieldText(IDC_LABEL),
                                 ChosenKey().value_or(found->second.current.keyCode), ChosenModifier()};
    const std::optional<ListEntry> entry = EditedEntry(found->second.current, fields);
    if (!entry) {
        if (warn == Warn::kAlways || (warn == Warn::kOnce && !editor.warned)) WarnOfLongText();
        return false;
    }
    editor.edited = false;
    editor.warned = false;
    return UpdateEntry(mainWindow.entries, editor.position, *entry);
}

bool SaveEdits(Warn warn) {
    KillTimer(mainWindow.window, TIMER_EDITOR_UPDATE);
    if (!editor.edited) return true;
    if (!TakeEditsOver(warn)) return false;
    KeepEntries();
    return true;
}

bool SaveAll(Warn warn) {
    // An edit is saved, and a failure told, on the way.
    const bool isSaved = editor.edited;
    if (!SaveEdits(warn)) return false;
    if (!isSaved && HasUnsaved(mainWindow.entries)) {
        SaveList(mainWindow.entries, mainWindow.listClient, true, true);
    }
    return true;
}

void OnEditorTimer() {
    SaveEdits(Warn::kOnce);
}

bool OnEditorNotification(int control, int code) {
    switch (control) {
        case IDC_TEXT: return OnTextField(code), true;
        case IDC_LABEL:
            if (code == EN_CHANGE) Changed();
            return true;
        case IDC_MODIFIER: return OnModifierField(code), true;
        case IDC_KEY: return OnKeyField(code), true;
        case IDC_CLASH: return OnLink(code), true;
        case IDC_KEEP_PATHS:
            if (code == BN_CLICKED) KeepPathsOfText();
            return true;
        default: return false;
    }
}

void InsertIntoText(const std::wstring& text, bool atStart) {
    const HWND field = DialogControl(IDC_TEXT);
    if (atStart) SendMessageW(field, EM_SETSEL, 0, 0);
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    SetFocus(field);
}

}  // namespace verbatix
