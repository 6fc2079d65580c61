#include "ui/editor/code_rows.h"

#include "base/theme.h"

namespace verbatix {

namespace {

constexpr int kEdge = 4;  // pixels at 96 dpi
constexpr UINT kOneLine = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;

int LineHeight(HDC canvas) {
    TEXTMETRICW metric = {};
    GetTextMetricsW(canvas, &metric);
    return static_cast<int>(metric.tmHeight);
}

int Scaled(HDC canvas, int pixels) {
    return MulDiv(pixels, GetDeviceCaps(canvas, LOGPIXELSY), USER_DEFAULT_SCREEN_DPI);
}

// Between text and background, nearer to the text: legible on both.
COLORREF Faint(COLORREF text, COLORREF back) {
    const auto mix = [](int a, int b) { return static_cast<BYTE>((a * 13 + b * 7) / 20); };
    return RGB(mix(GetRValue(text), GetRValue(back)), mix(GetGValue(text), GetGValue(back)),
               mix(GetBValue(text), GetBValue(back)));
}

struct Colors {
    COLORREF text;
    COLORREF back;
};

Colors ColorsOf(const DRAWITEMSTRUCT& draw) {
    if (draw.itemState & ODS_SELECTED)
        return {GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColor(COLOR_HIGHLIGHT)};
    if (DarkControlColors(draw.hDC, WM_CTLCOLORLISTBOX, draw.hwndItem)) {
        return {GetTextColor(draw.hDC), GetBkColor(draw.hDC)};
    }
    return {GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_WINDOW)};
}

void Draw(HDC canvas, std::wstring_view text, RECT place, UINT format) {
    DrawTextW(canvas, text.data(), static_cast<int>(text.size()), &place, kOneLine | format);
}

}  // namespace

int CodeRowHeight(HWND list) {
    const HDC canvas = GetDC(list);
    const HGDIOBJ before =
        SelectObject(canvas, reinterpret_cast<HGDIOBJ>(SendMessageW(list, WM_GETFONT, 0, 0)));
    const int height = 2 * LineHeight(canvas) + 2 * Scaled(canvas, kEdge);
    SelectObject(canvas, before);
    ReleaseDC(list, canvas);
    return height;
}

std::wstring RowName(const CodeItem& item, std::wstring_view example) {
    std::wstring name = item.token + L", " + item.meaning;
    if (!example.empty()) name.append(L", ").append(example);
    return name;
}

void DrawCodeRow(const DRAWITEMSTRUCT& draw, std::wstring_view token, std::wstring_view meaning,
                 std::wstring_view example) {
    const HDC canvas = draw.hDC;
    const auto [text, back] = ColorsOf(draw);
    SetDCBrushColor(canvas, back);
    FillRect(canvas, &draw.rcItem, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetBkMode(canvas, TRANSPARENT);
    RECT line = draw.rcItem;
    const int edge = Scaled(canvas, kEdge);
    InflateRect(&line, -2 * edge, -edge);
    line.bottom = line.top + LineHeight(canvas);
    SetTextColor(canvas, text);
    if (!token.empty()) {
        RECT code = line;
        DrawTextW(canvas, token.data(), static_cast<int>(token.size()), &code, kOneLine | DT_CALCRECT);
        Draw(canvas, token, line, DT_LEFT);
        RECT rest = line;
        rest.left = code.right + 4 * edge;
        SetTextColor(canvas, Faint(text, back));
        if (rest.left < rest.right) Draw(canvas, example, rest, DT_RIGHT);
        OffsetRect(&line, 0, line.bottom - line.top);
    }
    Draw(canvas, meaning, line, DT_LEFT);
    if (draw.itemState & ODS_FOCUS) DrawFocusRect(canvas, &draw.rcItem);
}

}  // namespace verbatix
