#include "ui/look/splitter.h"

#include <windowsx.h>

#include <algorithm>

#include "base/screen_scale.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/look/main_layout.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Splitter {
    int grabbedAt = 0;    // in the bar
    int splitBefore = 0;  // when the drag or the moving by keys began
    HWND focusBefore = nullptr;
};

Splitter splitter;

int Settings::*SplitNow() {
    return PlacesNow(mainWindow.window).isBeside ? &Settings::splitBeside : &Settings::splitAbove;
}

void SetSplit(int split) {
    int& value = settings.*SplitNow();
    if (value == split) return;
    value = split;
    // As when the window changes its size: columns follow too.
    SendMessageW(mainWindow.window, WM_SIZE, 0, 0);
}

void KeepSplit() {
    int Settings::*const split = SplitNow();
    if (settings.*split != splitter.splitBefore) ChangeSetting(split, settings.*split);
    splitter.splitBefore = settings.*split;
}

// Its near edge in the dialog, along the way in which it moves.
int Position(HWND bar, bool isBeside) {
    RECT place = {};
    GetWindowRect(bar, &place);
    MapWindowPoints(nullptr, mainWindow.window, reinterpret_cast<POINT*>(&place), 2);
    return static_cast<int>(isBeside ? place.left : place.top);
}

void MoveTo(int position) {
    SetSplit(SplitAt(PlacesNow(mainWindow.window), position));
}

void Grab(HWND bar, LPARAM mouse) {
    const bool isBeside = PlacesNow(mainWindow.window).isBeside;
    splitter.grabbedAt = isBeside ? GET_X_LPARAM(mouse) : GET_Y_LPARAM(mouse);
    splitter.splitBefore = settings.*SplitNow();
    SetCapture(bar);
}

void Drag(HWND bar, LPARAM mouse) {
    if (GetCapture() != bar) return;
    const bool isBeside = PlacesNow(mainWindow.window).isBeside;
    const int inBar = isBeside ? GET_X_LPARAM(mouse) : GET_Y_LPARAM(mouse);
    MoveTo(Position(bar, isBeside) + inBar - splitter.grabbedAt);
}

void PutBack() {
    splitter.splitBefore = settings.*SplitNow();
    SetSplit(0);
    KeepSplit();
}

void GiveFocusBack() {
    SetFocus(IsWindowEnabled(splitter.focusBefore) ? splitter.focusBefore : ShownView());
}

void OnKey(HWND bar, WPARAM key) {
    const MainPlaces places = PlacesNow(mainWindow.window);
    const WPARAM back = places.isBeside ? VK_LEFT : VK_UP;
    const WPARAM forth = places.isBeside ? VK_RIGHT : VK_DOWN;
    const int step = std::max(Scaled(8, mainWindow.dpi), 1);
    if (key == VK_ESCAPE) SetSplit(splitter.splitBefore);
    if (key == VK_ESCAPE || key == VK_RETURN) {
        GiveFocusBack();
    } else if (key == VK_HOME) {
        SetSplit(0);
    } else if (key == back || key == forth) {
        MoveTo(Position(bar, places.isBeside) + (key == forth ? step : -step));
    }
}

// A line in the middle of the bar, which is lit while it has the keyboard.
void Paint(HWND bar) {
    PAINTSTRUCT paint = {};
    const HDC canvas = BeginPaint(bar, &paint);
    RECT place = {};
    GetClientRect(bar, &place);
    const auto back = reinterpret_cast<HBRUSH>(SendMessageW(mainWindow.window, WM_CTLCOLORSTATIC,
                                                            reinterpret_cast<WPARAM>(canvas),
                                                            reinterpret_cast<LPARAM>(bar)));
    FillRect(canvas, &place, back ? back : GetSysColorBrush(COLOR_BTNFACE));
    const bool isUpright = place.bottom > place.right;
    const bool isLit = GetFocus() == bar;
    const int thickness = isLit ? 3 : 1;
    const int middle = static_cast<int>(isUpright ? place.right : place.bottom) / 2;
    RECT line = place;
    (isUpright ? line.left : line.top) = middle - thickness / 2;
    (isUpright ? line.right : line.bottom) = middle - thickness / 2 + thickness;
    FillRect(canvas, &line, GetSysColorBrush(isLit ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
    EndPaint(bar, &paint);
}

void ShowPointer() {
    const bool isBeside = PlacesNow(mainWindow.window).isBeside;
    SetCursor(LoadCursorW(nullptr, isBeside ? IDC_SIZEWE : IDC_SIZENS));
}

// Enter and Esc would else be the dialog's.
LRESULT WantedKeys(LPARAM message) {
    const auto* const press = reinterpret_cast<const MSG*>(message);
    const bool isOurs = press && (press->wParam == VK_RETURN || press->wParam == VK_ESCAPE);
    return DLGC_WANTARROWS | (isOurs ? DLGC_WANTMESSAGE : 0);
}

LRESULT CALLBACK SplitterProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_LBUTTONDOWN: return Grab(bar, lParam), 0;
        case WM_MOUSEMOVE: return Drag(bar, lParam), 0;
        case WM_LBUTTONUP: return ReleaseCapture(), 0;
        case WM_CAPTURECHANGED: return KeepSplit(), 0;
        case WM_LBUTTONDBLCLK: return PutBack(), 0;
        case WM_SETCURSOR: return ShowPointer(), TRUE;
        case WM_SETFOCUS:
            splitter.splitBefore = settings.*SplitNow();
            splitter.focusBefore = reinterpret_cast<HWND>(wParam);
            return InvalidateRect(bar, nullptr, FALSE), 0;
        case WM_KILLFOCUS: return KeepSplit(), InvalidateRect(bar, nullptr, FALSE), 0;
        case WM_GETDLGCODE: return WantedKeys(lParam);
        case WM_KEYDOWN: return OnKey(bar, wParam), 0;
        case WM_SIZE: return InvalidateRect(bar, nullptr, FALSE), 0;
        case WM_PAINT: return Paint(bar), 0;
        default: return DefWindowProcW(bar, message, wParam, lParam);
    }
}

}  // namespace

void RegisterSplitter(HINSTANCE instance) {
    WNDCLASSEXW description = {};
    description.cbSize = sizeof description;
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = SplitterProcedure;
    description.hInstance = instance;
    description.lpszClassName = SPLITTER_CLASS;
    RegisterClassExW(&description);
}

void FocusSplitter() {
    SetFocus(DialogControl(IDC_SPLITTER));
}

}  // namespace verbatix
