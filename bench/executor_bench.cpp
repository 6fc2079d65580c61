#include "bench/executor_bench.h"

#include <windows.h>

#include <string>

#include "base/text.h"
#include "bench/measure.h"
#include "paste/executor.h"
#include "support/program_run.h"

namespace verbatix::bench {

using namespace verbatix::test;

namespace {

std::wstring HundredRules() {
    std::wstring entry = L"replace:";
    for (int rule = 0; rule < 100; ++rule) entry += Format(L"\\nword%02d=>WORD%02d", rule, rule);
    return entry;
}

std::wstring Subject() {
    std::wstring text;
    for (int word = 0; text.size() < std::size_t{100} * 1024; ++word)
        text += Format(L"word%02d and more text\r\n", word % 100);
    return text;
}

void Measure(const char* name, const Target& target, const std::wstring& entry, std::wstring_view selected,
             double fixedWaits) {
    std::vector<double> times;
    for (int run = 0; run < 9; ++run) {
        target.SetText(selected);
        SendMessageW(target.Edit(), EM_SETSEL, 0, -1);
        target.Activate();
        const double start = Now();
        ExecuteEntry(entry);
        times.push_back(Now() - start);
        Sleep(200);
    }
    Row((std::string(name) + ": above the fixed waits").c_str(), Median(std::move(times)) - fixedWaits,
        "ms");
    Row((std::string(name) + ": fixed waits").c_str(), fixedWaits, "ms");
}

}  // namespace

void BenchExecutor() {
    const Target target;
    Measure("plain entry", target, L"plain text", L"", 20);
    // Start 10; four pieces with 10 before and 10 before the stroke each; end 50.
    Measure("entry with three key tokens", target, L"a%send_tab%b%send_enter%c%send_tab%d", L"",
            10 + 4 * 20 + 50);
    Measure("replace: with 100 rules over 100 KB", target, HundredRules(), Subject(), 100 + 25 + 20);
}

}  // namespace verbatix::bench
