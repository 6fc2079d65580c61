// What the mouse does on the tray icon. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

// The left button shows the window, the right one the icon's menu.
void OnTrayClick(UINT mouseMessage);

}  // namespace verbatix
