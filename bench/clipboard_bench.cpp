#include "bench/clipboard_bench.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "clipboard/clipboard_session.h"
#include "clipboard/saved_clipboard.h"
#include "support/desktop.h"

namespace verbatix::bench {

namespace {

constexpr std::size_t kMegabyte = 1 << 20;
constexpr int kRounds = 5;
constexpr int kCycles = 1000;
constexpr int kWarmCycles = 10;

void Row(const char* name, double value, const char* unit) {
    std::printf("%-44s %12.2f  %s\n", name, value, unit);
}

double Milliseconds() {
    LARGE_INTEGER now;
    LARGE_INTEGER frequency;
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&frequency);
    return 1000.0 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// The shortest of some rounds: what the work costs when nothing else disturbs it.
template <typename Work>
double Shortest(Work work) {
    double shortest = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        const double start = Milliseconds();
        work();
        shortest = std::min(shortest, Milliseconds() - start);
    }
    return shortest;
}

std::vector<UINT> Formats() {
    return {RegisterClipboardFormatW(L"Verbatix bench 1"), RegisterClipboardFormatW(L"Verbatix bench 2"),
            RegisterClipboardFormatW(L"Verbatix bench 3")};
}

void Fill(std::size_t bytesOfEach) {
    const std::string content(bytesOfEach, 'x');
    const ClipboardSession clipboard;
    EmptyClipboard();
    for (const UINT format : Formats())
        GiveToClipboard(format, MakeClipboardBlock(content, content.size()));
}

// The same blocks taken from the clipboard and copied once, with nothing else around it.
std::vector<UniqueGlobal> PlainSave() {
    std::vector<UniqueGlobal> copies;
    const ClipboardSession clipboard;
    for (const UINT format : Formats()) {
        const LockedBlock source(GetClipboardData(format));
        copies.emplace_back(GlobalAlloc(GMEM_FIXED, source.Bytes().size()));
        std::memcpy(copies.back().Get(), source.Bytes().data(), source.Bytes().size());
    }
    return copies;
}

// Those copies copied into blocks for the clipboard and handed over.
void PlainRestore(const std::vector<UniqueGlobal>& copies) {
    const ClipboardSession clipboard;
    EmptyClipboard();
    for (std::size_t index = 0; index < copies.size(); ++index) {
        const SIZE_T size = GlobalSize(copies[index].Get());
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(GlobalLock(block), copies[index].Get(), size);
        GlobalUnlock(block);
        SetClipboardData(Formats()[index], block);
    }
}

void BenchLargeContent() {
    Fill(64 * kMegabyte / 3);
    SavedClipboard store;
    const double plain = Shortest([] { PlainRestore(PlainSave()); });
    const double ours = Shortest([&] {
        SaveClipboard(store);
        RestoreClipboard(store);
    });
    Row("clipboard save+restore, 64 MB in 3 formats", ours, "ms");
    Row("clipboard plain copies of the same blocks", plain, "ms");
    Row("clipboard ratio (at most 2)", ours / plain, "");
}

struct Holdings {
    DWORD handles = 0;
    DWORD gdiObjects = 0;
    SIZE_T privateBytes = 0;
};

// Committed private memory, page by page: the process counters of the test system do not move with it.
SIZE_T PrivateBytes() {
    SIZE_T bytes = 0;
    MEMORY_BASIC_INFORMATION region;
    for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) == sizeof region;
         at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    }
    return bytes;
}

Holdings Now() {
    Holdings now;
    GetProcessHandleCount(GetCurrentProcess(), &now.handles);
    now.gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    now.privateBytes = PrivateBytes();
    return now;
}

void BenchManyCycles() {
    Fill(100000);
    SavedClipboard store;
    Holdings before;
    const double start = Milliseconds();
    for (int cycle = 0; cycle < kCycles; ++cycle) {
        if (cycle == kWarmCycles) before = Now();
        SaveClipboard(store);
        RestoreClipboard(store);
    }
    const double spent = Milliseconds() - start;
    const Holdings after = Now();
    Row("clipboard cycle of 300 kB", spent / kCycles, "ms");
    Row("clipboard handles more after 1,000 cycles", static_cast<double>(after.handles) - before.handles,
        "");
    Row("clipboard GDI objects more", static_cast<double>(after.gdiObjects) - before.gdiObjects, "");
    Row("clipboard private memory more",
        (static_cast<double>(after.privateBytes) - static_cast<double>(before.privateBytes)) / 1024, "kB");
}

}  // namespace

void BenchClipboard() {
    test::WaitForClipboard();
    BenchLargeContent();
    BenchManyCycles();
    const ClipboardSession clipboard;
    EmptyClipboard();
}

}  // namespace verbatix::bench
