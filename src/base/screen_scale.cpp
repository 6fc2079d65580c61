#include "base/screen_scale.h"

#include "base/system_library.h"

namespace verbatix {

template <typename Function>
static Function Find(const char* name) {
    return FindFunction<Function>(GetModuleHandleW(L"user32.dll"), name);
}

static UINT SystemDpi() {
    static const UINT systemDpi = [] {
        const HDC screen = GetDC(nullptr);
        const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
        if (screen) ReleaseDC(nullptr, screen);
        return dpi > 0 ? static_cast<UINT>(dpi) : kOrdinaryDpi;
    }();
    return systemDpi;
}

UINT DpiOf(HWND window) {
    static const auto call = Find<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    const UINT dpi = call && window ? call(window) : 0;
    return dpi ? dpi : SystemDpi();
}

int Scaled(int pixels, UINT dpi) {
    return MulDiv(pixels, static_cast<int>(dpi), static_cast<int>(kOrdinaryDpi));
}

int Unscaled(int pixels, UINT dpi) {
    return MulDiv(pixels, static_cast<int>(kOrdinaryDpi), static_cast<int>(dpi));
}

int MetricAt(int index, UINT dpi) {
    static const auto call = Find<int(WINAPI*)(int, UINT)>("GetSystemMetricsForDpi");
    return call ? call(index, dpi)
                : MulDiv(GetSystemMetrics(index), static_cast<int>(dpi), static_cast<int>(SystemDpi()));
}

LOGFONTW MessageFont(UINT dpi) {
    static const auto call =
        Find<BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT)>("SystemParametersInfoForDpi");
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (call && call(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi))
        return metrics.lfMessageFont;
    if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) {
        LOGFONTW& font = metrics.lfMessageFont;
        font.lfHeight =
            MulDiv(static_cast<int>(font.lfHeight), static_cast<int>(dpi), static_cast<int>(SystemDpi()));
    } else {
        GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof metrics.lfMessageFont, &metrics.lfMessageFont);
    }
    return metrics.lfMessageFont;
}

void LeaveScalingToProgram(HWND dialog) {
    static const auto call = Find<BOOL(WINAPI*)(HWND, int, int)>("SetDialogDpiChangeBehavior");
    constexpr int kDisableAll = 1;
    if (call) call(dialog, kDisableAll, kDisableAll);
}

SIZE OuterSize(SIZE client, HWND window, UINT dpi) {
    static const auto call =
        Find<BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT)>("AdjustWindowRectExForDpi");
    RECT outer = {0, 0, client.cx, client.cy};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    const BOOL hasMenu = GetMenu(window) != nullptr;
    if (!call || !call(&outer, style, hasMenu, extended, dpi)) {
        AdjustWindowRectEx(&outer, style, hasMenu, extended);
    }
    return {outer.right - outer.left, outer.bottom - outer.top};
}

}  // namespace verbatix
