// The resolution of windows, and what Windows measures by it. Windows 10 has one for each monitor, older
// ones know only that of the system; the newer functions are looked up, and nothing fails without them.
#pragma once

#include <windows.h>

namespace verbatix {

// Of a screen without scaling: 100 %.
inline constexpr UINT kOrdinaryDpi = 96;

// The resolution that a window is drawn for; that of the system for null.
UINT DpiOf(HWND window);

// Pixels of a screen without scaling as pixels at that resolution.
int Scaled(int pixels, UINT dpi);
// And back.
int Unscaled(int pixels, UINT dpi);

// As GetSystemMetrics, for that resolution.
int MetricAt(int index, UINT dpi);

// The font of messages and dialogs that the user has chosen in Windows, for that resolution.
LOGFONTW MessageFont(UINT dpi);

// Windows would else scale the controls of a dialog when it comes to another monitor.
void LeaveScalingToProgram(HWND dialog);

// The outer size of a window of that style around a client area.
SIZE OuterSize(SIZE client, HWND window, UINT dpi);

}  // namespace verbatix
