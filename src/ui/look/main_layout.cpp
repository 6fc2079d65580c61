#include "ui/look/main_layout.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>

#include "base/screen_scale.h"
#include "ids.h"
#include "store/settings.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

constexpr char kAlphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr int kLetters = static_cast<int>(std::size(kAlphabet)) - 1;

// As Windows measures the font of a dialog; the controls may have another one.
FontUnits UnitsOf(HWND dialog) {
    FontUnits units;
    const HDC canvas = GetDC(dialog);
    if (!canvas) return units;
    const HGDIOBJ before = SelectObject(
        canvas, reinterpret_cast<HFONT>(SendDlgItemMessageW(dialog, IDC_FILTER, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics = {};
    SIZE all = {};
    if (GetTextMetricsW(canvas, &metrics) && GetTextExtentPoint32A(canvas, kAlphabet, kLetters, &all)) {
        units.character = {(all.cx + kLetters / 2) / kLetters, metrics.tmHeight};
    }
    SelectObject(canvas, before);
    ReleaseDC(dialog, canvas);
    return units;
}

LONG HeightOfStatusBar() {
    RECT status = {};
    GetWindowRect(mainWindow.statusBar, &status);
    return status.bottom - status.top;
}

void PlaceStatusBar(int width) {
    SendMessageW(mainWindow.statusBar, WM_SIZE, 0, 0);
    // The second part has room for the longest of its texts, which says why no hotkey works; the third is
    // not used.
    const int parts[] = {width * 28 / 100, width * 86 / 100, width * 86 / 100, -1};
    SendMessageW(mainWindow.statusBar, SB_SETPARTS, std::size(parts), reinterpret_cast<LPARAM>(parts));
}

bool IsOffered(HWND control) {
    return (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) != 0;
}

}  // namespace

MainPlaces PlacesNow(HWND dialog) {
    LayoutRequest request;
    GetClientRect(dialog, &request.client);
    request.client.bottom -= HeightOfStatusBar();
    request.units = UnitsOf(dialog);
    request.splitBeside = settings.splitBeside;
    request.splitAbove = settings.splitAbove;
    request.keepsPaths = IsOffered(GetDlgItem(dialog, IDC_KEEP_PATHS));
    request.hasPreview = settings.showPreview != 0;
    return PlaceControls(request);
}

void LayOutControls(HWND dialog) {
    RECT client = {};
    GetClientRect(dialog, &client);
    PlaceStatusBar(static_cast<int>(client.right));
    for (const Placed& placed : PlacesNow(dialog).controls) {
        const RECT& place = placed.place;
        // Drawn anew: what a maximised window copies along may not have been drawn yet.
        SetWindowPos(GetDlgItem(dialog, placed.control), nullptr, static_cast<int>(place.left),
                     static_cast<int>(place.top), static_cast<int>(place.right - place.left),
                     static_cast<int>(place.bottom - place.top),
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    // What has moved may have left something on what now stands there.
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

RECT WorkAreaOf(const RECT& place) {
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    if (GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) return monitor.rcWork;
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

SIZE SmallestSize(HWND dialog) {
    SIZE client = SmallestClient(UnitsOf(dialog), settings.showPreview != 0);
    client.cy += HeightOfStatusBar();
    const SIZE outer = OuterSize(client, dialog, mainWindow.dpi);
    RECT place = {};
    GetWindowRect(dialog, &place);
    const RECT work = WorkAreaOf(place);
    return {std::min(outer.cx, work.right - work.left), std::min(outer.cy, work.bottom - work.top)};
}

void GiveComfortableSize(HWND dialog) {
    RECT place = {};
    GetWindowRect(dialog, &place);
    const RECT work = WorkAreaOf(place);
    const SIZE smallest = SmallestSize(dialog);
    const LONG width = std::min(smallest.cx * 2, work.right - work.left);
    const LONG height = std::min(smallest.cy * 3 / 2, work.bottom - work.top);
    SetWindowPos(dialog, nullptr, static_cast<int>((work.left + work.right - width) / 2),
                 static_cast<int>((work.top + work.bottom - height) / 2), static_cast<int>(width),
                 static_cast<int>(height), SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace verbatix
