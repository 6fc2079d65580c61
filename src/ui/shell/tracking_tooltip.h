// A tip with a title that stands at the mouse until the user does something else.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

struct TrackingTooltip {
    HWND window = nullptr;
    HWND owner = nullptr;
    bool shown = false;
    std::wstring text;  // must outlive the showing
};

// The one that tells what a command has done. The message loop takes it away.
extern TrackingTooltip noticeTooltip;

// Shows the tip beside the mouse, inside the screen's work area; the control is created at the first call.
// A tip that is up already gets the new text.
void ShowTrackingTooltip(TrackingTooltip& tooltip, HWND owner, const std::wstring& title,
                         std::wstring text);

// Shows what a command that was chosen in a menu has done.
void TellWhatWasDone(HWND owner, const std::wstring& title, std::wstring text);

// Takes the tip away if it is up.
void HideTrackingTooltip(TrackingTooltip& tooltip);

}  // namespace verbatix
