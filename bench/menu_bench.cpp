#include "bench/menu_bench.h"

#include <string>

#include "base/text.h"
#include "bench/measure.h"
#include "menu/menu_popup.h"
#include "support/folder.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix::bench {

using namespace verbatix::test;

namespace {

double visibleAt;

// A menu tells its owner when it stands on the screen and waits for input.
LRESULT CALLBACK SeeMessages(int code, WPARAM wParam, LPARAM lParam) noexcept {
    const auto& message = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (message.message == WM_ENTERIDLE && message.wParam == MSGF_MENU) {
        visibleAt = Now();
        EndMenu();
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

struct InFront {
    InFront() : process(HelperPath(L"target_window.exe")) {
        window = process.WaitForVisibleWindow(L"VerbatixTestTarget");
        process.WaitForIdle();
    }
    void Activate() const {
        WaitFor([this] {
            if (GetForegroundWindow() != window) SetForegroundWindow(window);
            return GetForegroundWindow() == window;
        });
        Linger(20);
    }
    Process process;
    HWND window = nullptr;
};

// The least that another program does for a menu of its own.
double TimeBare(HWND owner, const EntryList& list) {
    const double start = Now();
    const UniqueMenu menu(CreatePopupMenu());
    for (const auto& [position, slot] : list) {
        AppendMenuW(menu.Get(), MF_STRING, static_cast<UINT_PTR>(position) + 1, slot.current.label);
    }
    ShowWindow(owner, SW_SHOW);
    SetForegroundWindow(owner);
    TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD, 300, 100, owner, nullptr);
    ShowWindow(owner, SW_HIDE);
    return visibleAt - start;
}

double TimeOurs(const InFront& target, const EntryList& list) {
    const double start = Now();
    ShowHotkeyMenu({'Q', 2, nullptr, target.window}, list, {}, false, {});
    return visibleAt - start;
}

EntryList ManyEntries(int count) {
    EntryList list;
    for (int entry = 0; entry < count; ++entry) {
        const std::wstring label = Format(L"Entry %d of a menu of some length", entry);
        AddEntry(list, L"The quick brown fox jumps over the lazy dog.", label, 'Q', 2, -1, entry);
    }
    return list;
}

}  // namespace

void BenchMenu() {
    const UniqueHandle<HHOOK, UnhookWindowsHookEx> hook(
        SetWindowsHookExW(WH_CALLWNDPROC, SeeMessages, nullptr, GetCurrentThreadId()));
    const HWND owner = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr,
                                       nullptr, GetModuleHandleW(nullptr), nullptr);
    const InFront target;
    for (const int count : {10, 100, 900}) {
        const EntryList list = ManyEntries(count);
        std::vector<double> bare;
        std::vector<double> ours;
        for (int round = 0; round < 25; ++round) {
            target.Activate();
            bare.push_back(TimeBare(owner, list));
            target.Activate();
            ours.push_back(TimeOurs(target, list));
        }
        const double bareTime = Median(std::move(bare));
        const double ourTime = Median(std::move(ours));
        Row(ToBytes(Format(L"menu of %d rows: request to visible, median of 25", count), CP_UTF8).c_str(),
            ourTime, "ms");
        Row("  bare TrackPopupMenuEx of the same rows", bareTime, "ms");
        Row("  ratio", ourTime / bareTime, "(at most 1.3)");
    }
    DestroyWindow(owner);
}

}  // namespace verbatix::bench
