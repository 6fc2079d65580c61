#include "ui/editor/hotkey_field.h"

#include <utility>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/keyboard_layout.h"
#include "ids.h"
#include "ui/editor/hotkey_verdict.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

constexpr wchar_t kClass[] = L"VerbatixHotkey";

// What belongs to a window of the class; it lasts as long as the window.
struct HotkeyField {
    HWND window = nullptr;
    HotkeyFieldClient client = {};
    std::wstring hotkey = {};  // the one that there is
    std::wstring pressed =
        {};                 // in place of it while the field asks; empty: the request to press something
    bool asks = false;      // has the keyboard
    bool complete = false;  // a combination has come since the last modifier went down
    HWND cameFrom = nullptr;
    HFONT font = nullptr;
};

HotkeyField* FieldOf(HWND window) {
    return reinterpret_cast<HotkeyField*>(GetWindowLongPtrW(window, 0));
}

std::wstring ShownText(const HotkeyField& field) {
    if (!field.asks) return field.hotkey;
    return field.pressed.empty() ? LanguageText(text::kPressKeys) : field.pressed;
}

// The window's text is what a screen reader says when it changes: the name of the field, then what it
// shows.
void Refresh(const HotkeyField& field) {
    std::wstring name = LanguageText(text::kHotkeyFieldCaption);
    ReplaceAll(name, L"&", L"");
    const std::wstring shown = ShownText(field);
    if (!shown.empty()) name += L' ' + shown;
    std::wstring before(static_cast<std::size_t>(GetWindowTextLengthW(field.window)) + 1, L'\0');
    before.resize(static_cast<std::size_t>(
        GetWindowTextW(field.window, before.data(), static_cast<int>(before.size()))));
    if (name != before) SetWindowTextW(field.window, name.c_str());
    InvalidateRect(field.window, nullptr, FALSE);
}

void ShowPressed(HotkeyField& field, std::wstring shown) {
    field.pressed = std::move(shown);
    Refresh(field);
}

void OnHeld(HotkeyField& field, unsigned held) {
    field.complete = false;
    ShowPressed(field, held == 0 ? std::wstring() : FormatHeldKeys(held) + L" + ...");
}

// What was taken stays in sight; after what was not, the field asks again.
void OnReleased(HotkeyField& field, unsigned held) {
    const bool isTaken = field.complete && field.pressed == field.hotkey;
    if (!field.complete || (held == 0 && !isTaken)) OnHeld(field, held);
}

void OnCombination(HotkeyField& field, DWORD key, unsigned held) {
    field.complete = true;
    const bool isTaken = field.client.take && field.client.take({key, held});
    ShowPressed(field, isTaken ? field.hotkey : FormatPressedKeys(key, held, KeyLabel(key)));
}

void OnClear(HotkeyField& field) {
    field.complete = false;
    if (field.client.clear) field.client.clear();
    ShowPressed(field, {});
}

void Leave(const HotkeyField& field) {
    const HWND dialog = GetParent(field.window);
    const bool canReturn = IsWindow(field.cameFrom) && IsChild(dialog, field.cameFrom) &&
                           IsWindowVisible(field.cameFrom) && IsWindowEnabled(field.cameFrom);
    if (canReturn) {
        SetFocus(field.cameFrom);
    } else {
        SetFocus(dialog == mainWindow.window ? ShownView()
                                             : GetNextDlgTabItem(dialog, field.window, FALSE));
    }
}

void OnKeysPressed(HotkeyField& field, CaptureAction action, DWORD key, unsigned held) {
    if (!field.asks) return;
    switch (action) {
        case CaptureAction::kHeld: return OnHeld(field, held);
        case CaptureAction::kReleased: return OnReleased(field, held);
        case CaptureAction::kCombination: return OnCombination(field, key, held);
        case CaptureAction::kClear: return OnClear(field);
        case CaptureAction::kLeave: return Leave(field);
        case CaptureAction::kNothing: return;
    }
}

void OnAskingChanged(HotkeyField& field, bool asks) {
    field.asks = asks;
    field.complete = false;
    field.pressed.clear();
    if (asks) {
        BeginCapture(field.window);
    } else {
        EndCapture(field.window);
    }
    if (field.client.askingChanged) field.client.askingChanged(asks);
    Refresh(field);
}

// Between the two, as many tenths of the way.
COLORREF Blend(COLORREF from, COLORREF to, int tenths) {
    const auto blend = [tenths](int a, int b) { return a + (b - a) * tenths / 10; };
    return RGB(blend(GetRValue(from), GetRValue(to)), blend(GetGValue(from), GetGValue(to)),
               blend(GetBValue(from), GetBValue(to)));
}

void DrawFrame(HDC canvas, RECT place, COLORREF color) {
    SetDCBrushColor(canvas, color);
    FrameRect(canvas, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// With the colours that the dialog gives to its other fields.
void Draw(const HotkeyField& field, HDC canvas) {
    const HWND window = field.window;
    RECT all = {};
    GetClientRect(window, &all);
    const bool isEnabled = IsWindowEnabled(window) != FALSE;
    const UINT colors = isEnabled ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC;
    const auto back = reinterpret_cast<HBRUSH>(SendMessageW(
        GetParent(window), colors, reinterpret_cast<WPARAM>(canvas), reinterpret_cast<LPARAM>(window)));
    FillRect(canvas, &all, back ? back : GetSysColorBrush(COLOR_WINDOW));
    const COLORREF text = GetTextColor(canvas);
    const COLORREF background = GetBkColor(canvas);
    DrawFrame(canvas, all, field.asks ? GetSysColor(COLOR_HIGHLIGHT) : Blend(text, background, 7));
    RECT inner = all;
    InflateRect(&inner, -1, -1);
    if (field.asks) DrawFrame(canvas, inner, GetSysColor(COLOR_HIGHLIGHT));
    SetBkMode(canvas, TRANSPARENT);
    if (!isEnabled || (field.asks && field.pressed.empty()))
        SetTextColor(canvas, Blend(text, background, 4));
    const HGDIOBJ before = SelectObject(canvas, field.font ? field.font : GetStockObject(DEFAULT_GUI_FONT));
    InflateRect(&inner, -GetSystemMetrics(SM_CXEDGE) - 1, 0);
    DrawTextW(canvas, ShownText(field).c_str(), -1, &inner,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(canvas, before);
}

void Paint(const HotkeyField& field) {
    PAINTSTRUCT paint = {};
    Draw(field, BeginPaint(field.window, &paint));
    EndPaint(field.window, &paint);
}

// Every key but a Tab that moves on.
LRESULT WantedKeys(const MSG* message) {
    const bool isTab = message && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
    return isTab ? DLGC_WANTCHARS : DLGC_WANTALLKEYS | DLGC_WANTCHARS;
}

LRESULT OnMessage(HotkeyField& field, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = field.window;
    switch (message) {
        case WM_KEYS_PRESSED:
            OnKeysPressed(field, static_cast<CaptureAction>(LOWORD(wParam)), HIWORD(wParam),
                          static_cast<unsigned>(lParam));
            return 0;
        case WM_SETFOCUS:
            field.cameFrom = reinterpret_cast<HWND>(wParam);
            return OnAskingChanged(field, true), 0;
        case WM_KILLFOCUS: return OnAskingChanged(field, false), 0;
        case WM_DESTROY: return EndCapture(window), 0;
        case WM_GETDLGCODE: return WantedKeys(reinterpret_cast<const MSG*>(lParam));
        // With any of the buttons held a key may follow.
        case WM_LBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_RBUTTONDOWN: return SetFocus(window), 0;
        case WM_RBUTTONUP:
        case WM_CONTEXTMENU:
        // A released Alt would open the menu bar.
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_SYSKEYDOWN:
        case WM_SYSKEYUP:
        case WM_CHAR:
        case WM_SYSCHAR: return 0;
        case WM_SETFONT: return field.font = reinterpret_cast<HFONT>(wParam), Refresh(field), 0;
        case WM_GETFONT: return reinterpret_cast<LRESULT>(field.font);
        case WM_ENABLE: return InvalidateRect(window, nullptr, FALSE), 0;
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: return Paint(field), 0;
        case WM_PRINTCLIENT: return Draw(field, reinterpret_cast<HDC>(wParam)), 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK FieldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_NCCREATE) {
        const auto field = new HotkeyField{window};
        SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(field));
    }
    HotkeyField* const field = FieldOf(window);
    if (field && message != WM_NCDESTROY) return OnMessage(*field, message, wParam, lParam);
    SetWindowLongPtrW(window, 0, 0);
    delete field;
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

bool RegisterHotkeyField() {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = FieldProcedure;
    windowClass.cbWndExtra = sizeof(LONG_PTR);
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClass;
    return RegisterClassExW(&windowClass) != 0;
}

void SetHotkeyFieldClient(HWND window, const HotkeyFieldClient& client) {
    if (HotkeyField* const field = FieldOf(window)) field->client = client;
}

void ShowHotkeyInField(HWND window, const std::wstring& hotkey) {
    HotkeyField* const field = FieldOf(window);
    if (!field) return;
    field->hotkey = hotkey;
    Refresh(*field);
}

void RelabelHotkeyField(HWND window) {
    if (const HotkeyField* const field = FieldOf(window)) Refresh(*field);
}

}  // namespace verbatix
