#include "paste/text/date_operations.h"

#include <oleauto.h>

#include <tuple>

namespace verbatix {

static constexpr int kSunday = 0;
static constexpr int kSaturday = 6;

SYSTEMTIME AddDays(const SYSTEMTIME& date, double days) {
    // Counted at midnight: an automation date before 1900 runs its fraction backwards, and the time of day
    // would lose its milliseconds on the way.
    SYSTEMTIME midnight = {};
    midnight.wYear = date.wYear;
    midnight.wMonth = date.wMonth;
    midnight.wDay = date.wDay;
    DOUBLE count = 0;
    SYSTEMTIME moved = {};
    if (!SystemTimeToVariantTime(&midnight, &count) || !VariantTimeToSystemTime(count + days, &moved)) {
        return date;
    }
    moved.wHour = date.wHour;
    moved.wMinute = date.wMinute;
    moved.wSecond = date.wSecond;
    moved.wMilliseconds = date.wMilliseconds;
    return moved;
}

bool IsLaterDay(const SYSTEMTIME& a, const SYSTEMTIME& b) {
    return std::tie(a.wYear, a.wMonth, a.wDay) > std::tie(b.wYear, b.wMonth, b.wDay);
}

SYSTEMTIME FirstDayOfMonth(const SYSTEMTIME& date) {
    return AddDays(date, 1 - date.wDay);
}

SYSTEMTIME FirstDayOfNextMonth(const SYSTEMTIME& date) {
    // The 28th exists in every month, and the next month is at most four days away from it.
    SYSTEMTIME next = AddDays(date, 28 - date.wDay);
    for (int step = 0; step < 8 && next.wMonth == date.wMonth; ++step) next = AddDays(next, 1);
    return next;
}

SYSTEMTIME LastDayOfMonth(const SYSTEMTIME& date) {
    const SYSTEMTIME next = FirstDayOfNextMonth(date);
    // At the end of the last month of all there is no next one, and the steps have stopped on its last day.
    return next.wMonth == date.wMonth ? next : AddDays(next, -1);
}

SYSTEMTIME FirstDayOfQuarter(const SYSTEMTIME& date) {
    static constexpr WORD kFirstMonths[] = {1, 3, 6, 9};
    if (date.wMonth < 1 || date.wMonth > 12) return date;
    SYSTEMTIME first = date;
    first.wMonth = kFirstMonths[(date.wMonth - 1) / 3];
    first.wDay = 1;
    return AddDays(first, 0);  // sets the day of the week
}

SYSTEMTIME LastDayOfQuarter(const SYSTEMTIME& date) {
    SYSTEMTIME last = LastDayOfMonth(date);
    for (int month = 0; month < 2 && last.wMonth % 3 != 0; ++month) {
        last = LastDayOfMonth(AddDays(last, 1));
    }
    return last;
}

SYSTEMTIME NextWeekday(const SYSTEMTIME& date, int weekday) {
    SYSTEMTIME next = date;
    for (int step = 0; step < 7; ++step) {
        next = AddDays(next, 1);
        if (next.wDayOfWeek == weekday) return next;
    }
    return date;
}

static SYSTEMTIME BackToWeekday(SYSTEMTIME date, int weekday) {
    for (int step = 0; step < 7 && date.wDayOfWeek != weekday; ++step) date = AddDays(date, -1);
    return date;
}

using EndOfPeriod = SYSTEMTIME (*)(const SYSTEMTIME&);

static SYSTEMTIME LastWeekdayIn(const SYSTEMTIME& date, int weekday, EndOfPeriod endOf) {
    const SYSTEMTIME end = endOf(date);
    const SYSTEMTIME last = BackToWeekday(end, weekday);
    if (IsLaterDay(last, date)) return last;
    const SYSTEMTIME lastOfNext = BackToWeekday(endOf(AddDays(end, 1)), weekday);
    return IsLaterDay(lastOfNext, date) ? lastOfNext : date;
}

SYSTEMTIME LastWeekdayInMonth(const SYSTEMTIME& date, int weekday) {
    return LastWeekdayIn(date, weekday, LastDayOfMonth);
}

SYSTEMTIME LastWeekdayInQuarter(const SYSTEMTIME& date, int weekday) {
    return LastWeekdayIn(date, weekday, LastDayOfQuarter);
}

SYSTEMTIME WorkdayFrom(const SYSTEMTIME& date, bool saturdayCounts) {
    if (date.wDayOfWeek == kSunday) return AddDays(date, 1);
    return date.wDayOfWeek == kSaturday && !saturdayCounts ? AddDays(date, 2) : date;
}

static SYSTEMTIME WorkdayUpTo(const SYSTEMTIME& date, bool saturdayCounts) {
    const SYSTEMTIME day = date.wDayOfWeek == kSunday ? AddDays(date, -1) : date;
    return day.wDayOfWeek == kSaturday && !saturdayCounts ? AddDays(day, -1) : day;
}

SYSTEMTIME LastWorkdayOfMonth(const SYSTEMTIME& date, bool saturdayCounts) {
    return WorkdayUpTo(LastDayOfMonth(date), saturdayCounts);
}

SYSTEMTIME LastWorkdayOfQuarter(const SYSTEMTIME& date, bool saturdayCounts) {
    return WorkdayUpTo(LastDayOfQuarter(date), saturdayCounts);
}

SYSTEMTIME LastDayInMonthAhead(const SYSTEMTIME& date) {
    const SYSTEMTIME last = LastDayOfMonth(date);
    return IsLaterDay(last, date) ? last : LastDayOfMonth(AddDays(last, 1));
}

int IsoWeekNumber(int day, int month, int year) {
    // By way of the Julian day number, shifted so that a Monday ends each period of 400, 100 and 4 years.
    const int a = (14 - month) / 12;
    const int y = year + 4800 - a;
    const int m = month + 12 * a - 3;
    const int julianDay = day + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
    const int d4 = (julianDay / 7 * 7 + 31741) % 146097 % 36524 % 1461;
    const int leap = d4 / 1460;
    const int dayOfYear = (d4 - leap) % 365 + leap;
    return dayOfYear / 7 + 1;
}

}  // namespace verbatix
