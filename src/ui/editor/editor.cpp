#include "ui/editor/editor.h"

#include <commctrl.h>

#include <utility>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "ids.h"
#include "ui/editor/editor_fields.h"
#include "ui/editor/word_completion.h"
#include "ui/state/main_window.h"
#include "ui/views/list_view.h"
#include "ui/views/tree_view.h"

namespace verbatix {

Editor editor;

namespace {

struct Caption {
    int control;
    int text;
};

constexpr int kEntriesText = 1151;

constexpr Caption kCaptions[] = {
    {IDC_FILTER_CAPTION, 1150},       {IDC_LIST_CAPTION, kEntriesText},
    {IDC_TREE_CAPTION, kEntriesText}, {IDC_LABEL_CAPTION, 1045},
    {IDC_MODIFIER_CAPTION, 1046},     {IDC_KEY_CAPTION, 1047},
    {IDC_TEXT_CAPTION, 1048},         {CMD_NEW_ENTRY, 1040},
    {CMD_COPY_ENTRY, 1041},           {CMD_DELETE_ENTRY, 1042},
    {CMD_TEST_ENTRY, 1043},           {IDC_INSERT, 1044},
};

// What works only with an entry.
constexpr int kEntryControls[] = {IDC_LABEL,      IDC_MODIFIER,     IDC_KEY,        IDC_TEXT,
                                  CMD_COPY_ENTRY, CMD_DELETE_ENTRY, CMD_TEST_ENTRY, IDC_INSERT};

HWND Control(int control) {
    return GetDlgItem(mainWindow.window, control);
}

void SetFieldText(int control, const std::wstring& text) {
    SetWindowTextW(Control(control), text.c_str());
}

unsigned ChosenModifier() {
    const LRESULT chosen = SendMessageW(Control(IDC_MODIFIER), CB_GETCURSEL, 0, 0);
    return chosen < 0 ? 0U : static_cast<unsigned>(chosen);
}

void ShowCounter() {
    std::wstring counter;
    if (editor.position >= 0) {
        counter =
            Format(L"%ls (%d/4000)", LanguageText(41).c_str(), GetWindowTextLengthW(Control(IDC_TEXT)));
    }
    SetFieldText(IDC_COUNTER, counter);
}

void ShowClash() {
    std::wstring warning;
    const std::optional<int> other =
        FindClash(mainWindow.entries, editor.position, KeyFromInput(FieldText(IDC_KEY)), ChosenModifier());
    if (editor.position >= 0 && other) {
        warning = FillIn(LanguageText(1152), {EntryName(mainWindow.entries.at(*other).current)});
    }
    if (warning != FieldText(IDC_CLASH)) SetFieldText(IDC_CLASH, warning);
}

void EnableEntryControls(bool enable) {
    // A disabled control with the focus would leave the keyboard nowhere.
    const HWND focus = GetFocus();
    for (const int control : kEntryControls) {
        if (!enable && focus && (focus == Control(control) || GetParent(focus) == Control(control))) {
            SetFocus(ShownView());
        }
        EnableWindow(Control(control), enable);
    }
}

void FillFields(const ListEntry& entry) {
    editor.filling = true;
    SetFieldText(IDC_TEXT, EditorFromStoredText(entry.text));
    SetFieldText(IDC_LABEL, entry.label);
    SetFieldText(IDC_KEY, FormatKeyName(entry.keyCode));
    const unsigned modifier = entry.modifier < kModifierCount ? entry.modifier : 0U;
    SendMessageW(Control(IDC_MODIFIER), CB_SETCURSEL, modifier, 0);
    editor.filling = false;
}

// Several notifications of one click may ask for it while the box is up.
void WarnOfLongText() {
    static bool isShown = false;
    editor.warned = true;
    if (std::exchange(isShown, true)) return;
    MessageBoxW(mainWindow.window, (LanguageText(55) + L": 4000").c_str(), kProductName,
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
    const HWND box = Control(IDC_KEY);
    const LRESULT chosen = SendMessageW(box, CB_GETCURSEL, 0, 0);
    wchar_t name[64] = {};
    if (chosen < 0 || SendMessageW(box, CB_GETLBTEXTLEN, static_cast<WPARAM>(chosen), 0) > 60) return;
    SendMessageW(box, CB_GETLBTEXT, static_cast<WPARAM>(chosen), reinterpret_cast<LPARAM>(name));
    SetWindowTextW(box, name);
}

void OnKeyField(int code) {
    switch (code) {
        case CBN_SELCHANGE:
            ShowChosenKey();
            Changed();
            ShowClash();
            break;
        // No timer here: "F1" on the way to "F12" is no hotkey that anybody wants.
        case CBN_EDITCHANGE:
            editor.edited = editor.edited || (!editor.filling && editor.position >= 0);
            ShowClash();
            break;
        case CBN_KILLFOCUS:
            if (!editor.edited) break;
            SetFieldText(IDC_KEY, FormatKeyName(KeyFromInput(FieldText(IDC_KEY))));
            ShowClash();
            SaveEdits(Warn::kOnce);
            break;
        default: break;
    }
}

void OnTextField(int code) {
    if (code == EN_KILLFOCUS || code == EN_VSCROLL) CloseSuggestions();
    if (code != EN_CHANGE) return;
    ShowCounter();
    Changed();
    if (!editor.filling) OnTextTyped();
}

void OnFilterChanged() {
    SaveEdits(Warn::kOnce);
    RefreshListView(true);
}

}  // namespace

std::wstring FieldText(int control) {
    const HWND window = Control(control);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void RelabelEditor() {
    for (const Caption& caption : kCaptions) SetFieldText(caption.control, LanguageText(caption.text));
    // By the name a screen reader finds the view itself; the access key is its caption's.
    std::wstring views = LanguageText(kEntriesText);
    ReplaceAll(views, L"&", L"");
    for (const int view : {IDC_LIST, IDC_TREE}) SetFieldText(view, views);
    const HWND modifiers = Control(IDC_MODIFIER);
    const LRESULT chosen = SendMessageW(modifiers, CB_GETCURSEL, 0, 0);
    SendMessageW(modifiers, CB_RESETCONTENT, 0, 0);
    for (unsigned code = 0; code < kModifierCount; ++code) {
        std::wstring name;
        AppendModifierDisplayName(code, name);
        SendMessageW(modifiers, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    }
    SendMessageW(modifiers, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    SendMessageW(Control(IDC_FILTER), EM_SETCUEBANNER, TRUE,
                 reinterpret_cast<LPARAM>(LanguageText(1049).c_str()));
    ShowCounter();
    ShowClash();
}

void SetUpEditor(HWND dialog) {
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
    FillFields(exists ? found->second.current : kNothing);
    editor.position = exists ? position : -1;
    editor.edited = false;
    editor.warned = false;
    if (!exists) SendMessageW(Control(IDC_MODIFIER), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    EnableEntryControls(exists);
    ShowCounter();
    ShowClash();
}

bool TakeEditsOver(Warn warn) {
    if (!editor.edited) return true;
    const auto found = mainWindow.entries.find(editor.position);
    if (found == mainWindow.entries.end()) return true;
    const EditorFields fields = {FieldText(IDC_TEXT), FieldText(IDC_LABEL), FieldText(IDC_KEY),
                                 ChosenModifier()};
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
    SaveList(mainWindow.entries, mainWindow.listClient, true, true);
    RebuildHotkeyTables(false);
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
        case IDC_MODIFIER:
            if (code == CBN_SELCHANGE) {
                Changed();
                ShowClash();
            }
            return true;
        case IDC_KEY: return OnKeyField(code), true;
        case IDC_FILTER:
            if (code == EN_CHANGE) OnFilterChanged();
            return true;
        default: return false;
    }
}

void InsertIntoText(const std::wstring& text, bool atStart) {
    const HWND field = Control(IDC_TEXT);
    if (atStart) SendMessageW(field, EM_SETSEL, 0, 0);
    SendMessageW(field, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(text.c_str()));
    SetFocus(field);
}

}  // namespace verbatix
