// The real dialogs on the desktop, over another program's window, closed by the keyboard.
#include "paste/steps/date_dialogs.h"

#include <commctrl.h>

#include <functional>
#include <thread>

#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "ids.h"
#include "paste/selection_target.h"
#include "support/keys.h"

namespace verbatix {
namespace {

struct DateDialogs : test::SelectionTarget {
    // A user at the keyboard while `show` is busy showing the dialog of that title.
    void WithUser(const wchar_t* title, const std::function<void(HWND)>& user,
                  const std::function<void()>& show) {
        HWND dialog = nullptr;
        bool inFront = false;
        std::thread hands([&] {
            test::WaitFor([&] { return (dialog = FindWindowW(L"#32770", title)) != nullptr; });
            // And the Alt press that has brought it there is over.
            inFront = test::WaitFor(
                [&] { return GetForegroundWindow() == dialog && GetAsyncKeyState(VK_MENU) >= 0; });
            if (dialog) user(dialog);
            // A dialog that got no keys must not hold up the test.
            if (dialog && !test::WaitFor([&] { return !IsWindow(dialog); })) {
                PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
            }
        });
        show();
        hands.join();
        EXPECT_TRUE(dialog) << title;
        EXPECT_TRUE(inFront) << title;
        EXPECT_TRUE(Settles());
    }
};

std::wstring Text(const SYSTEMTIME& time) {
    return Format(L"%d-%02d-%02d weekday %d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay,
                  time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond);
}

TEST_F(DateDialogs, CalendarGivesTheDayWhicheverWayItCloses) {
    WORD expectedShown = 5;  // the date preset; then the last choice, which is kept
    for (const BYTE closing : {BYTE{VK_RETURN}, BYTE{VK_ESCAPE}}) {
        SYSTEMTIME date = {2026, 3, 4, 5, 9, 5, 7, 0};
        WithUser(
            L"Calender ",
            [&](HWND dialog) {
                SYSTEMTIME shown = {};
                MonthCal_GetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &shown);
                EXPECT_EQ(shown.wDay, expectedShown);
                SYSTEMTIME picked = {2024, 2, 0, 29, 0, 0, 0, 0};
                MonthCal_SetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &picked);
                test::PlayStroke({}, closing);
            },
            [&] { EXPECT_TRUE(ChooseDate(date)); });
        EXPECT_EQ(Text(date), L"2024-02-29 weekday 4 09:05:07");
        expectedShown = 29;
    }
}

int helpAsked;

LRESULT CALLBACK CountHelp(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_HELP) ++helpAsked;
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(DateDialogs, TimeIsPickedByKeyboardOrStaysAndHelpIsAskedOfTheMainWindow) {
    helpAsked = 0;
    const HWND mainWindow =
        CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CountHelp));
    keyboardHook.client.mainWindow = mainWindow;
    for (const bool accept : {true, false}) {
        SYSTEMTIME time = {2026, 3, 4, 5, 9, 58, 7, 300};
        WithUser(
            L"00:00",
            [&](HWND dialog) {
                EXPECT_EQ(test::WindowText(GetDlgItem(dialog, IDC_HOURS)), L"09");
                EXPECT_EQ(test::WindowText(GetDlgItem(dialog, IDC_MINUTES)), L"58");
                for (const BYTE key : {BYTE{VK_F1}, BYTE{VK_DOWN}, BYTE{VK_TAB}, BYTE{VK_DOWN}})
                    test::PlayStroke({}, key);
                test::PlayStroke({}, accept ? BYTE{VK_RETURN} : BYTE{VK_ESCAPE});
            },
            [&] { EXPECT_EQ(ChooseTime(time), accept); });
        EXPECT_EQ(Text(time), accept ? L"2026-03-05 weekday 4 10:59:00" : L"2026-03-05 weekday 4 09:58:07");
    }
    EXPECT_EQ(helpAsked, 2);
    keyboardHook.client.mainWindow = nullptr;
    DestroyWindow(mainWindow);
}

}  // namespace
}  // namespace verbatix
