// What the benchmarks share: a clock, the median, and one way to print a row.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace verbatix::bench {

// Milliseconds on the performance counter.
inline double Now() {
    LARGE_INTEGER ticks;
    LARGE_INTEGER perSecond;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&perSecond);
    return 1000.0 * static_cast<double>(ticks.QuadPart) / static_cast<double>(perSecond.QuadPart);
}

inline double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The median of `runs` timings of `work`, in milliseconds.
template <typename Work>
double MedianTime(int runs, Work work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        const double start = Now();
        work();
        times.push_back(Now() - start);
    }
    return Median(std::move(times));
}

inline void Row(const char* name, double value, const char* unit) {
    std::printf("%-58s %12.3f %s\n", name, value, unit);
    std::fflush(stdout);
}

}  // namespace verbatix::bench
