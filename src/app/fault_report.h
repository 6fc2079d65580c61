// What is written down when the program ends by a fault or stands still: a minidump beside the settings
// file and, under the same name, a few lines of text with the places in the code. The newest three pairs
// are kept. Nothing leaves the machine; a minidump holds parts of the program's memory, so also of texts.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace verbatix {

enum class Fault { kCrash, kHang };

// What was going on, all of it values: the report is written while the program cannot be trusted.
struct FaultFacts {
    Fault fault = Fault::kCrash;
    DWORD thread = 0;                         // which crashed, or stands still
    EXCEPTION_POINTERS* exception = nullptr;  // null for a hang
};

// "Verbatix_crash_20261121_194500.txt", "Verbatix_hang_...".
std::wstring FaultFileName(Fault fault, const SYSTEMTIME& at);

// Whether it is such a name, and its time as it stands in it; empty when not.
std::wstring TimeOfFaultFile(const std::wstring& name);

// Those of the names that are reports but not among the newest `kept`.
std::vector<std::wstring> OutdatedFaultFiles(std::vector<std::wstring> names, std::size_t kept);

// Loads what writing needs, and remembers the folder. Called while all is well, on the thread that writes.
void PrepareFaultReports(const std::wstring& folder);

// Writes both files; false where there is no minidump: the folder cannot be written, Windows has none, or a
// thread that hangs holds what it needs. To be called on a thread that works: not on the one that crashed
// or hangs.
bool WriteFaultReport(const FaultFacts& facts);

// The newest report in that folder that is newer than the one of that name; empty when there is none.
std::wstring FaultReportSince(const std::wstring& folder, const std::wstring& told);

}  // namespace verbatix
