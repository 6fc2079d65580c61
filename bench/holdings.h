// What a process holds, as the system's list of processes tells it: the function that asks for the handles
// of one process always answers 0 on the bench.
#pragma once

#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <cstddef>
#include <cstring>
#include <vector>

#include "base/handle.h"

namespace verbatix::bench {

struct Holdings {
    unsigned long handles = 0;
    double megabytes = 0;  // resident
};

inline double ResidentMegabytes(DWORD process) {
    const UniqueKernelObject opened(
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, process));
    PROCESS_MEMORY_COUNTERS memory = {};
    if (!opened || !GetProcessMemoryInfo(opened.Get(), &memory, sizeof memory)) return 0;
    return static_cast<double>(memory.WorkingSetSize) / (1 << 20);
}

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
            return {entry.HandleCount, ResidentMegabytes(process)};
        }
        if (entry.NextEntryOffset == 0) return {};
        at += entry.NextEntryOffset;
    }
}

}  // namespace verbatix::bench
