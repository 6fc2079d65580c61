#include "ui/look/offer_link.h"

#include <windows.h>

#include <cstdlib>
#include <iterator>

#include "base/common_controls.h"
#include "base/theme.h"
#include "ids.h"
#include "ui/state/main_window.h"

namespace verbatix {

// Some themes have a colour for links that is hardly to be seen on the bar.
static COLORREF LinkColor() {
    constexpr int kLeastDifference = 90;
    const auto brightness = [](COLORREF color) {
        return (GetRValue(color) * 3 + GetGValue(color) * 6 + GetBValue(color)) / 10;
    };
    const COLORREF link = GetSysColor(COLOR_HOTLIGHT);
    const int difference = brightness(link) - brightness(GetSysColor(COLOR_BTNFACE));
    return std::abs(difference) < kLeastDifference ? GetSysColor(COLOR_BTNTEXT) : link;
}

static void Draw(const DRAWITEMSTRUCT& item) {
    RECT place = item.rcItem;
    const HBRUSH dark = DarkControlColors(item.hDC, WM_CTLCOLORSTATIC, item.hwndItem);
    FillRect(item.hDC, &place, dark ? dark : GetSysColorBrush(COLOR_BTNFACE));
    if (!dark) SetTextColor(item.hDC, LinkColor());
    SetBkMode(item.hDC, TRANSPARENT);
    LOGFONTW look = {};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(mainWindow.statusBar, WM_GETFONT, 0, 0)), sizeof look,
               &look);
    look.lfUnderline = TRUE;
    const HFONT font = CreateFontIndirectW(&look);
    const HGDIOBJ before = SelectObject(item.hDC, font);
    wchar_t name[64] = {};
    GetWindowTextW(item.hwndItem, name, static_cast<int>(std::size(name)));
    DrawTextW(item.hDC, name, -1, &place, DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_NOPREFIX);
    SelectObject(item.hDC, before);
    DeleteObject(font);
    if (item.itemState & ODS_FOCUS) DrawFocusRect(item.hDC, &place);
}

// A button tells its parent, and the status bar would keep that to itself.
static LRESULT CALLBACK BarProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR) noexcept {
    const HWND link = GetDlgItem(bar, IDC_OFFER_LINK);
    switch (message) {
        case WM_COMMAND: return SendMessageW(mainWindow.window, message, wParam, lParam);
        case WM_DRAWITEM: return Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)), TRUE;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wParam) != link) break;
            return SetCursor(LoadCursorW(nullptr, IDC_HAND)), TRUE;
        case WM_NCDESTROY: RemoveSubclass(bar, BarProcedure, id); break;
        default: break;
    }
    return PassToSubclassed(bar, message, wParam, lParam);
}

void CreateOfferLink() {
    constexpr UINT_PTR kOfferLinkSubclass = 2;
    const HWND bar = mainWindow.statusBar;
    CreateWindowExW(0, L"BUTTON", nullptr, WS_CHILD | WS_TABSTOP | BS_OWNERDRAW, 0, 0, 0, 0, bar,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(IDC_OFFER_LINK)),
                    GetModuleHandleW(nullptr), nullptr);
    AddSubclass(bar, BarProcedure, kOfferLinkSubclass);
}

}  // namespace verbatix
