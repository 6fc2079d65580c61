// What a process holds, as the system's list of processes tells it: the function that asks for the handles
// of one process always answers 0 on the bench.
#pragma once

#include <windows.h>

#include <winternl.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace verbatix::bench {

struct Holdings {
    unsigned long handles = 0;
    double megabytes = 0;  // resident
};

// All zero for a process that is not there.
inline Holdings HoldingsOf(DWORD process) {
    std::vector<std::byte> list(1 << 20);
    ULONG length = 0;
    if (NtQuerySystemInformation(SystemProcessInformation, list.data(), static_cast<ULONG>(list.size()),
                                 &length) < 0) {
        return {};
    }
    const std::byte* at = list.data();
    for (;;) {
        SYSTEM_PROCESS_INFORMATION entry;  // a copy: the entries are not aligned
        std::memcpy(&entry, at, sizeof entry);
        if (HandleToULong(entry.UniqueProcessId) == process) {
            return {entry.HandleCount, static_cast<double>(entry.WorkingSetSize) / (1 << 20)};
        }
        if (entry.NextEntryOffset == 0) return {};
        at += entry.NextEntryOffset;
    }
}

}  // namespace verbatix::bench
