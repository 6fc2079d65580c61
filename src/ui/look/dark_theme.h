// The dark theme of the main dialog. It follows what Windows' own settings say of programs, unless an
// option forbids it or a high-contrast scheme is on, which has colours of its own. Windows without a dark
// mode stay as they are; nothing fails. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Lets Windows draw this program's popup menus dark. To be called before the first window is made, with the
// build number of Windows: the functions have no names, and their ordinals mean something else elsewhere.
void AllowDarkMenus(unsigned long build);

// Gives the dialog, its title bar and its controls the colours that are wanted now; a dialog that is and
// stays light is not touched.
void ApplyTheme(HWND dialog);

// Gives a control outside the dialog the theme that is in use.
void ThemeControl(HWND control);

// WM_CTLCOLOR...: sets the colours of the control about to be drawn and returns its background; null leaves
// them to Windows.
HBRUSH DarkControlColors(HDC canvas, UINT message, HWND control);

// WM_SYSCOLORCHANGE, which only the top window gets: the theme anew, a high-contrast scheme may have come
// or gone, and the colours of the controls.
void OnSystemColorsChanged(HWND dialog);

// WM_SETTINGCHANGE: applies the theme anew when what has changed may concern it.
void OnSettingChange(HWND dialog, LPARAM area);

}  // namespace verbatix
