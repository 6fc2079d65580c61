#include "ui/editor/word_completion.h"

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "ids.h"
#include "store/settings.h"
#include "store/word_list.h"
#include "ui/editor/insertion.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Completion {
    HWND popup = nullptr;
    std::optional<WordList> words;  // read when the first letter is typed
    std::size_t start = 0;          // of the word in the text
    std::size_t caret = 0;
    bool hasMoved = false;  // into the list
    bool isTyping = false;  // the message in hand is a letter for the text
};

Completion completion;

HWND TextField() {
    return DialogControl(IDC_TEXT);
}

bool IsOpen() {
    return completion.popup && IsWindowVisible(completion.popup);
}

// Not owned by the text field, which would lose the focus to it; and a list that is clicked wants the
// focus, hence the message loop takes its clicks away.
HWND Popup() {
    if (!IsWindow(completion.popup)) {
        completion.popup = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, WC_LISTBOXW,
                                           nullptr, WS_POPUP | WS_BORDER | LBS_NOTIFY, 0, 0, 10, 10,
                                           mainWindow.window, nullptr, GetModuleHandleW(nullptr), nullptr);
        DressWindow(completion.popup);
    }
    // Every time: the text's font may have changed its size.
    SendMessageW(completion.popup, WM_SETFONT,
                 static_cast<WPARAM>(SendMessageW(TextField(), WM_GETFONT, 0, 0)), FALSE);
    return completion.popup;
}

int WidthOf(const std::vector<std::wstring>& words, HWND popup) {
    const HDC dc = GetDC(popup);
    const HGDIOBJ before =
        SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(popup, WM_GETFONT, 0, 0)));
    int width = 60;
    for (const std::wstring& word : words) {
        SIZE size = {};
        GetTextExtentPoint32W(dc, word.c_str(), static_cast<int>(word.size()), &size);
        width = std::max(width, static_cast<int>(size.cx));
    }
    SelectObject(dc, before);
    ReleaseDC(popup, dc);
    constexpr int kEdges = 12;
    return std::min(width, 400) + kEdges;
}

// Below the word, or above it where the screen ends.
POINT PlaceFor(SIZE size, int lineHeight) {
    const LRESULT at = SendMessageW(TextField(), EM_POSFROMCHAR, completion.start, 0);
    POINT place = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
    ClientToScreen(TextField(), &place);
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromPoint(place, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const bool fitsBelow = place.y + lineHeight + size.cy <= work.bottom;
    place.y += fitsBelow ? lineHeight : -size.cy;
    place.x = std::clamp(place.x, work.left, std::max(work.left, work.right - size.cx));
    return place;
}

void Show(const std::vector<std::wstring>& words) {
    const HWND popup = Popup();
    SendMessageW(popup, LB_RESETCONTENT, 0, 0);
    for (const std::wstring& word : words) {
        SendMessageW(popup, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(word.c_str()));
    }
    completion.hasMoved = false;
    const int line = static_cast<int>(SendMessageW(popup, LB_GETITEMHEIGHT, 0, 0));
    const SIZE size = {WidthOf(words, popup), line * static_cast<int>(words.size()) + 2};
    const POINT place = PlaceFor(size, line + 2);
    SetWindowPos(popup, HWND_TOPMOST, place.x, place.y, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void Take(LRESULT row) {
    std::wstring word(0x1000, L'\0');
    const LRESULT length = SendMessageW(completion.popup, LB_GETTEXTLEN, static_cast<WPARAM>(row), 0);
    if (length <= 0 || length >= static_cast<LRESULT>(word.size())) return CloseSuggestions();
    SendMessageW(completion.popup, LB_GETTEXT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(word.data()));
    word.resize(static_cast<std::size_t>(length));
    CloseSuggestions();
    SendMessageW(TextField(), EM_SETSEL, completion.start, static_cast<LPARAM>(completion.caret));
    ReplaceSelectedText(word);
}

void Move(int rows) {
    const LRESULT count = SendMessageW(completion.popup, LB_GETCOUNT, 0, 0);
    const LRESULT chosen = SendMessageW(completion.popup, LB_GETCURSEL, 0, 0);
    const LRESULT next = completion.hasMoved ? chosen + rows : rows > 0 ? 0 : count - 1;
    completion.hasMoved = true;
    SendMessageW(completion.popup, LB_SETCURSEL,
                 static_cast<WPARAM>(std::clamp<LRESULT>(next, 0, count - 1)), 0);
}

// With these held a key is the text's own: Shift+Tab leaves it, Shift and an arrow select.
bool IsForText() {
    return GetKeyState(VK_SHIFT) < 0 || GetKeyState(VK_CONTROL) < 0;
}

// True when the key was for the list. Other keys close it; letters open it anew.
bool HandleKey(WPARAM key) {
    const bool moves = key == VK_TAB || key == VK_RETURN || key == VK_UP || key == VK_DOWN;
    if (moves && IsForText()) return CloseSuggestions(), false;
    switch (key) {
        case VK_DOWN: return Move(1), true;
        case VK_UP: return Move(-1), true;
        case VK_ESCAPE: return CloseSuggestions(), true;
        case VK_TAB:
            Take(completion.hasMoved ? SendMessageW(completion.popup, LB_GETCURSEL, 0, 0) : 0);
            return true;
        case VK_RETURN:
            if (!completion.hasMoved) return CloseSuggestions(), false;
            return Take(SendMessageW(completion.popup, LB_GETCURSEL, 0, 0)), true;
        // Held on the way to a letter.
        case VK_SHIFT:
        case VK_CONTROL:
        case VK_MENU:
        case VK_PROCESSKEY: return false;
        default: break;
    }
    const bool opensAnew = key >= '0' && key != VK_F4;
    if (!opensAnew) CloseSuggestions();
    return false;
}

bool IsButtonDown(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
           message == WM_NCLBUTTONDOWN || message == WM_NCRBUTTONDOWN || message == WM_LBUTTONDBLCLK;
}

bool HandleClick(const MSG& message) {
    if (message.hwnd != completion.popup) return CloseSuggestions(), false;
    const LRESULT row = SendMessageW(completion.popup, LB_ITEMFROMPOINT, 0, message.lParam);
    if (message.message == WM_LBUTTONDOWN && HIWORD(row) == 0) Take(LOWORD(row));
    return true;
}

}  // namespace

void StartWordCompletion() {
    if (settings.useAutocomplete && !FileHasWords(WordFilePath())) settings.useAutocomplete = 0;
}

void SwitchWordCompletion() {
    CloseSuggestions();
    completion.words.reset();
    if (settings.useAutocomplete || FileHasWords(WordFilePath())) {
        RunSettingCommand(CMD_SUGGEST_WORDS);
        return;
    }
    MessageBoxW(mainWindow.window, FillIn(LanguageText(text::kNoWords), {WordFilePath()}).c_str(),
                kProductName, MB_OK | MB_ICONINFORMATION);
}

bool HandleCompletionMessage(const MSG& message) {
    completion.isTyping =
        message.message == WM_CHAR && message.wParam > L' ' && message.hwnd == TextField();
    if (!IsOpen()) return false;
    if (IsButtonDown(message.message)) return HandleClick(message);
    if (message.message == WM_MOUSEWHEEL) CloseSuggestions();
    return message.message == WM_KEYDOWN && HandleKey(message.wParam);
}

void OnTextTyped() {
    constexpr std::size_t kShortestPrefix = 2;
    constexpr std::size_t kMostSuggestions = 8;
    const bool isTyping = completion.isTyping;
    if (!settings.useAutocomplete || !isTyping || GetFocus() != TextField()) return CloseSuggestions();
    DWORD from = 0;
    DWORD to = 0;
    SendMessageW(TextField(), EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const std::wstring text = FieldText(IDC_TEXT);
    completion.caret = to;
    completion.start = WordStart(text, to);
    if (from != to || to - completion.start < kShortestPrefix) return CloseSuggestions();
    if (!completion.words) completion.words = LoadWordList(WordFilePath());
    const std::wstring_view prefix =
        std::wstring_view(text).substr(completion.start, to - completion.start);
    const std::vector<std::wstring> words = SuggestWords(*completion.words, prefix, kMostSuggestions);
    if (words.empty()) return CloseSuggestions();
    Show(words);
}

void CloseSuggestions() {
    if (IsOpen()) ShowWindow(completion.popup, SW_HIDE);
}

}  // namespace verbatix
