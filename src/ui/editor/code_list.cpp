#include "ui/editor/code_list.h"

#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/language.h"
#include "base/message_font.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/editor/code_catalogue.h"
#include "ui/editor/code_examples.h"
#include "ui/editor/code_rows.h"
#include "ui/editor/code_search.h"
#include "ui/editor/insertion.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

// Dialog units.
constexpr SIZE kSize = {250, 150};
constexpr SIZE kSizeInText = {210, 96};
constexpr int kFieldHeight = 13;
constexpr int kGap = 3;

struct CodeList {
    HWND window = nullptr;
    bool isOwn = false;     // has the keyboard and a field to search in
    std::size_t start = 0;  // of the code in the text, where "%" has opened it
    std::size_t caret = 0;
    wchar_t typed = 0;  // into the text, by the message in hand
    std::vector<CodeItem> items;
    std::vector<std::wstring> examples;  // one an item
    std::vector<std::size_t> shown;      // the items of the rows
};

CodeList codes;

HWND TextField() {
    return DialogControl(IDC_TEXT);
}

HWND Rows() {
    return GetDlgItem(codes.window, IDC_CODE_LIST);
}

HWND SearchField() {
    return GetDlgItem(codes.window, IDC_CODE_SEARCH);
}

bool IsOpen() {
    return codes.window && IsWindowVisible(codes.window);
}

void Close() {
    if (!IsOpen()) return;
    const bool hadKeyboard = codes.isOwn && GetActiveWindow() == codes.window;
    ShowWindow(codes.window, SW_HIDE);
    if (hadKeyboard) SetFocus(TextField());
}

void ChooseRow(LRESULT row) {
    SendMessageW(Rows(), LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    // A list without the keyboard tells screen readers nothing of its own accord.
    if (row >= 0 && !codes.isOwn) {
        NotifyWinEvent(EVENT_OBJECT_FOCUS, Rows(), OBJID_CLIENT, static_cast<LONG>(row) + 1);
    }
}

void FillRows() {
    SendMessageW(Rows(), WM_SETREDRAW, FALSE, 0);
    SendMessageW(Rows(), LB_RESETCONTENT, 0, 0);
    for (const std::size_t item : codes.shown) {
        const std::wstring row = RowName(codes.items[item], codes.examples[item]);
        SendMessageW(Rows(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row.c_str()));
    }
    if (codes.shown.empty()) {
        SendMessageW(Rows(), LB_ADDSTRING, 0,
                     reinterpret_cast<LPARAM>(LanguageText(text::kNoCodeFound).c_str()));
    }
    SendMessageW(Rows(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(Rows(), nullptr, TRUE);
}

void Filter(std::wstring_view query) {
    codes.shown = FindCodes(codes.items, query);
    FillRows();
}

// In the text only what begins with the percent sign that is there already.
void LoadCodes() {
    codes.items = CodeItems();
    if (!codes.isOwn) {
        std::erase_if(codes.items, [](const CodeItem& item) { return !item.token.starts_with(L'%'); });
    }
    codes.examples = CodeExamples(codes.items);
}

void Take() {
    const LRESULT row = SendMessageW(Rows(), LB_GETCURSEL, 0, 0);
    if (row < 0 || static_cast<std::size_t>(row) >= codes.shown.size()) return;
    const CodeItem item = codes.items[codes.shown[static_cast<std::size_t>(row)]];
    const bool isOwn = codes.isOwn;
    Close();
    if (isOwn) return InsertIntoText(item.token, item.atStart);
    SendMessageW(TextField(), EM_SETSEL, codes.start, static_cast<LPARAM>(codes.caret));
    InsertIntoText(item.token, false);
}

INT_PTR OnCommand(int control, int code) {
    if (control == IDC_CODE_SEARCH && code == EN_CHANGE) {
        std::wstring query(static_cast<std::size_t>(GetWindowTextLengthW(SearchField())) + 1, L'\0');
        query.resize(static_cast<std::size_t>(
            GetWindowTextW(SearchField(), query.data(), static_cast<int>(query.size()))));
        Filter(query);
        ChooseRow(0);
    }
    if (control == IDC_CODE_LIST && code == LBN_DBLCLK) Take();
    if (control == IDCANCEL) Close();
    return TRUE;
}

void DrawRow(const DRAWITEMSTRUCT& draw) {
    if (draw.itemID == static_cast<UINT>(-1)) return;
    const std::size_t row = draw.itemID;
    if (row >= codes.shown.size()) return DrawCodeRow(draw, {}, LanguageText(text::kNoCodeFound), {});
    const std::size_t item = codes.shown[row];
    DrawCodeRow(draw, codes.items[item].token, codes.items[item].meaning, codes.examples[item]);
}

INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_INITDIALOG: return DressWindow(window), FALSE;
        case WM_COMMAND: return OnCommand(LOWORD(wParam), HIWORD(wParam));
        case WM_DRAWITEM: return DrawRow(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)), TRUE;
        case WM_ACTIVATE:
            if (LOWORD(wParam) == WA_INACTIVE) {
                if (codes.isOwn) ShowWindow(window, SW_HIDE);
            } else {
                // The list is a part of that window to the user.
                SendMessageW(mainWindow.window, WM_NCACTIVATE, TRUE, 0);
            }
            return FALSE;
        case WM_MOUSEACTIVATE:
            if (codes.isOwn) return FALSE;
            SetWindowLongPtrW(window, DWLP_MSGRESULT, MA_NOACTIVATE);
            return TRUE;
        default: return FALSE;
    }
}

void CreateWindowOnce() {
    if (IsWindow(codes.window)) return;
    codes.window = CreateDialogWindow(IDD_CODES, mainWindow.window, Procedure, 0);
}

int Units(int units) {
    RECT place = {0, 0, 0, units};
    MapDialogRect(codes.window, &place);
    return static_cast<int>(place.bottom);
}

void LayOut(SIZE size) {
    const int gap = Units(kGap);
    const int top = codes.isOwn ? Units(kFieldHeight) + 2 * gap : 0;
    ShowWindow(SearchField(), codes.isOwn ? SW_SHOW : SW_HIDE);
    MoveWindow(SearchField(), gap, gap, static_cast<int>(size.cx) - 2 * gap, Units(kFieldHeight), TRUE);
    MoveWindow(Rows(), 0, top, static_cast<int>(size.cx), static_cast<int>(size.cy) - top, TRUE);
}

// Beside `anchor` on the screen, below it or, where the work area ends, above; in the work area in any
// case.
void Place(const RECT& anchor) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&anchor, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const SIZE units = codes.isOwn ? kSize : kSizeInText;
    RECT size = {0, 0, units.cx, units.cy};
    MapDialogRect(codes.window, &size);
    const LONG width = std::min(size.right, work.right - work.left);
    const LONG height = std::min(size.bottom, work.bottom - work.top);
    const bool fitsBelow = anchor.bottom + height <= work.bottom;
    const LONG top = fitsBelow ? anchor.bottom : std::max(work.top, anchor.top - height);
    const LONG left = std::clamp(anchor.left, work.left, work.right - width);
    SetWindowPos(codes.window, HWND_TOP, static_cast<int>(left), static_cast<int>(top),
                 static_cast<int>(width), static_cast<int>(height), SWP_NOACTIVATE);
    RECT client = {};
    GetClientRect(codes.window, &client);
    LayOut({client.right, client.bottom});
}

void Prepare(const RECT& anchor) {
    LoadCodes();
    const std::wstring cue = LanguageText(text::kSearchCodes);
    SetWindowTextW(codes.window, LanguageText(text::kCodesCaption).c_str());
    // By these a screen reader names the two.
    SetDlgItemTextW(codes.window, IDC_CODE_SEARCH_CAPTION, LanguageText(text::kFilterCaption).c_str());
    SetDlgItemTextW(codes.window, IDC_CODE_LIST_CAPTION, LanguageText(text::kCodesCaption).c_str());
    SendMessageW(SearchField(), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(cue.c_str()));
    SendMessageW(Rows(), LB_SETITEMHEIGHT, 0, CodeRowHeight(Rows()));
    Place(anchor);
}

// The line of the character, on the screen.
RECT PlaceInText(std::size_t character) {
    const LRESULT at = SendMessageW(TextField(), EM_POSFROMCHAR, character, 0);
    // Behind the last character there is no place; an empty text has none at all.
    POINT place = {at == -1 ? 2 : static_cast<short>(LOWORD(at)),
                   at == -1 ? 2 : static_cast<short>(HIWORD(at))};
    ClientToScreen(TextField(), &place);
    TEXTMETRICW metric = {};
    const HDC canvas = GetDC(TextField());
    const HGDIOBJ before =
        SelectObject(canvas, reinterpret_cast<HGDIOBJ>(SendMessageW(TextField(), WM_GETFONT, 0, 0)));
    GetTextMetricsW(canvas, &metric);
    SelectObject(canvas, before);
    ReleaseDC(TextField(), canvas);
    return {place.x, place.y, place.x + 1, place.y + metric.tmHeight + 2};
}

void ShowOwn(const RECT& anchor) {
    CreateWindowOnce();
    if (!codes.window || !IsWindowEnabled(TextField())) return;
    Close();
    codes.isOwn = true;
    Prepare(anchor);
    SetWindowTextW(SearchField(), L"");
    Filter({});
    ChooseRow(0);
    ShowWindow(codes.window, SW_SHOW);
    SetFocus(SearchField());
}

std::size_t CaretInText() {
    DWORD from = 0;
    DWORD to = 0;
    SendMessageW(TextField(), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    return to;
}

void MoveBy(LRESULT rows) {
    const auto count = static_cast<LRESULT>(codes.shown.size());
    if (count == 0) return;
    const LRESULT chosen = SendMessageW(Rows(), LB_GETCURSEL, 0, 0);
    const LRESULT next = chosen < 0 && rows < 0 ? count - 1 : chosen < 0 ? 0 : chosen + rows;
    ChooseRow(std::clamp<LRESULT>(next, 0, count - 1));
}

LRESULT RowsOfPage() {
    RECT client = {};
    GetClientRect(Rows(), &client);
    const LRESULT height = SendMessageW(Rows(), LB_GETITEMHEIGHT, 0, 0);
    return std::max<LRESULT>(1, height > 0 ? client.bottom / height - 1 : 1);
}

bool MoveByKey(WPARAM key) {
    switch (key) {
        case VK_DOWN: return MoveBy(1), true;
        case VK_UP: return MoveBy(-1), true;
        case VK_NEXT: return MoveBy(RowsOfPage()), true;
        case VK_PRIOR: return MoveBy(-RowsOfPage()), true;
        default: return false;
    }
}

bool HandleOwnKey(WPARAM key) {
    if (MoveByKey(key)) return true;
    if (key == VK_ESCAPE) return Close(), true;
    if (key == VK_RETURN || key == VK_TAB) return Take(), true;
    return false;
}

// Typed while a click has left the keyboard in the rows.
void SearchOn(const MSG& letter) {
    SetFocus(SearchField());
    SendMessageW(SearchField(), EM_SETSEL, static_cast<WPARAM>(-1), -1);
    SendMessageW(SearchField(), letter.message, letter.wParam, letter.lParam);
}

// With these held a key is the text's own.
bool IsForText() {
    return GetKeyState(VK_SHIFT) < 0 || GetKeyState(VK_CONTROL) < 0 || GetKeyState(VK_MENU) < 0;
}

// Only what the list wants is taken from the text: with nothing chosen Enter and Tab are the text's.
bool HandleKeyInText(WPARAM key) {
    const bool isChosen = SendMessageW(Rows(), LB_GETCURSEL, 0, 0) >= 0;
    switch (key) {
        case VK_SHIFT:
        case VK_CONTROL:
        case VK_MENU:
        case VK_BACK:
        case VK_PROCESSKEY: return false;
        case VK_ESCAPE: return Close(), true;
        default: break;
    }
    if (IsForText()) {
        // A letter is told of by the change that it makes.
        if (GetKeyState(VK_CONTROL) < 0 && GetKeyState(VK_MENU) >= 0) Close();
        return false;
    }
    if (MoveByKey(key)) return true;
    if ((key == VK_RETURN || key == VK_TAB) && isChosen) return Take(), true;
    const bool typesOn = key >= '0' && (key < VK_F1 || key > VK_F24);
    if (!typesOn) Close();
    return false;
}

bool IsButtonDown(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
           message == WM_NCLBUTTONDOWN || message == WM_NCRBUTTONDOWN || message == WM_LBUTTONDBLCLK;
}

// A list that is clicked wants the keyboard, hence the click is taken from it.
bool HandleClickInText(const MSG& message) {
    if (message.hwnd != Rows()) {
        if (message.hwnd != codes.window) Close();
        return false;
    }
    // Its scroll bar is its own.
    if (message.message == WM_NCLBUTTONDOWN) return false;
    const LRESULT row = SendMessageW(Rows(), LB_ITEMFROMPOINT, 0, message.lParam);
    if (message.message == WM_LBUTTONDOWN && HIWORD(row) == 0) {
        ChooseRow(LOWORD(row));
        Take();
    }
    return true;
}

bool HandleWheel(const MSG& message) {
    RECT place = {};
    GetWindowRect(codes.window, &place);
    if (!PtInRect(&place, message.pt)) return Close(), false;
    SendMessageW(Rows(), message.message, message.wParam, message.lParam);
    return true;
}

}  // namespace

void ShowCodesBelow(HWND button) {
    RECT place = {};
    GetWindowRect(button, &place);
    ShowOwn(place);
}

void ShowCodesAtCaret() {
    const std::size_t caret = CaretInText();
    ShowOwn(PlaceInText(caret > 0 ? caret - 1 : 0));
}

bool HandleCodeListMessage(const MSG& message) {
    const bool types = message.message == WM_CHAR && message.hwnd == TextField();
    codes.typed = types ? static_cast<wchar_t>(message.wParam) : L'\0';
    if (!IsOpen()) return false;
    if (codes.isOwn) {
        const bool isOurs = message.hwnd == SearchField() || message.hwnd == Rows();
        if (message.message == WM_CHAR && message.hwnd == Rows()) return SearchOn(message), true;
        return message.message == WM_KEYDOWN && isOurs && HandleOwnKey(message.wParam);
    }
    if (IsButtonDown(message.message)) return HandleClickInText(message);
    if (message.message == WM_MOUSEWHEEL) return HandleWheel(message);
    return message.message == WM_KEYDOWN && message.hwnd == TextField() && HandleKeyInText(message.wParam);
}

bool OfferCodes() {
    if (IsOpen() && codes.isOwn) return true;
    const bool opens = codes.typed == L'%' && settings.listOnPercent;
    if (!IsOpen() && !opens) return false;
    const std::wstring text = FieldText(IDC_TEXT);
    const std::size_t caret = CaretInText();
    const std::size_t start = CodeStart(text, caret);
    if (start == caret || GetFocus() != TextField()) return CloseCodes(), false;
    CreateWindowOnce();
    if (!codes.window) return false;
    codes.start = start;
    codes.caret = caret;
    if (!IsOpen()) {
        codes.isOwn = false;
        Prepare(PlaceInText(start));
    }
    const std::wstring query = text.substr(start + 1, caret - start - 1);
    Filter(query);
    if (codes.shown.empty()) return CloseCodes(), false;
    // One letter is too little to tell: Enter after it begins a new line, as it always does.
    ChooseRow(query.size() >= 2 ? 0 : -1);
    ShowWindow(codes.window, SW_SHOWNOACTIVATE);
    return true;
}

void CloseCodes() {
    if (!codes.isOwn) Close();
}

}  // namespace verbatix
