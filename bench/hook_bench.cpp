#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "bench/bench.h"
#include "hotkeys/keyboard_hook.h"
#include "support/keys.h"
#include "support/message_thread.h"

namespace verbatix::bench {

static double Microseconds() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(count.QuadPart) * 1e6 / static_cast<double>(frequency.QuadPart);
}

static double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

static void AddTypicalHotkeys(HotkeyTables& tables) {
    for (unsigned i = 0; i < 300; ++i) AddHotkey(tables, '0' + i % 40, i % 10, L"an entry's text");
}

void BenchKeyDecision() {
    constexpr int batches = 101;
    constexpr int decisions = 20000;
    const auto tables = std::make_unique<HotkeyTables>();
    AddTypicalHotkeys(*tables);
    const DisabledHotkeys disabled;
    TriggerState state;
    const KeyStateReader keys = {[] { return 0U; }, [](DWORD) { return false; }};
    KBDLLHOOKSTRUCT event = {};
    std::vector<double> nanoseconds;
    unsigned passed = 0;
    for (int batch = 0; batch < batches; ++batch) {
        const double start = Microseconds();
        for (int i = 0; i < decisions; ++i) {
            event.vkCode = static_cast<DWORD>(VK_F1 + i % 24);  // on no hotkey
            passed += DecideKey(event, *tables, disabled, state, keys, 0).action == KeyAction::PassOn;
        }
        nanoseconds.push_back((Microseconds() - start) * 1000 / decisions);
    }
    if (passed != batches * decisions) std::printf("hook_decision_wrong  1  error\n");
    std::printf("hook_ordinary_key_decision  %.1f  ns\n", Median(nanoseconds));
}

static LRESULT CALLBACK PassEverything(int code, WPARAM message, LPARAM parameter) noexcept {
    return CallNextHookEx(nullptr, code, message, parameter);
}

// Median time of one key event, played from this thread, which waits for the hook's answer.
static double KeyTime() {
    constexpr int strokes = 50;
    std::vector<double> times;
    for (int i = 0; i < strokes; ++i) {
        const double start = Microseconds();
        test::PlayStroke({}, VK_F24);
        times.push_back((Microseconds() - start) / 2);
    }
    return Median(times);
}

void BenchHook() {
    constexpr int rounds = 21;
    test::MessageThread thread;
    AddTypicalHotkeys(keyboardHook.tables);
    std::vector<double> ours;
    std::vector<double> empty;
    for (int round = 0; round < rounds; ++round) {
        thread.Run([] { InstallKeyboardHook(); });
        ours.push_back(KeyTime());
        HHOOK hook = nullptr;
        thread.Run([&] {
            RemoveKeyboardHook();
            hook = SetWindowsHookExW(WH_KEYBOARD_LL, PassEverything, GetModuleHandleW(nullptr), 0);
        });
        empty.push_back(KeyTime());
        thread.Run([&] { UnhookWindowsHookEx(hook); });
    }
    std::printf("hook_key  %.1f  us\n", Median(ours));
    std::printf("hook_key_empty_hook  %.1f  us\n", Median(empty));
    std::printf("hook_key_ratio  %.3f  x\n", Median(ours) / Median(empty));
}

}  // namespace verbatix::bench
