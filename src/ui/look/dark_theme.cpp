#include "ui/look/dark_theme.h"

#include "base/theme.h"
#include "base/window_dress.h"
#include "store/settings.h"

namespace verbatix {

static bool HighContrast() {
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON);
}

static bool DarkThemeWanted() {
    if (settings.disableDarkTheme != 0 || HighContrast()) return false;
    DWORD light = 1;
    DWORD size = sizeof light;
    const LSTATUS status = RegGetValueW(
        HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    return status == ERROR_SUCCESS && light == 0;
}

void ApplyTheme() {
    const bool wanted = DarkThemeWanted();
    AllowDarkMenus(settings.disableDarkTheme == 0);
    if (wanted == IsDark()) return;
    SetDark(wanted);
    DressAllWindows();
}

void OnSystemColorsChanged(HWND dialog) {
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        SendMessageW(control, WM_SYSCOLORCHANGE, 0, 0);
    }
    SetDark(DarkThemeWanted());
    DressAllWindows();
}

void OnSettingChange(LPARAM area) {
    const auto* name = reinterpret_cast<const wchar_t*>(area);
    if (!name || lstrcmpiW(name, L"ImmersiveColorSet") == 0) ApplyTheme();
}

}  // namespace verbatix
