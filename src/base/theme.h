// Whether the program's windows are dark, in what colours, and what Windows itself knows of that. Who wants
// them dark decides higher up (ui/look/dark_theme.h). Windows without a dark mode stay as they are; nothing
// fails. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

struct DarkColors {
    COLORREF back = RGB(32, 32, 32);
    COLORREF field = RGB(43, 43, 43);
    COLORREF button = RGB(56, 56, 56);
    COLORREF lit = RGB(77, 77, 77);  // pressed, open, chosen
    COLORREF line = RGB(96, 96, 96);
    COLORREF text = RGB(230, 230, 230);
    COLORREF faint = RGB(140, 140, 140);
    COLORREF accent = RGB(110, 170, 235);  // as background of dark text, or as text
};
inline constexpr DarkColors kDark;

bool IsDark();
void SetDark(bool dark);

// Whether the controls of Windows have a dark theme of their own; where not, we paint what they show.
bool ControlsHaveDarkTheme();

// Lets Windows draw this program's popup menus dark where its settings say so, or not any more. Does
// nothing until it is told of the build number of Windows, which is to come before the first window is
// made: the functions have no names, and their ordinals mean something else elsewhere.
void AllowDarkMenus(bool allow);
void TellBuildOfWindows(unsigned long build);

// Gives a control that theme, null for the usual one; an empty name takes every theme off it.
void SetTheme(HWND control, const wchar_t* name);

void DarkenTitleBar(HWND window, bool dark);

// WM_CTLCOLOR...: sets the colours of the control about to be drawn and returns its background; null where
// the program is not dark.
HBRUSH DarkControlColors(HDC canvas, UINT message, HWND control);

// Fills with any colour.
void FillWith(HDC canvas, const RECT& place, COLORREF color);

}  // namespace verbatix
