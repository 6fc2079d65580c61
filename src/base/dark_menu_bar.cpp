#include "base/dark_menu_bar.h"

#include <iterator>

#include "base/theme.h"

namespace verbatix {

namespace {

struct BarRequest {
    HMENU menu;
    HDC canvas;
    DWORD flags;
};

struct ItemRequest {
    DRAWITEMSTRUCT draw;
    BarRequest bar;
    int position;  // measures follow, which are not needed
};

bool windowsAsks = false;

// In coordinates of the window; empty without a bar.
RECT PlaceOfBar(HWND window) {
    MENUBARINFO info = {};
    info.cbSize = sizeof info;
    RECT outer = {};
    if (!GetMenuBarInfo(window, OBJID_MENU, 0, &info) || !GetWindowRect(window, &outer)) return {};
    OffsetRect(&info.rcBar, -static_cast<int>(outer.left), -static_cast<int>(outer.top));
    return info.rcBar;
}

void DrawItem(HDC canvas, HMENU menu, int position, RECT place, UINT state) {
    wchar_t text[128] = {};
    GetMenuStringW(menu, static_cast<UINT>(position), text, static_cast<int>(std::size(text)),
                   MF_BYPOSITION);
    const bool isLit = (state & (ODS_HOTLIGHT | ODS_SELECTED)) != 0;
    FillWith(canvas, place, isLit ? kDark.lit : kDark.back);
    SetBkMode(canvas, TRANSPARENT);
    SetTextColor(canvas, state & (ODS_GRAYED | ODS_DISABLED | ODS_INACTIVE) ? kDark.faint : kDark.text);
    DrawTextW(canvas, text, -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | (state & ODS_NOACCEL ? DT_HIDEPREFIX : 0U));
}

void DrawWholeBar(HWND window, HDC canvas) {
    const HMENU menu = GetMenu(window);
    FillWith(canvas, PlaceOfBar(window), kDark.back);
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    const HFONT font = CreateFontIndirectW(&metrics.lfMenuFont);
    const HGDIOBJ before = SelectObject(canvas, font);
    RECT outer = {};
    GetWindowRect(window, &outer);
    for (int position = 0; position < GetMenuItemCount(menu); ++position) {
        RECT place = {};
        if (!GetMenuItemRect(window, menu, static_cast<UINT>(position), &place)) continue;
        OffsetRect(&place, -static_cast<int>(outer.left), -static_cast<int>(outer.top));
        const UINT state = GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION);
        DrawItem(canvas, menu, position, place, state & MF_HILITE ? ODS_SELECTED : 0U);
    }
    SelectObject(canvas, before);
    DeleteObject(font);
}

}  // namespace

void DrawMenuBarBack(HWND window, LPARAM request) {
    windowsAsks = true;
    FillWith(reinterpret_cast<const BarRequest*>(request)->canvas, PlaceOfBar(window), kDark.back);
}

void DrawMenuBarItem(LPARAM request) {
    const auto& item = *reinterpret_cast<const ItemRequest*>(request);
    DrawItem(item.bar.canvas, item.bar.menu, item.position, item.draw.rcItem, item.draw.itemState);
}

void RepairMenuBar(HWND window) {
    if (!GetMenu(window) || IsIconic(window)) return;
    const HDC canvas = GetWindowDC(window);
    if (!windowsAsks) DrawWholeBar(window, canvas);
    RECT line = PlaceOfBar(window);
    line.top = line.bottom;
    ++line.bottom;
    FillWith(canvas, line, kDark.back);
    ReleaseDC(window, canvas);
}

}  // namespace verbatix
