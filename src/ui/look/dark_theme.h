// Whether the program's windows are dark. They follow what Windows' own settings say of programs, unless an
// option forbids it or a high-contrast scheme is on, which has colours of its own. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Gives all windows the colours that are wanted now.
void ApplyTheme();

// WM_SYSCOLORCHANGE, which only the top window gets: the theme anew, a high-contrast scheme may have come
// or gone, and the colours of the controls.
void OnSystemColorsChanged(HWND dialog);

// WM_SETTINGCHANGE: applies the theme anew when what has changed may concern it.
void OnSettingChange(LPARAM area);

}  // namespace verbatix
