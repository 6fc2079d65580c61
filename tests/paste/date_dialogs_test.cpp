// The real dialogs on the desktop, over another program's window, closed by the keyboard.
#include "paste/date_dialogs.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "ids.h"
#include "support/folder.h"
#include "support/keys.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

struct DateDialogs : testing::Test {
    // The program's own window, which the system would rather activate after a dialog of its thread.
    HWND own = CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200,
                               nullptr, nullptr, nullptr, nullptr);
    test::Process target{test::HelperPath(L"target_window.exe")};
    HWND targetWindow = target.WaitForVisibleWindow(L"VerbatixTestTarget");

    ~DateDialogs() override { DestroyWindow(own); }

    void SetUp() override {
        ASSERT_TRUE(targetWindow);
        ASSERT_TRUE(test::WaitFor([this] { return GetForegroundWindow() == targetWindow; }));
    }

    // A user at the keyboard while `show` is busy showing the dialog of that title.
    void WithUser(const wchar_t* title, const std::function<void(HWND)>& user,
                  const std::function<void()>& show) {
        HWND dialog = nullptr;
        bool inFront = false;
        std::thread hands([&] {
            test::WaitFor([&] { return (dialog = FindWindowW(L"#32770", title)) != nullptr; });
            inFront = test::WaitFor([&] { return GetForegroundWindow() == dialog; });
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
        EXPECT_TRUE(test::WaitFor([this] { return GetForegroundWindow() == targetWindow; }));
    }
};

void PickInCalendar(HWND dialog, WORD year, WORD month, WORD day) {
    SYSTEMTIME date = {year, month, 0, day, 0, 0, 0, 0};
    MonthCal_SetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &date);
}

std::string Text(const SYSTEMTIME& time) {
    char text[80];
    snprintf(text, sizeof text, "%d-%02d-%02d weekday %d %02d:%02d:%02d", time.wYear, time.wMonth,
             time.wDay, time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond);
    return text;
}

TEST_F(DateDialogs, CalendarGivesTheDayWhicheverWayItCloses) {
    SYSTEMTIME date = {2026, 3, 4, 5, 9, 5, 7, 0};
    WithUser(
        L"Calender ",
        [&](HWND dialog) {
            SYSTEMTIME shown = {};
            MonthCal_GetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &shown);
            EXPECT_EQ(shown.wDay, 5);
            PickInCalendar(dialog, 2024, 2, 29);
            test::PlayStroke({}, VK_RETURN);
        },
        [&] { EXPECT_TRUE(ChooseDate(date)); });
    EXPECT_EQ(Text(date), "2024-02-29 weekday 4 09:05:07");

    date = {2026, 3, 4, 5, 23, 59, 0, 0};
    WithUser(
        L"Calender ",
        [&](HWND dialog) {
            SYSTEMTIME shown = {};
            MonthCal_GetCurSel(GetDlgItem(dialog, IDC_CALENDAR), &shown);
            EXPECT_EQ(shown.wYear, 2024);  // the last choice is kept
            PickInCalendar(dialog, 2027, 1, 3);
            test::PlayStroke({}, VK_ESCAPE);
        },
        [&] { EXPECT_TRUE(ChooseDate(date)); });
    EXPECT_EQ(Text(date), "2027-01-03 weekday 0 23:59:00");
}

TEST_F(DateDialogs, TimeIsPickedByKeyboard) {
    SYSTEMTIME time = {2026, 3, 4, 5, 9, 58, 7, 300};
    WithUser(
        L"00:00",
        [&](HWND dialog) {
            EXPECT_EQ(test::WindowText(GetDlgItem(dialog, IDC_HOURS)), L"09");
            EXPECT_EQ(test::WindowText(GetDlgItem(dialog, IDC_MINUTES)), L"58");
            test::PlayStroke({}, VK_DOWN);
            test::PlayStroke({}, VK_TAB);
            test::PlayStroke({}, VK_DOWN);
            test::PlayStroke({}, VK_RETURN);
        },
        [&] { EXPECT_TRUE(ChooseTime(time)); });
    EXPECT_EQ(Text(time), "2026-03-05 weekday 4 10:59:00");
}

TEST_F(DateDialogs, TimeStaysWhenTheDialogIsDismissed) {
    SYSTEMTIME time = {2026, 3, 4, 5, 9, 58, 7, 0};
    WithUser(
        L"00:00",
        [&](HWND) {
            test::PlayStroke({}, VK_DOWN);
            test::PlayStroke({}, VK_ESCAPE);
        },
        [&] { EXPECT_FALSE(ChooseTime(time)); });
    EXPECT_EQ(Text(time), "2026-03-05 weekday 4 09:58:07");
}

}  // namespace
}  // namespace verbatix
