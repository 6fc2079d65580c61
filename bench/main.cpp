// Runs the benchmarks whose name contains the first argument, or all.
#include <cstdio>
#include <cstring>

#include "bench/bench.h"
#include "bench/builtin_bench.h"
#include "bench/clipboard_bench.h"
#include "bench/executor_bench.h"
#include "bench/expansion_bench.h"
#include "bench/menu_bench.h"
#include "bench/program_bench.h"
#include "bench/store_bench.h"

using namespace verbatix::bench;

static const struct {
    const char* name;
    void (*run)();
} kBenchmarks[] = {
    {"decision", BenchKeyDecision},
    {"hook", BenchHook},
    {"road", BenchHotkeyRoad},
    {"start", BenchStart},
    {"tree", BenchTree},
    {"store", BenchStore},
    {"clipboard", BenchClipboard},
    {"expansion", BenchExpansion},
    {"image", BenchImage},
    {"menu", BenchMenu},
    {"executor", BenchExecutor},
    {"window", BenchWindow},
};

int main(int count, char** arguments) {
    for (const auto& benchmark : kBenchmarks) {
        if (count > 1 && !std::strstr(benchmark.name, arguments[1])) continue;
        std::printf("-- %s\n", benchmark.name);
        benchmark.run();
    }
    return 0;
}
