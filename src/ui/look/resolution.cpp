#include "ui/look/resolution.h"

#include <array>
#include <optional>
#include <utility>

#include "base/handle.h"
#include "base/screen_scale.h"
#include "ids.h"
#include "ui/look/main_layout.h"
#include "ui/look/view_look.h"
#include "ui/look/window_place.h"
#include "ui/state/main_window.h"

namespace verbatix {

static void SetIcons(HWND dialog) {
    static std::array<UniqueIcon, 2> icons;
    constexpr int kMetrics[] = {SM_CXSMICON, SM_CXICON};
    constexpr WPARAM kSizes[] = {ICON_SMALL, ICON_BIG};
    for (std::size_t index = 0; index < icons.size(); ++index) {
        const int edge = MetricAt(kMetrics[index], mainWindow.dpi);
        UniqueIcon icon(static_cast<HICON>(LoadImageW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_VERBATIX), IMAGE_ICON, edge, edge, 0)));
        if (!icon) continue;
        SendMessageW(dialog, WM_SETICON, kSizes[index], reinterpret_cast<LPARAM>(icon.Get()));
        // Only now: until then the window shows the one before.
        icons[index] = std::move(icon);
    }
}

static void MoveTo(HWND dialog, const RECT& place) {
    SetWindowPos(dialog, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetUpResolution(HWND dialog) {
    mainWindow.dpi = DpiOf(dialog);
    LeaveScalingToProgram(dialog);
    SetIcons(dialog);
}

void OnResolutionChanged(HWND dialog, UINT dpi, const RECT* suggested) {
    if (dpi == 0) return;
    RECT place = {};
    GetWindowRect(dialog, &place);
    if (const std::optional<RECT> stored = PlaceUntilSeen()) {
        place = *stored;
    } else if (suggested) {
        place = *suggested;
    } else {
        place.right = place.left + MulDiv(place.right - place.left, static_cast<int>(dpi),
                                          static_cast<int>(mainWindow.dpi));
        place.bottom = place.top + MulDiv(place.bottom - place.top, static_cast<int>(dpi),
                                          static_cast<int>(mainWindow.dpi));
    }
    mainWindow.dpi = dpi;
    ApplyViewLook(dialog);
    SetIcons(dialog);
    if (!IsZoomed(dialog)) MoveTo(dialog, PlaceOnScreen(place, WorkAreaOf(place)));
}

void KeepOnScreen(HWND dialog) {
    if (IsZoomed(dialog) || IsIconic(dialog)) return;
    RECT place = {};
    GetWindowRect(dialog, &place);
    const RECT fitting = PlaceOnScreen(place, WorkAreaOf(place));
    if (!EqualRect(&place, &fitting)) MoveTo(dialog, fitting);
}

}  // namespace verbatix
