// Every operation on every day of 1990 to 2050 against the calendar of the standard library, asked in its
// own terms (last, weekday_last, sys_days) rather than by our way of stepping.
#include "paste/date_operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>

namespace verbatix {
namespace {

using namespace std::chrono;

struct Day {
    sys_days days;
    year_month_day date{days};
    year_month month = date.year() / date.month();
    unsigned Weekday() const { return weekday(days).c_encoding(); }
    year_month LastMonthOfQuarter() const {
        return date.year() / std::chrono::month((static_cast<unsigned>(date.month()) + 2) / 3 * 3);
    }
};

SYSTEMTIME SystemTime(sys_days days) {
    const year_month_day date(days);
    return {static_cast<WORD>(static_cast<int>(date.year())),
            static_cast<WORD>(static_cast<unsigned>(date.month())),
            static_cast<WORD>(weekday(days).c_encoding()),
            static_cast<WORD>(static_cast<unsigned>(date.day())),
            23,
            59,
            58,
            999};
}

std::string Text(const SYSTEMTIME& time) {
    char text[80];
    snprintf(text, sizeof text, "%d-%02d-%02d weekday %d %02d:%02d:%02d.%03d", time.wYear, time.wMonth,
             time.wDay, time.wDayOfWeek, time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
    return text;
}

sys_days LastOf(year_month month) {
    return month / last;
}

sys_days LastOf(year_month month, unsigned day) {
    return month / weekday(day)[last];
}

sys_days OnWorkday(sys_days days, int step, bool saturdayCounts) {
    const auto isOff = [&](weekday day) { return day == Sunday || (day == Saturday && !saturdayCounts); };
    while (isOff(weekday(days))) days += std::chrono::days(step);
    return days;
}

void ForEveryDay(const std::function<void(const Day&, const SYSTEMTIME&)>& check) {
    for (sys_days day = 1990y / January / 1; day <= sys_days(2050y / December / 31); day += days(1)) {
        check(Day{day}, SystemTime(day));
        if (testing::Test::HasFailure()) return;  // one day shows enough
    }
}

// Whole values: date, day of the week and the time of day carried along.
#define EXPECT_DAY(actual, expected) EXPECT_EQ(Text(actual), Text(SystemTime(expected))) << Text(now)

TEST(DateOperations, MonthEnds) {
    ForEveryDay([](const Day& day, const SYSTEMTIME& now) {
        const sys_days end = LastOf(day.month);
        EXPECT_DAY(AddDays(now, 45), day.days + days(45));
        EXPECT_DAY(AddDays(now, -1000), day.days - days(1000));
        EXPECT_DAY(FirstDayOfMonth(now), day.month / 1);
        EXPECT_DAY(FirstDayOfNextMonth(now), (day.month + months(1)) / 1);
        EXPECT_DAY(LastDayOfMonth(now), end);
        EXPECT_DAY(LastDayInMonthAhead(now), end > day.days ? end : LastOf(day.month + months(1)));
    });
}

TEST(DateOperations, QuartersBeginInTheirOwnMonthsAndEndInTheCalendars) {
    ForEveryDay([](const Day& day, const SYSTEMTIME& now) {
        const unsigned month = static_cast<unsigned>(day.date.month());
        const unsigned first = month <= 3 ? 1 : month <= 6 ? 3 : month <= 9 ? 6 : 9;
        EXPECT_DAY(FirstDayOfQuarter(now), day.date.year() / first / 1);
        EXPECT_DAY(LastDayOfQuarter(now), LastOf(day.LastMonthOfQuarter()));
    });
}

TEST(DateOperations, NextAndLastWeekdays) {
    ForEveryDay([](const Day& day, const SYSTEMTIME& now) {
        for (unsigned weekdayNumber = 0; weekdayNumber < 7; ++weekdayNumber) {
            const int number = static_cast<int>(weekdayNumber);
            const days toNext = weekday(weekdayNumber) - weekday(day.days);
            EXPECT_DAY(NextWeekday(now, number), day.days + (toNext == days(0) ? days(7) : toNext));
            const sys_days inMonth = LastOf(day.month, weekdayNumber);
            EXPECT_DAY(LastWeekdayInMonth(now, number),
                       inMonth > day.days ? inMonth : LastOf(day.month + months(1), weekdayNumber));
            const sys_days inQuarter = LastOf(day.LastMonthOfQuarter(), weekdayNumber);
            EXPECT_DAY(LastWeekdayInQuarter(now, number),
                       inQuarter > day.days ? inQuarter
                                            : LastOf(day.LastMonthOfQuarter() + months(3), weekdayNumber));
        }
    });
}

TEST(DateOperations, WorkingDays) {
    ForEveryDay([](const Day& day, const SYSTEMTIME& now) {
        for (const bool saturdayCounts : {false, true}) {
            EXPECT_DAY(WorkdayFrom(now, saturdayCounts), OnWorkday(day.days, 1, saturdayCounts));
            EXPECT_DAY(LastWorkdayOfMonth(now, saturdayCounts),
                       OnWorkday(LastOf(day.month), -1, saturdayCounts));
            EXPECT_DAY(LastWorkdayOfQuarter(now, saturdayCounts),
                       OnWorkday(LastOf(day.LastMonthOfQuarter()), -1, saturdayCounts));
        }
    });
}

TEST(DateOperations, IsoWeeks) {
    ForEveryDay([](const Day& day, const SYSTEMTIME& now) {
        // A week belongs to the year of its Thursday and is numbered by that year's Thursdays.
        const sys_days thursday = day.days + (Thursday - Monday) - (weekday(day.days) - Monday);
        const sys_days newYear = year_month_day(thursday).year() / January / 1;
        const int week = static_cast<int>((thursday - newYear).count()) / 7 + 1;
        EXPECT_EQ(IsoWeekNumber(now.wDay, now.wMonth, now.wYear), week) << Text(now);
    });
}

TEST(DateOperations, NumbersThatAreNoWeekday) {
    const SYSTEMTIME now = SystemTime(2026y / March / 5);
    for (const int number : {-1, 7, INT_MAX, INT_MIN}) {
        EXPECT_DAY(NextWeekday(now, number), 2026y / March / 5);
        EXPECT_DAY(LastWeekdayInMonth(now, number), 2026y / March / 24);
        EXPECT_DAY(LastWeekdayInQuarter(now, number), 2026y / March / 24);
    }
}

TEST(DateOperations, StayWithinTheCountableYears) {
    const SYSTEMTIME now = SystemTime(2026y / March / 5);
    for (const double days : {1e9, -1e9, double(INT_MAX), double(INT_MIN)}) {
        EXPECT_DAY(AddDays(now, days), 2026y / March / 5);
    }
    const SYSTEMTIME lastDay = SystemTime(9999y / December / 31);
    for (const auto operation :
         {FirstDayOfNextMonth, LastDayOfMonth, LastDayOfQuarter, LastDayInMonthAhead}) {
        EXPECT_DAY(operation(lastDay), 9999y / December / 31);
    }
    EXPECT_DAY(NextWeekday(lastDay, 1), 9999y / December / 31);
    EXPECT_DAY(LastWeekdayInMonth(lastDay, lastDay.wDayOfWeek), 9999y / December / 31);
}

TEST(DateOperations, CarryTheTimeOfDayAcrossTheBeginningOfAutomationDates) {
    const SYSTEMTIME now = SystemTime(1900y / January / 5);
    EXPECT_DAY(AddDays(now, -40), 1899y / November / 26);
    EXPECT_DAY(AddDays(AddDays(now, -40), 40), 1900y / January / 5);
    EXPECT_DAY(AddDays(SystemTime(1600y / March / 1), -1), 1600y / February / 29);
}

}  // namespace
}  // namespace verbatix
