#include "ui/editor/editor.h"

#include <commctrl.h>

#include <span>
#include <utility>

#include "base/common_controls.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "ids.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/path_breaks.h"
#include "store/settings_path.h"
#include "ui/editor/code_list.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/field_text.h"
#include "ui/editor/hotkey_controls.h"
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

// What the user should know of the entry: a path that falls apart first, it will not run; but while he
// chooses a hotkey, of that.
void ShowAdvice() {
    const int pathAdvice = PathAdvice();
    HotkeyVerdict verdict = VerdictOnHotkey(mainWindow.entries, editor.position);
    if (pathAdvice && (!ChoosesHotkey() || verdict.text.empty()))
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

// No timer here: nobody wants what stands there on the way to a key's name.
void OnHotkeyTyped() {
    editor.edited = editor.edited || editor.position >= 0;
}

void OnHotkeySettled() {
    if (editor.edited) SaveEdits(Warn::kNever);
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

void RelabelEditor() {
    for (const Caption& caption : kCaptions) SetFieldText(caption.control, LanguageText(caption.text));
    // By the name a screen reader finds the view itself; the access key is its caption's.
    std::wstring views = LanguageText(text::kEntriesCaption);
    ReplaceAll(views, L"&", L"");
    for (const int view : {IDC_LIST, IDC_TREE}) SetFieldText(view, views);
    SendMessageW(DialogControl(IDC_FILTER), EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(LanguageText(text::kFilterCue).c_str()));
    ShowCounter();
    RelabelHotkeyControls();
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
    SetUpHotkeyControls(dialog, {Changed, OnHotkeyTyped, OnHotkeySettled, ShowAdvice});
    AddSubclass(GetDlgItem(dialog, IDC_TEXT), KeepCaret, 1);
    RelabelEditor();
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
    if (exists) {
        ShowHotkey(found->second.current.keyCode, found->second.current.modifier);
    } else {
        ShowNoHotkey();
    }
    editor.edited = false;
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
        case IDC_CLASH: return OnLink(code), true;
        case IDC_KEEP_PATHS:
            if (code == BN_CLICKED) KeepPathsOfText();
            return true;
        case IDC_MEND_CODE:
            if (code == BN_CLICKED) MendCode();
            return true;
        default: return OnHotkeyNotification(control, code);
    }
}

}  // namespace verbatix
