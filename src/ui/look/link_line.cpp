#include "ui/look/link_line.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

namespace verbatix {

namespace {

constexpr wchar_t kClass[] = L"VerbatixLinkLine";
// What stands in the window beside its text.
constexpr int kStart = 0;
constexpr int kLength = sizeof(LONG_PTR);
constexpr int kFont = 2 * sizeof(LONG_PTR);

struct Line {
    std::wstring text;
    std::size_t start = 0;
    std::size_t length = 0;
};

Line LineOf(HWND window) {
    Line line;
    line.text.resize(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1);
    const int length = GetWindowTextW(window, line.text.data(), static_cast<int>(line.text.size()));
    line.text.resize(static_cast<std::size_t>(length));
    line.start = std::min(static_cast<std::size_t>(GetWindowLongPtrW(window, kStart)), line.text.size());
    line.length = std::min(static_cast<std::size_t>(GetWindowLongPtrW(window, kLength)),
                           line.text.size() - line.start);
    return line;
}

// The font selected for as long as it lives.
class Canvas {
  public:
    Canvas(HWND window, HDC canvas, bool underlined) : canvas_(canvas) {
        auto font = reinterpret_cast<HFONT>(GetWindowLongPtrW(window, kFont));
        if (!font) font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
        LOGFONTW log = {};
        if (underlined && GetObjectW(font, sizeof log, &log)) {
            log.lfUnderline = TRUE;
            own_ = CreateFontIndirectW(&log);
        }
        before_ = SelectObject(canvas, own_ ? own_ : font);
    }
    ~Canvas() {
        SelectObject(canvas_, before_);
        if (own_) DeleteObject(own_);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

  private:
    HDC canvas_;
    HFONT own_ = nullptr;
    HGDIOBJ before_ = nullptr;
};

LONG WidthOf(HDC canvas, std::wstring_view text) {
    RECT place = {};
    if (text.empty()) return 0;
    DrawTextW(canvas, text.data(), static_cast<int>(text.size()), &place,
              DT_SINGLELINE | DT_NOPREFIX | DT_CALCRECT);
    return place.right;
}

RECT LinkPlace(HWND window, HDC canvas) {
    const Line line = LineOf(window);
    RECT place = {};
    GetClientRect(window, &place);
    const Canvas font(window, canvas, false);
    const LONG right = place.right;
    place.left = WidthOf(canvas, std::wstring_view(line.text).substr(0, line.start));
    place.right = std::min(
        right, place.left + WidthOf(canvas, std::wstring_view(line.text).substr(line.start, line.length)));
    return place;
}

int Brightness(COLORREF color) {
    return (3 * GetRValue(color) + 6 * GetGValue(color) + GetBValue(color)) / 10;
}

// The system's colour of links, unless it would not be seen, as on the background of the dark theme.
COLORREF LinkColor(HDC canvas) {
    constexpr int kContrast = 100;
    constexpr int kBright = 128;
    const int back = Brightness(GetBkColor(canvas));
    const COLORREF link = GetSysColor(COLOR_HOTLIGHT);
    if (std::abs(Brightness(link) - back) >= kContrast) return link;
    return back < kBright ? RGB(110, 180, 255) : RGB(0, 90, 190);
}

void DrawPart(HWND window, HDC canvas, RECT& place, std::wstring_view text, bool isLink) {
    const Canvas font(window, canvas, isLink);
    const COLORREF before = GetTextColor(canvas);
    if (isLink) SetTextColor(canvas, LinkColor(canvas));
    DrawTextW(canvas, text.data(), static_cast<int>(text.size()), &place,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    place.left = std::min(place.right, place.left + WidthOf(canvas, text));
    SetTextColor(canvas, before);
}

void Draw(HWND window, HDC canvas) {
    RECT place = {};
    GetClientRect(window, &place);
    const auto back = reinterpret_cast<HBRUSH>(SendMessageW(GetParent(window), WM_CTLCOLORSTATIC,
                                                            reinterpret_cast<WPARAM>(canvas),
                                                            reinterpret_cast<LPARAM>(window)));
    FillRect(canvas, &place, back ? back : GetSysColorBrush(COLOR_BTNFACE));
    SetBkMode(canvas, TRANSPARENT);
    const Line line = LineOf(window);
    const std::wstring_view text = line.text;
    DrawPart(window, canvas, place, text.substr(0, line.start), false);
    DrawPart(window, canvas, place, text.substr(line.start, line.length), true);
    DrawPart(window, canvas, place, text.substr(line.start + line.length), false);
    if (GetFocus() != window || line.length == 0) return;
    const RECT link = LinkPlace(window, canvas);
    DrawFocusRect(canvas, &link);
}

void Paint(HWND window) {
    PAINTSTRUCT paint = {};
    Draw(window, BeginPaint(window, &paint));
    EndPaint(window, &paint);
}

bool IsOnLink(HWND window, POINT place) {
    if (GetWindowLongPtrW(window, kLength) == 0) return false;
    const HDC canvas = GetDC(window);
    const RECT link = LinkPlace(window, canvas);
    ReleaseDC(window, canvas);
    return PtInRect(&link, place) != FALSE;
}

bool IsMouseOnLink(HWND window) {
    POINT mouse = {};
    GetCursorPos(&mouse);
    ScreenToClient(window, &mouse);
    return IsOnLink(window, mouse);
}

void Follow(HWND window) {
    if (GetWindowLongPtrW(window, kLength) == 0) return;
    PostMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), BN_CLICKED),
                 reinterpret_cast<LPARAM>(window));
}

// No access key is to be found in the text: names of entries may hold a "&".
LRESULT WantedKeys(const MSG* message) {
    const bool isEnter = message && message->wParam == VK_RETURN;
    return isEnter ? DLGC_WANTCHARS | DLGC_WANTALLKEYS : DLGC_WANTCHARS;
}

LRESULT CALLBACK LineProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_LBUTTONDOWN:
            if (IsOnLink(window, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)})) Follow(window);
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_RETURN || wParam == VK_SPACE) Follow(window);
            return 0;
        case WM_SETCURSOR:
            if (!IsMouseOnLink(window)) break;
            return SetCursor(LoadCursorW(nullptr, IDC_HAND)), TRUE;
        case WM_GETDLGCODE: return WantedKeys(reinterpret_cast<const MSG*>(lParam));
        case WM_SETFOCUS:
        case WM_KILLFOCUS: return InvalidateRect(window, nullptr, FALSE), 0;
        case WM_SETFONT: return SetWindowLongPtrW(window, kFont, static_cast<LONG_PTR>(wParam)), 0;
        case WM_GETFONT: return GetWindowLongPtrW(window, kFont);
        case WM_ERASEBKGND: return 1;
        case WM_PAINT: return Paint(window), 0;
        case WM_PRINTCLIENT: return Draw(window, reinterpret_cast<HDC>(wParam)), 0;
        default: break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

bool RegisterLinkLine() {
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = LineProcedure;
    windowClass.cbWndExtra = 3 * sizeof(LONG_PTR);
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = kClass;
    return RegisterClassExW(&windowClass) != 0;
}

void SetLinkLine(HWND line, const std::wstring& text, std::size_t start, std::size_t length) {
    const Line before = LineOf(line);
    if (before.text == text && before.start == start && before.length == length) return;
    SetWindowTextW(line, text.c_str());
    SetWindowLongPtrW(line, kStart, static_cast<LONG_PTR>(start));
    SetWindowLongPtrW(line, kLength, static_cast<LONG_PTR>(length));
    const LONG_PTR style = GetWindowLongPtrW(line, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_TABSTOP);
    SetWindowLongPtrW(line, GWL_STYLE, length ? style | WS_TABSTOP : style);
    if (!length && GetFocus() == line) {
        SendMessageW(GetParent(line), WM_NEXTDLGCTL, 0, FALSE);
    }
    InvalidateRect(line, nullptr, FALSE);
}

}  // namespace verbatix
