// Every operation on every day of 1990 to 2050 against the calendar of the standard library, asked in its
// own terms (last, weekday_last, sys_days) rather than by our way of stepping.
#include "paste/text/date_operations.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>

namespace verbatix {
namespace {

using namespace std::chrono;

SYSTEMTIME SystemTime(sys_days days) {
    const year_month_day date(days);
    const auto word = [](auto value) { return static_cast<WORD>(static_cast<unsigned>(value)); };
    return {word(static_cast<int>(date.year())),
            word(date.month()),
            word(weekday(days).c_encoding()),
            word(date.day()),
            23,
            59,
            58,
            999};
}

sys_days OnWorkday(sys_days days, int step, bool saturdayCounts) {
    const auto isOff = [&](weekday day) { return day == Sunday || (day == Saturday && !saturdayCounts); };
    while (isOff(weekday(days))) days += std::chrono::days(step);
    return days;
}

// Whole values: date, day of the week and the time of day carried along.
void ExpectDay(const SYSTEMTIME& actual, sys_days expected, sys_days today) {
    const SYSTEMTIME time = SystemTime(expected);
    EXPECT_EQ(std::memcmp(&actual, &time, sizeof time), 0)
        << "on day " << today.time_since_epoch().count() << " " << actual.wYear << "-" << actual.wMonth
        << "-" << actual.wDay;
}
#define EXPECT_DAY(actual, expected) ExpectDay(actual, expected, today)

void CheckDay(sys_days today) {
    const SYSTEMTIME now = SystemTime(today);
    const year_month_day date(today);
    const year_month thisMonth = date.year() / date.month();
    const unsigned number = static_cast<unsigned>(date.month());
    const year_month quarterEnd = date.year() / month((number + 2) / 3 * 3);
    const sys_days monthEnd = thisMonth / last;
    EXPECT_DAY(AddDays(now, 45), today + days(45));
    EXPECT_DAY(AddDays(now, -1000), today - days(1000));
    EXPECT_DAY(FirstDayOfMonth(now), thisMonth / 1);
    EXPECT_DAY(FirstDayOfNextMonth(now), (thisMonth + months(1)) / 1);
    EXPECT_DAY(LastDayOfMonth(now), monthEnd);
    EXPECT_DAY(LastDayInMonthAhead(now),
               monthEnd > today ? monthEnd : sys_days((thisMonth + months(1)) / last));
    // Quarters begin in months of their own, on purpose, and end in the calendar's.
    const unsigned first = number <= 3 ? 1 : number <= 6 ? 3 : number <= 9 ? 6 : 9;
    EXPECT_DAY(FirstDayOfQuarter(now), date.year() / first / 1);
    EXPECT_DAY(LastDayOfQuarter(now), quarterEnd / last);
    for (int day = 0; day < 7; ++day) {
        const weekday wanted(static_cast<unsigned>(day));
        const days toNext = wanted - weekday(today);
        EXPECT_DAY(NextWeekday(now, day), today + (toNext == days(0) ? days(7) : toNext));
        const sys_days inMonth = thisMonth / wanted[last];
        EXPECT_DAY(LastWeekdayInMonth(now, day),
                   inMonth > today ? inMonth : sys_days((thisMonth + months(1)) / wanted[last]));
        const sys_days inQuarter = quarterEnd / wanted[last];
        EXPECT_DAY(LastWeekdayInQuarter(now, day),
                   inQuarter > today ? inQuarter : sys_days((quarterEnd + months(3)) / wanted[last]));
    }
    for (const bool saturday : {false, true}) {
        EXPECT_DAY(WorkdayFrom(now, saturday), OnWorkday(today, 1, saturday));
        EXPECT_DAY(LastWorkdayOfMonth(now, saturday), OnWorkday(monthEnd, -1, saturday));
        EXPECT_DAY(LastWorkdayOfQuarter(now, saturday), OnWorkday(quarterEnd / last, -1, saturday));
    }
    // A week belongs to the year of its Thursday and is numbered by that year's Thursdays.
    const sys_days thursday = today + (Thursday - Monday) - (weekday(today) - Monday);
    const sys_days newYear = year_month_day(thursday).year() / January / 1;
    EXPECT_EQ(IsoWeekNumber(now.wDay, now.wMonth, now.wYear), (thursday - newYear).count() / 7 + 1);
}

TEST(DateOperations, AgreeWithTheCalendar) {
    for (sys_days day = 1990y / January / 1; day <= sys_days(2050y / December / 31) && !HasFailure();
         ++day) {
        CheckDay(day);
    }
}

TEST(DateOperations, StayWithinWhatCanBeCounted) {
    const sys_days today = 9999y / December / 31;
    const SYSTEMTIME now = SystemTime(today);
    for (const double days : {1e9, -1e9}) EXPECT_DAY(AddDays(now, days), today);
    for (const auto operation : {FirstDayOfNextMonth, LastDayInMonthAhead})
        EXPECT_DAY(operation(now), today);
    EXPECT_DAY(NextWeekday(now, 1), today);
    EXPECT_DAY(LastWeekdayInMonth(now, now.wDayOfWeek), today);
    // The time of day is carried across the beginning of automation dates.
    EXPECT_DAY(AddDays(SystemTime(1900y / January / 5), -40), 1899y / November / 26);
}

}  // namespace
}  // namespace verbatix
