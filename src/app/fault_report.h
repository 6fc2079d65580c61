// What is written down when the program ends by a fault or stands still: a minidump beside the settings
// file and, under the same name, a few lines of text with the places in the code. The newest three pairs
// are kept. Nothing leaves the machine; a minidump holds parts of the program's memory, so also of texts.
#pragma once

#include <string>
#include <vector>

#include "app/fault_facts.h"

namespace verbatix {

// Of a name like "Verbatix_crash_20261121_194500.txt" the time as it stands in it, which is UTC, so
// that it never goes back with the end of summer time; empty for any other name.
std::wstring TimeOfFaultFile(const std::wstring& name);

// Those of the names that are reports but not among the newest `kept`.
std::vector<std::wstring> OutdatedFaultFiles(std::vector<std::wstring> names, std::size_t kept);

// Loads what writing needs, and remembers the folder. Called while all is well, on the thread that writes.
void PrepareFaultReports(const std::wstring& folder);

// Whether a report of that name is one of that fault.
bool IsReportOf(Fault fault, const std::wstring& name);

// Writes both files, the page first. There is no minidump where Windows has none or the thread holds the
// loader's lock. Where it holds the heap, the call does not return. To be called on a thread that works:
// not on the one that crashed or hangs.
void WriteFaultReport(const FaultFacts& facts);

// What is left of a report, when the page could not be finished because the stack that it shows is broken.
// On the thread that has been writing it.
void FinishFaultReport();

// The newest report in that folder that is newer than the one of that name; empty when there is none.
std::wstring FaultReportSince(const std::wstring& folder, const std::wstring& told);

}  // namespace verbatix
