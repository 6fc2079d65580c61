// Bringing a window to the front from a background program, and back.
#pragma once

#include <windows.h>

#include <string>

namespace verbatix {

// Makes `window` the foreground window. Windows grants that to a background program only around a key
// press, so an Alt press is played before and after unless Alt is held anyway. A window that does not
// exist is ignored. The Alt events arrive in the queue of the new foreground window.
void BringToFront(HWND window);

// The same, and waits for it, at most half a second. False when another window is in front then.
bool GiveForeground(HWND window);

// Takes Alt strokes out of the queue of the calling thread: left there, they would end a menu or open the
// window's own. Whatever window they are for: while the focus moves, that is not settled. Other keys stay.
void TakeAltStrokesOut();

// Takes modifiers for up that are up, in what the calling thread has read of the keyboard: they may have
// gone up while another program had it, and a letter with a Ctrl that it believes down would choose no menu
// row.
void ForgetReleasedModifiers();

// Gives the foreground back, when it goes, to the window that had it when this was made: for boxes and
// dialogs in the middle of an execution, whose strokes are meant for that window.
class KeptForeground {
  public:
    KeptForeground() : window_(GetForegroundWindow()) {}
    ~KeptForeground();
    KeptForeground(const KeptForeground&) = delete;
    KeptForeground& operator=(const KeptForeground&) = delete;

  private:
    HWND window_;
};

// A message box over whatever program is in front, which has the foreground again on return.
void ShowBoxInFront(HWND owner, const std::wstring& text, const wchar_t* caption, UINT type = MB_OK);

}  // namespace verbatix
