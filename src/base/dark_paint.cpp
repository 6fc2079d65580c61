#include "base/dark_paint.h"

#include <commctrl.h>

#include <string>

#include "base/screen_scale.h"
#include "base/theme.h"

namespace verbatix {

namespace {

// Font and colour of a text, for as long as it lives.
class Pen {
  public:
    Pen(HWND control, HDC canvas, COLORREF text) : canvas_(canvas) {
        SetBkMode(canvas, TRANSPARENT);
        SetTextColor(canvas, text);
        const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
        before_ = SelectObject(canvas, font ? font : GetStockObject(DEFAULT_GUI_FONT));
    }
    ~Pen() { SelectObject(canvas_, before_); }
    Pen(const Pen&) = delete;
    Pen& operator=(const Pen&) = delete;

    void Write(const std::wstring& text, RECT place, UINT format) const {
        DrawTextW(canvas_, text.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | format);
    }

  private:
    HDC canvas_;
    HGDIOBJ before_ = nullptr;
};

void Frame(HDC canvas, const RECT& place, COLORREF color) {
    SetDCBrushColor(canvas, color);
    FrameRect(canvas, &place, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

std::wstring TextOf(HWND control) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
    return text;
}

COLORREF TextColorOf(HWND control) {
    return IsWindowEnabled(control) ? kDark.text : kDark.faint;
}

// A triangle of that half width around the point, with its tip below or above.
void Arrow(HDC canvas, POINT middle, int half, bool pointsDown) {
    const LONG tip = pointsDown ? (half + 1) / 2 : -((half + 1) / 2);
    const POINT corners[] = {{middle.x - half, middle.y - tip},
                             {middle.x + half, middle.y - tip},
                             {middle.x, middle.y - tip + (pointsDown ? half : -half)}};
    SetDCBrushColor(canvas, GetTextColor(canvas));
    SetDCPenColor(canvas, GetTextColor(canvas));
    const HGDIOBJ brush = SelectObject(canvas, GetStockObject(DC_BRUSH));
    const HGDIOBJ pen = SelectObject(canvas, GetStockObject(DC_PEN));
    Polygon(canvas, corners, 3);
    SelectObject(canvas, brush);
    SelectObject(canvas, pen);
}

std::wstring StatusText(HWND bar, WPARAM part) {
    std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, part, 0)) + 1U, L'\0');
    SendMessageW(bar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
    return text;
}

}  // namespace

void PaintButton(HWND button, HDC canvas, const RECT& place) {
    const LRESULT state = SendMessageW(button, BM_GETSTATE, 0, 0);
    const LRESULT hidden = SendMessageW(button, WM_QUERYUISTATE, 0, 0);
    const bool isDefault = (GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    const bool hasFocus = (state & BST_FOCUS) != 0;
    FillWith(canvas, place, state & BST_PUSHED ? kDark.lit : kDark.button);
    Frame(canvas, place, isDefault || hasFocus ? kDark.faint : kDark.line);
    const Pen pen(button, canvas, TextColorOf(button));
    const bool hidesLetters = (hidden & UISF_HIDEACCEL) != 0;
    pen.Write(TextOf(button), place, DT_CENTER | (hidesLetters ? DT_HIDEPREFIX : 0U));
    if (!hasFocus || (hidden & UISF_HIDEFOCUS)) return;
    RECT inner = place;
    InflateRect(&inner, -3, -3);
    DrawFocusRect(canvas, &inner);
}

void PaintCombo(HWND combo, HDC canvas, const RECT& place) {
    COMBOBOXINFO parts = {};
    parts.cbSize = sizeof parts;
    if (!GetComboBoxInfo(combo, &parts)) return;
    const bool hasEdit = parts.hwndItem && parts.hwndItem != combo;
    if (hasEdit) {
        RECT edit = {};
        GetWindowRect(parts.hwndItem, &edit);
        MapWindowPoints(nullptr, combo, reinterpret_cast<POINT*>(&edit), 2);
        ExcludeClipRect(canvas, edit.left, edit.top, edit.right, edit.bottom);
    }
    const bool hasFocus = GetFocus() == combo || (hasEdit && GetFocus() == parts.hwndItem);
    FillWith(canvas, place, hasEdit ? kDark.field : kDark.button);
    Frame(canvas, place, hasFocus ? kDark.faint : kDark.line);
    const Pen pen(combo, canvas, TextColorOf(combo));
    const RECT& button = parts.rcButton;
    const LONG middle = (button.left + button.right) / 2;
    Arrow(canvas, {middle, (button.top + button.bottom) / 2}, Scaled(4, DpiOf(combo)), true);
    if (hasEdit) return;
    RECT item = parts.rcItem;
    item.left += Scaled(2, DpiOf(combo));
    pen.Write(TextOf(combo), item, DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void PaintHeader(HWND header, HDC canvas, const RECT& place) {
    FillWith(canvas, place, kDark.back);
    const Pen pen(header, canvas, kDark.text);
    const int margin = Scaled(6, DpiOf(header));
    const auto count = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
    for (int index = 0; index < count; ++index) {
        RECT title = {};
        wchar_t text[128] = {};
        HDITEMW item = {};
        item.mask = HDI_TEXT | HDI_FORMAT;
        item.pszText = text;
        item.cchTextMax = 127;
        SendMessageW(header, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&title));
        SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        FillWith(canvas, {title.right - 1, title.top, title.right, title.bottom}, kDark.line);
        InflateRect(&title, -margin, 0);
        if (item.fmt & (HDF_SORTUP | HDF_SORTDOWN)) {
            const LONG middle = (title.top + title.bottom) / 2;
            Arrow(canvas, {title.right - margin, middle}, Scaled(4, DpiOf(header)),
                  (item.fmt & HDF_SORTDOWN) != 0);
            title.right -= 3 * margin;
        }
        pen.Write(text, title, DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    FillWith(canvas, {place.left, place.bottom - 1, place.right, place.bottom}, kDark.line);
}

void PaintStatusBar(HWND bar, HDC canvas, const RECT& place) {
    FillWith(canvas, place, kDark.back);
    FillWith(canvas, {place.left, place.top, place.right, place.top + 1}, kDark.line);
    const Pen pen(bar, canvas, kDark.text);
    const int margin = Scaled(4, DpiOf(bar));
    const auto write = [&](WPARAM part, RECT room) {
        room.left += margin;
        pen.Write(StatusText(bar, part), room, DT_NOPREFIX | DT_END_ELLIPSIS);
    };
    // A text across the whole bar stands in place of the parts.
    if (SendMessageW(bar, SB_ISSIMPLE, 0, 0)) return write(SB_SIMPLEID, place);
    const auto parts = static_cast<WPARAM>(SendMessageW(bar, SB_GETPARTS, 0, 0));
    for (WPARAM part = 0; part < parts; ++part) {
        RECT room = {};
        SendMessageW(bar, SB_GETRECT, part, reinterpret_cast<LPARAM>(&room));
        if (part + 1 < parts && room.right > room.left + 2 * margin) {
            FillWith(canvas, {room.right - 1, room.top + 2, room.right, room.bottom - 2}, kDark.line);
        }
        write(part, room);
    }
}

void PaintEdge(HWND control) {
    const bool isThick = (GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0;
    const bool isThin = (GetWindowLongPtrW(control, GWL_STYLE) & WS_BORDER) != 0;
    if (!isThick && !isThin) return;
    const HDC canvas = GetWindowDC(control);
    RECT place = {};
    GetWindowRect(control, &place);
    OffsetRect(&place, -place.left, -place.top);
    Frame(canvas, place, kDark.line);
    if (isThick) {
        InflateRect(&place, -1, -1);
        Frame(canvas, place, kDark.field);
    }
    ReleaseDC(control, canvas);
}

}  // namespace verbatix
