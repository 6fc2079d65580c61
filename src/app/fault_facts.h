// What a report of a fault is told about it.
#pragma once

#include <windows.h>

namespace verbatix {

enum class Fault {
    kCrash,
    kHang,
    kStart,  // a crash before the start was finished
};

// What was going on, all of it values: the report is written while the program cannot be trusted.
struct FaultFacts {
    Fault fault = Fault::kCrash;
    DWORD thread = 0;                         // which crashed, or stands still
    EXCEPTION_POINTERS* exception = nullptr;  // null for a hang
    // A semaphore, released thrice: when the page is written, when nothing is in the way of the minidump,
    // and at the end; or null.
    HANDLE progress = nullptr;
};

inline constexpr LONG kReportSteps = 3;

}  // namespace verbatix
