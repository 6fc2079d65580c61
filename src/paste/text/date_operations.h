// Moving a date: pure functions that take a working date and return the moved one. Days are counted with
// OLE automation dates (years 100 to 9999); where a step would leave those years, the date stays where it
// is. The time of day is carried along unchanged and the day of the week is always set. Weekdays are
// numbered as in SYSTEMTIME: 0 is Sunday, 6 is Saturday.
#pragma once

#include <windows.h>

namespace verbatix {

// `date` moved by whole days, backwards when negative; `date` itself when that day cannot be expressed.
SYSTEMTIME AddDays(const SYSTEMTIME& date, double days);

// Whether the day of `a` comes after the day of `b`; the time of day does not count.
bool IsLaterDay(const SYSTEMTIME& a, const SYSTEMTIME& b);

SYSTEMTIME FirstDayOfMonth(const SYSTEMTIME& date);
SYSTEMTIME FirstDayOfNextMonth(const SYSTEMTIME& date);
SYSTEMTIME LastDayOfMonth(const SYSTEMTIME& date);

// The first of January, March, June or September: deliberately not the calendar's April, July and October.
SYSTEMTIME FirstDayOfQuarter(const SYSTEMTIME& date);

// The last of March, June, September or December: the calendar's quarters, unlike the beginning.
SYSTEMTIME LastDayOfQuarter(const SYSTEMTIME& date);

// The next day strictly after `date` that is that weekday; `date` when there is no such weekday.
SYSTEMTIME NextWeekday(const SYSTEMTIME& date, int weekday);

// The last such weekday of the month (of the quarter) or, when that day is not strictly later than `date`,
// of the following month (quarter). With a number that is no weekday the search runs out and gives the day
// one week before the end.
SYSTEMTIME LastWeekdayInMonth(const SYSTEMTIME& date, int weekday);
SYSTEMTIME LastWeekdayInQuarter(const SYSTEMTIME& date, int weekday);

// `date` moved on to Monday when it is a Sunday or, unless Saturdays count as working days, a Saturday.
SYSTEMTIME WorkdayFrom(const SYSTEMTIME& date, bool saturdayCounts);

// The last Monday-to-Friday day, or with Saturdays counted Monday-to-Saturday day.
SYSTEMTIME LastWorkdayOfMonth(const SYSTEMTIME& date, bool saturdayCounts);
SYSTEMTIME LastWorkdayOfQuarter(const SYSTEMTIME& date, bool saturdayCounts);

// The last day of the month or, on that day itself, of the following month.
SYSTEMTIME LastDayInMonthAhead(const SYSTEMTIME& date);

// The ISO 8601 week, 1 to 53, of a Gregorian date; the year it belongs to is not told.
int IsoWeekNumber(int day, int month, int year);

}  // namespace verbatix
