// Controls painted in the colours of base/theme.h: what Windows has no dark theme for, the titles of
// columns and the status bar, and, where Windows has no dark theme at all, buttons and combo boxes too.
// Each paints the whole client area into a canvas. UI thread only.
#pragma once

#include <windows.h>

namespace verbatix {

void PaintButton(HWND button, HDC canvas, const RECT& place);
void PaintCombo(HWND combo, HDC canvas, const RECT& place);
void PaintHeader(HWND header, HDC canvas, const RECT& place);
void PaintStatusBar(HWND bar, HDC canvas, const RECT& place);

// The edge around a control, if its style has one: in the part of the window outside of the client area.
void PaintEdge(HWND control);

}  // namespace verbatix
