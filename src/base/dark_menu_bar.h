// The menu bar of a window in the colours of base/theme.h: Windows has no dark one. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// Messages by which Windows asks a window to draw its menu bar, and a row of it; they are not documented,
// and have been the same since Windows Vista.
inline constexpr UINT WM_UAHDRAWMENU = 0x91;
inline constexpr UINT WM_UAHDRAWMENUITEM = 0x92;

void DrawMenuBarBack(HWND window, LPARAM request);
void DrawMenuBarItem(LPARAM request);

// After Windows has drawn the frame of the window: the light line below the bar, and, where it does not ask
// for it, the whole bar.
void RepairMenuBar(HWND window);

}  // namespace verbatix
