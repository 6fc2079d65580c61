#include "bench/expansion_bench.h"

#include <windows.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include "paste/placeholders.h"

namespace verbatix::bench {

static double Milliseconds() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart);
}

template <typename Work>
static double MedianMilliseconds(int rounds, Work work) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const double start = Milliseconds();
        work();
        times.push_back(Milliseconds() - start);
    }
    const auto middle = times.begin() + rounds / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

// A code every twenty characters: printing ones, names and variables in turn.
static std::wstring TextWithCodes(std::size_t length) {
    static constexpr const wchar_t* kCodes[] = {L"%DD%",   L"%MMMM%", L"%YYYY%",    L"%hh%",
                                                L"%d+3%",  L"%TAB%",  L"%mlwd%",    L"%CW%",
                                                L"%DDDD%", L"%LDF%",  L"%lwdim:5%", L"%user_name%"};
    std::wstring text;
    for (std::size_t i = 0; text.size() < length; ++i) {
        std::wstring piece = kCodes[i % std::size(kCodes)];
        piece.resize(20, L'x');
        text += piece;
    }
    text.resize(length);
    return text;
}

static void BenchTexts() {
    KnownFacts facts;
    facts.userName = L"user";
    GetLocalTime(&facts.dates.now);
    for (const std::size_t length : {1000u, 2000u, 4000u, 64000u}) {
        const std::wstring text = TextWithCodes(length);
        const double time = MedianMilliseconds(101, [&] {
            std::wstring expanded = text;
            ReplaceKnown(expanded, facts);
        });
        std::printf("expand %zu characters with %zu codes  %.4f  ms\n", length, length / 20, time);
    }
}

static void BenchSelection() {
    std::wstring selection;
    while (selection.size() < 512 * 1024) selection += L"A Megabyte of text, ÄÖÜ and Жук in it.\r\n";
    std::wstring tokens;
    for (const wchar_t* token : Placeholders()) {
        if (std::wstring_view(token).starts_with(L"%copy_text")) tokens += token;
    }
    const double time = MedianMilliseconds(11, [&] {
        std::wstring text = tokens;
        ReplaceCopiedText(text, selection);
    });
    std::printf("1 MB selection through all nine transforms  %.1f  ms\n", time);
}

void BenchExpansion() {
    std::setlocale(LC_ALL, "");
    BenchTexts();
    BenchSelection();
}

}  // namespace verbatix::bench
