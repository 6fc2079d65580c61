// The two dialogs in which the user picks a date or a time of day while an entry is being expanded. They
// are modal, stand in front of the program that is being pasted into and give the foreground back to it.
// Main thread only. The last choices are kept for the process.
#pragma once

#include <windows.h>

namespace verbatix {

// Shows the calendar on the last chosen date, else on `date`. Takes the day over into `date` whichever way
// the dialog was closed; the time of day stays. False, and nothing changed, when it could not be shown.
bool ChooseDate(SYSTEMTIME& date);

// Shows hours and minutes of `time`. With OK they go into `time`, its seconds become 0, and the result is
// true; else nothing changes.
bool ChooseTime(SYSTEMTIME& time);

}  // namespace verbatix
