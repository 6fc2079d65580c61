#include "ui/editor/editor.h"

#include <commctrl.h>

#include <span>
#include <utility>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/hotkey_simulation.h"
#include "hotkeys/key_decision.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/keyboard_layout.h"
#include "ids.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/path_breaks.h"
#include "store/settings_path.h"
#include "ui/editor/code_list.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/field_text.h"
#include "ui/editor/hotkey_field.h"
#include "ui/editor/hotkey_verdict.h"
#include "ui/editor/insertion.h"
#include "ui/editor/long_text.h"
#include "ui/editor/preview_area.h"
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
    {IDC_PREVIEW_CAPTION, text::kPreviewCaption},
    {CMD_NEW_ENTRY, text::kNew},
    {CMD_COPY_ENTRY, text::kDuplicate},
    {CMD_DELETE_ENTRY, text::kDelete},
    {CMD_TEST_ENTRY, text::kTest},
    {IDC_INSERT, text::kInsert},
    {IDC_KEEP_PATHS, text::kKeepPath},
};

// What works only with an entry.
constexpr int kEntryControls[] = {IDC_LABEL, IDC_HOTKEY,  IDC_MODIFIER,   IDC_KEY,
                                  IDC_TEXT,  IDC_PREVIEW, CMD_TEST_ENTRY, IDC_INSERT};
// What works with whatever is selected, a group or hotkey of the tree too.
constexpr int kSelectionButtons[] = {CMD_COPY_ENTRY, CMD_DELETE_ENTRY};

void SetFieldText(int control, const std::wstring& text) {
    SetWindowTextW(DialogControl(control), text.c_str());
}

unsigned ChosenModifier() {
    const LRESULT chosen = SendMessageW(DialogControl(IDC_MODIFIER), CB_GETCURSEL, 0, 0);
    return chosen < 0 ? 0U : static_cast<unsigned>(chosen);
}

void ShowCounter() {
    std::wstring counter;
    const int length = GetWindowTextLengthW(DialogControl(IDC_TEXT));
    constexpr int kLimit = static_cast<int>(kEditorTextLimit);
    if (editor.position >= 0 && length > kLimit) {
        counter = FillIn(LanguageText(text::kTooMany),
                         {std::to_wstring(length - kLimit), std::to_wstring(length)});
    } else if (editor.position >= 0) {
        counter = Format(L"%ls (%d/%d)", LanguageText(text::kCounter).c_str(), length, kLimit);
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
// What the settings file says costs nothing, and another program may change it.
const KeyFacts& FactsOf(unsigned key, unsigned modifier) {
    static KeyFacts facts;
    static std::pair<unsigned, unsigned> known = {0U, 0U};
    if (editor.choosesHotkey || known != std::pair(key, modifier)) {
        known = {key, modifier};
        facts = {KeyLabel(key)};
        if (modifier == kModifierCtrlAlt || modifier == kModifierAltGr) facts.typed = TypedWithCtrlAlt(key);
        const bool withWin = modifier == kModifierLeftWin || modifier == kModifierRightWin;
        facts.isTaken = withWin && key != 0 && IsWinHotkeyTaken(mainWindow.window, key, false);
    }
    facts.isOff = IsHotkeyDisabled(keyboardHook.disabled, modifier, key & 0xff);
    return facts;
}

HotkeyVerdict VerdictOnHotkey() {
    const std::optional<unsigned> key = ChosenKey();
    if (editor.position < 0) return {};
    if (!editor.refusal.empty()) return {.text = editor.refusal};
    if (!key) return {.text = FillIn(LanguageText(text::kNotAKey), {FieldText(IDC_KEY)})};
    return JudgeHotkey(mainWindow.entries, editor.position, *key, ChosenModifier(),
                       FactsOf(*key, ChosenModifier()), editor.choosesHotkey);
}

// What the user should know of the entry: a path that falls apart first, it will not run; but while he
// chooses a hotkey, of that.
void ShowAdvice() {
    const int pathAdvice = PathAdvice();
    HotkeyVerdict verdict = VerdictOnHotkey();
    if (pathAdvice && (!editor.choosesHotkey || verdict.text.empty()))
        verdict = {.text = LanguageText(pathAdvice)};
    editor.sharer = verdict.other;
    editor.more = verdict.more;
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
    const HWND field = DialogControl(IDC_HOTKEY);
    if (editor.position < 0) return ShowHotkeyInField(field, {});
    const unsigned key = ChosenKey().value_or(editor.key);
    ShowHotkeyInField(field, FormatHotkeyForReading(key, ChosenModifier(), KeyLabel(key)));
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
    ReplaceSelectedText(EditorFromStoredText(KeepPaths(*stored)));
    SetFocus(field);
}

void EnableControls(std::span<const int> controls, bool enable) {
    // A disabled control with the focus would leave the keyboard nowhere.
    const HWND focus = GetFocus();
    for (const int control : controls) {
        if (!enable && focus &&
            (focus == DialogControl(control) || GetParent(focus) == DialogControl(control))) {
            SetFocus(ShownView());
        }
        EnableWindow(DialogControl(control), enable);
    }
}

// One that stands there already comes with what was done to it, undone for one: then the user goes on
// there.
void FillFields(const ListEntry& entry, bool isShown) {
    editor.filling = true;
    const auto fill = isShown ? ChangeFieldText : [](HWND field, const std::wstring& text) {
        SetWindowTextW(field, text.c_str());
    };
    fill(DialogControl(IDC_TEXT), EditorFromStoredText(entry.text));
    // What only stands for a text goes with the first letter.
    if (entry.text == *StoredFromEditorText(L"")) {
        SendMessageW(DialogControl(IDC_TEXT), EM_SETSEL, 0, -1);
    }
    fill(DialogControl(IDC_LABEL), entry.label);
    const unsigned modifier = entry.modifier < kModifierCount ? entry.modifier : 0U;
    SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    ShowKey(entry.keyCode);
    editor.filling = false;
}

ULONGLONG unsavedSince = 0;  // while the timer runs

// Who types without a pause is not kept waiting for ever, nor is all of it one step to take back.
void Changed() {
    if (editor.filling || editor.position < 0) return;
    editor.edited = true;
    constexpr UINT kUpdateMilliseconds = 200;
    constexpr ULONGLONG kLongestMilliseconds = 2000;
    if (unsavedSince == 0) unsavedSince = GetTickCount64();
    if (GetTickCount64() - unsavedSince > kLongestMilliseconds) return;
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
            if (editor.edited) SaveEdits(Warn::kNever);
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
    if (code == EN_KILLFOCUS || code == EN_VSCROLL) {
        CloseSuggestions();
        CloseCodes();
    }
    if (code != EN_CHANGE) return;
    ShowCounter();
    Changed();
    if (editor.filling) return;
    ShowAdvice();
    RefreshPreview();
    // One list at a time.
    if (OfferCodes()) {
        CloseSuggestions();
    } else {
        OnTextTyped();
    }
}

}  // namespace

KeyFacts FactsOfHotkey(unsigned key, unsigned modifier) {
    return FactsOf(key, modifier);
}

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
    RelabelHotkeyField(DialogControl(IDC_HOTKEY));
    ShowAdvice();
    RefreshPreview();
}

// To a dialog a field that has the keyboard is one whose text is selected as a whole, and the next key
// would replace all of it. This one keeps caret and selection.
static LRESULT CALLBACK KeepCaret(HWND field, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                  DWORD_PTR) noexcept {
    if (message == WM_NCDESTROY) RemoveSubclass(field, KeepCaret, id);
    const LRESULT answer = PassToSubclassed(field, message, wParam, lParam);
    return message == WM_GETDLGCODE ? answer & ~DLGC_HASSETSEL : answer;
}

void SetUpEditor(HWND dialog) {
    SetHotkeyFieldClient(GetDlgItem(dialog, IDC_HOTKEY), {TakePressed, ClearHotkey, ChooseHotkey});
    AddSubclass(GetDlgItem(dialog, IDC_TEXT), KeepCaret, 1);
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

void EnableSelectionButtons() {
    EnableControls(kSelectionButtons, editor.position >= 0 || mainWindow.selectedCount > 0);
}

void ShowInEditor(int position) {
    const auto found = mainWindow.entries.find(position);
    const bool exists = found != mainWindow.entries.end();
    SealStep(undoHistory);
    static constexpr ListEntry kNothing = {};
    const bool isShown = exists && position == editor.position;
    editor.position = exists ? position : -1;
    FillFields(exists ? found->second.current : kNothing, isShown);
    editor.edited = false;
    editor.refusal.clear();
    if (!exists) SendMessageW(DialogControl(IDC_MODIFIER), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    EnableControls(kEntryControls, exists);
    EnableSelectionButtons();
    ShowCounter();
    ShowAdvice();
    RefreshPreview();
}

static void PutTextBack() {
    const auto found = mainWindow.entries.find(editor.position);
    if (found == mainWindow.entries.end()) return;
    editor.filling = true;
    ChangeFieldText(DialogControl(IDC_TEXT), EditorFromStoredText(found->second.current.text));
    editor.filling = false;
    editor.edited = false;
    ShowCounter();
    ShowAdvice();
    RefreshPreview();
}

static bool KeepLongText(const std::wstring& text) {
    const std::wstring path = KeepTextInFile(text, KeepPlace::kBesideSettings);
    if (path.empty()) {
        MessageBoxW(mainWindow.window, (LanguageText(text::kCannotWrite) + L"\n" + settingsPath).c_str(),
                    kProductName, MB_OK | MB_ICONWARNING);
        return false;
    }
    PutTextBack();
    MessageBoxW(mainWindow.window, FillIn(LanguageText(text::kTextIsInFile), {path}).c_str(), kProductName,
                MB_OK | MB_ICONINFORMATION);
    return true;
}

static void MarkWhatIsTooMuch() {
    const HWND field = DialogControl(IDC_TEXT);
    SetFocus(field);
    SendMessageW(field, EM_SETSEL, kEditorTextLimit, -1);
    SendMessageW(field, EM_SCROLLCARET, 0, 0);
}

// False when the user goes back to the text. Several notifications of one click may ask while the question
// is up.
static bool SettleLongText() {
    static bool isAsking = false;
    if (std::exchange(isAsking, true)) return false;
    const std::wstring text = FieldText(IDC_TEXT);
    const LongText answer = AskAboutLongText(text.size() - kEditorTextLimit);
    isAsking = false;
    switch (answer) {
        case LongText::kCutOff:
            SetFieldText(IDC_TEXT, CutToLimit(text));
            return TakeEditsOver(Warn::kNever);
        case LongText::kKeepInFile: return KeepLongText(text);
        case LongText::kDiscard: return PutTextBack(), true;
        default: return MarkWhatIsTooMuch(), false;
    }
}

bool TakeEditsOver(Warn warn) {
    if (!editor.edited) return true;
    const auto found = mainWindow.entries.find(editor.position);
    if (found == mainWindow.entries.end()) return true;
    const EditorFields fields = {FieldText(IDC_TEXT), FieldText(IDC_LABEL),
                                 ChosenKey().value_or(found->second.current.keyCode), ChosenModifier()};
    const std::optional<ListEntry> entry = EditedEntry(found->second.current, fields);
    const ListEntry edited = entry ? *entry : EditedButText(found->second.current, fields);
    const Action action = EditAction(found->second.current, edited, editor.position);
    UpdateEntry(mainWindow.entries, editor.position, edited);
    NoteAction(action);
    if (entry) {
        editor.edited = false;
        return true;
    }
    return warn == Warn::kAlways && SettleLongText();
}

bool SaveEdits(Warn warn) {
    KillTimer(mainWindow.window, TIMER_EDITOR_UPDATE);
    unsavedSince = 0;
    if (!editor.edited) return true;
    const bool isWhole = TakeEditsOver(warn);
    KeepEntries();
    return isWhole;
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
    SaveEdits(Warn::kNever);
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
        case IDC_MEND_CODE:
            if (code == BN_CLICKED) MendCode();
            return true;
        default: return false;
    }
}

}  // namespace verbatix
