#include "paste/steps/date_dialogs.h"

#include <commctrl.h>

#include <algorithm>

#include "base/common_controls.h"
#include "base/message_font.h"
#include "base/text.h"
#include "base/window_dress.h"
#include "hotkeys/foreground.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/text/date_operations.h"

namespace verbatix {
namespace {

constexpr UINT kShown = WM_APP;  // posted to the dialog by itself, so that it is on screen by then

SYSTEMTIME chosenDate;
SYSTEMTIME chosenTime;

// Activates the dialog although the user is working in another program: the system grants the foreground
// to whoever received the last key.
void BringDialogForward(HWND dialog) {
    if (GetForegroundWindow() == dialog) return;
    const bool altIsDown = GetKeyState(VK_MENU) < 0;
    if (!altIsDown) SendTagged({VK_MENU, KEYEVENTF_EXTENDEDKEY});
    SetForegroundWindow(dialog);
    if (altIsDown) return;
    SendTagged({VK_MENU, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP});
    // Left in the queue, the lone Alt would open the dialog's system menu.
    TakeAltStrokesOut();
}

// The main window gets it from the dialogs that it owns; these have no owner.
void AskForHelp(WPARAM wParam, LPARAM lParam) {
    const HWND mainWindow = keyboardHook.client.mainWindow;
    if (mainWindow) SendMessageW(mainWindow, WM_HELP, wParam, lParam);
}

// Makes the calendar as large as a whole month needs in this font, and the dialog around it likewise.
void FitToCalendar(HWND dialog) {
    const HWND calendar = GetDlgItem(dialog, IDC_CALENDAR);
    RECT needed = {};
    RECT given = {};
    if (!MonthCal_GetMinReqRect(calendar, &needed) || !GetClientRect(calendar, &given)) return;
    // The line with today's date may need more than the days do.
    const auto today = static_cast<LONG>(MonthCal_GetMaxTodayWidth(calendar));
    const int wider = std::max({0L, needed.right - given.right, today - given.right});
    const int higher = std::max(0L, needed.bottom - given.bottom);
    SetWindowPos(calendar, nullptr, 0, 0, given.right + wider, given.bottom + higher,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const HWND button = GetDlgItem(dialog, IDOK);
    RECT place = {};
    GetWindowRect(button, &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(button, nullptr, place.left + wider, place.top + higher, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    GetWindowRect(dialog, &place);
    SetWindowPos(dialog, nullptr, place.left - wider / 2, place.top - higher / 2,
                 place.right - place.left + wider, place.bottom - place.top + higher,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

INT_PTR CALLBACK CalendarProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_INITDIALOG:
            DressWindow(dialog);
            MonthCal_SetCurSel(GetDlgItem(dialog, IDC_CALENDAR), reinterpret_cast<SYSTEMTIME*>(lParam));
            FitToCalendar(dialog);
            PostMessageW(dialog, kShown, 0, 0);
            return TRUE;
        case kShown: BringDialogForward(dialog); return TRUE;
        case WM_HELP: return AskForHelp(wParam, lParam), TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
            MonthCal_GetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &chosenDate);
            EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        default: return FALSE;
    }
}

void FillNumbers(HWND combo, int count, int selected) {
    for (int number = 0; number < count; ++number) {
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Format(L"%02d", number).c_str()));
    }
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(selected), 0);
}

WORD SelectedNumber(HWND dialog, int combo) {
    return static_cast<WORD>(std::max<LRESULT>(0, SendDlgItemMessageW(dialog, combo, CB_GETCURSEL, 0, 0)));
}

INT_PTR CALLBACK TimeProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
        case WM_INITDIALOG: {
            DressWindow(dialog);
            const auto& time = *reinterpret_cast<const SYSTEMTIME*>(lParam);
            FillNumbers(GetDlgItem(dialog, IDC_HOURS), 24, time.wHour);
            FillNumbers(GetDlgItem(dialog, IDC_MINUTES), 60, time.wMinute);
            PostMessageW(dialog, kShown, 0, 0);
            return TRUE;
        }
        case kShown: BringDialogForward(dialog); return TRUE;
        case WM_HELP: return AskForHelp(wParam, lParam), TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return FALSE;
            chosenTime.wHour = SelectedNumber(dialog, IDC_HOURS);
            chosenTime.wMinute = SelectedNumber(dialog, IDC_MINUTES);
            EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        default: return FALSE;
    }
}

// The button that closed the dialog, or -1 when it could not be shown.
INT_PTR ShowOverForeground(int dialog, DLGPROC procedure, const SYSTEMTIME& shown) {
    RegisterCommonControls(ICC_DATE_CLASSES | ICC_STANDARD_CLASSES);
    const KeptForeground kept;
    return RunDialog(dialog, nullptr, procedure, reinterpret_cast<LPARAM>(&shown));
}

}  // namespace

bool ChooseDate(SYSTEMTIME& date) {
    const SYSTEMTIME shown = chosenDate.wYear ? chosenDate : date;
    if (ShowOverForeground(IDD_CALENDAR, CalendarProcedure, shown) <= 0 || !chosenDate.wYear) return false;
    date.wYear = chosenDate.wYear;
    date.wMonth = chosenDate.wMonth;
    date.wDay = chosenDate.wDay;
    date = AddDays(date, 0);  // sets the day of the week
    return true;
}

bool ChooseTime(SYSTEMTIME& time) {
    chosenTime = time;
    if (ShowOverForeground(IDD_TIME, TimeProcedure, time) != IDOK) return false;
    chosenTime.wSecond = 0;
    chosenTime.wMilliseconds = 0;
    time = chosenTime;
    return true;
}

}  // namespace verbatix
