#include "bench/program_bench.h"

#include <windows.h>

#include <commctrl.h>
#include <psapi.h>

#include <string>
#include <utility>

#include "base/text.h"
#include "bench/measure.h"
#include "ids.h"
#include "store/entry.h"
#include "support/keys.h"
#include "support/program_run.h"
#include "support/wait.h"
#include "ui/views/clashes.h"

namespace verbatix::bench {

using namespace verbatix::test;

namespace {

const wchar_t kText[] = L"The quick brown fox jumps over the lazy dog.";

void PutText() {
    if (!OpenClipboard(nullptr)) return;
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof kText);
    std::copy_n(kText, std::size(kText), static_cast<wchar_t*>(GlobalLock(block)));
    GlobalUnlock(block);
    SetClipboardData(CF_UNICODETEXT, block);
    CloseClipboard();
}

void SendCtrlV() {
    PlayStroke({VK_LCONTROL}, 'V');
}

// Spins: a sleeping wait would round the figures up.
bool SpinUntilTextIsThere(const Target& target) {
    const double end = Now() + 3000;
    while (Now() < end) {
        if (SendMessageW(target.Edit(), WM_GETTEXTLENGTH, 0, 0) ==
            static_cast<LRESULT>(std::size(kText) - 1)) {
            return true;
        }
    }
    return false;
}

double TimeBare(const Target& target) {
    target.SetText(L"");
    const double start = Now();
    PutText();
    Sleep(20);
    SendCtrlV();
    SpinUntilTextIsThere(target);
    return Now() - start;
}

double TimeHotkey(const Target& target) {
    target.SetText(L"");
    PressKeyDown(VK_LCONTROL);
    PressKeyDown(VK_LMENU);
    const double start = Now();
    PressKeyDown('Q');
    SpinUntilTextIsThere(target);
    const double time = Now() - start;
    LetKeyUp('Q');
    LetKeyUp(VK_LMENU);
    LetKeyUp(VK_LCONTROL);
    return time;
}

std::vector<StoredLine> ManyLines(int count) {
    std::vector<StoredLine> lines;
    lines.reserve(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number) {
        lines.push_back({L"Ctrl-Alt+A", Format(L"entry %d of many, with a text of ordinary length", number),
                         Format(L"Group/%d", number)});
    }
    return lines;
}

double StartTime(int entries, double* residentBytes) {
    ProgramRun run;
    run.WriteSettings(SettingsText(ManyLines(entries)));
    const double start = Now();
    if (!run.Start(L"-bg")) return -1;
    const double time = Now() - start;
    Linger(300);
    PROCESS_MEMORY_COUNTERS memory = {};
    memory.cb = sizeof memory;
    GetProcessMemoryInfo(run.Program().Handle(), &memory, sizeof memory);
    *residentBytes = static_cast<double>(memory.WorkingSetSize);
    run.Exit();
    return time;
}

// Everything that the window has to paint is painted when this returns.
void Paint(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

// What one message, handled wholly, and the painting after it take; the median of several.
template <typename Prepare, typename Send>
double TimeShown(HWND dialog, Prepare prepare, Send send) {
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        prepare();
        const double start = Now();
        send(round);
        Paint(dialog);
        times.push_back(Now() - start);
        Linger(50);
    }
    return Median(std::move(times));
}

}  // namespace

void BenchWindow() {
    ProgramRun run;
    run.WriteSettings(
        SettingsText(ManyLines(10000), L"hide_info=1\r\nWinRC=50;50;950;750;1;x,y,w,h,SW\r\n"));
    if (!run.Start(L"-bg")) return;
    const HWND dialog = run.MainDialog();
    constexpr WPARAM kHide = 32782;
    const auto hide = [&] { SendMessageW(dialog, WM_COMMAND, kHide, 0); };
    const auto show = [&](int) { SendMessageW(run.Frame(), WM_TRAY_CALLBACK, 0, WM_LBUTTONDOWN); };
    const auto nothing = [] {};
    const HWND filter = GetDlgItem(dialog, IDC_FILTER);
    const HWND header = FindWindowExW(GetDlgItem(dialog, IDC_LIST), nullptr, WC_HEADERW, nullptr);
    const HWND text = GetDlgItem(dialog, IDC_TEXT);
    Row("10,000 entries: hidden window shown", TimeShown(dialog, hide, show), "ms (at most 100)");
    const auto type = [&](int round) { SendMessageW(filter, WM_CHAR, round % 2 == 0 ? L'e' : L'\b', 0); };
    Row("10,000 entries: a letter typed in the filter", TimeShown(dialog, nothing, type),
        "ms (at most 100)");
    SetWindowTextW(filter, L"");
    const auto sort = [&](int) {
        const LPARAM middle = MAKELPARAM(200, 5);
        SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, middle);
        SendMessageW(header, WM_LBUTTONUP, 0, middle);
    };
    Row("10,000 entries: a column sorted", TimeShown(dialog, nothing, sort), "ms (at most 100)");
    const auto command = [&](WPARAM id) { SendMessageW(dialog, WM_COMMAND, id, LPARAM{0xAFFE0000}); };
    command(CMD_SHOW_USES);
    const auto sortByUse = [&](int) {
        RECT client = {};
        GetClientRect(header, &client);
        const LPARAM last = MAKELPARAM(client.right - 60, 5);
        SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, last);
        SendMessageW(header, WM_LBUTTONUP, 0, last);
    };
    Row("10,000 entries: sorted by use", TimeShown(dialog, nothing, sortByUse), "ms (at most 100)");
    command(CMD_SHOW_USES);
    Row("10,000 entries: columns of uses shown or hidden",
        TimeShown(dialog, nothing, [&](int) { command(CMD_SHOW_USES); }), "ms (at most 100)");
    for (const WPARAM view : {CMD_ONLY_UNUSED, CMD_CLASHES}) {
        bool isShown = false;
        const auto leave = [&] {
            if (std::exchange(isShown, false)) command(view);
        };
        const auto enter = [&](int) {
            command(view);
            isShown = true;
        };
        Row(view == CMD_CLASHES ? "10,000 entries: clashes shown" : "10,000 entries: unused ones shown",
            TimeShown(dialog, leave, enter), "ms (at most 100)");
        leave();
    }
    const auto edit = [&](int) {
        SendMessageW(text, WM_CHAR, L'e', 0);
        SendMessageW(dialog, WM_TIMER, TIMER_EDITOR_UPDATE, 0);
    };
    Row("10,000 entries: one entry edited and saved", TimeShown(dialog, nothing, edit), "ms");
}

void BenchHotkeyRoad() {
    ProgramRun run;
    run.WriteSettings(SettingsText({{L"Ctrl-Alt+Q", kText}}));
    if (!run.Start(L"-bg")) return;
    const Target target;
    std::vector<double> bare;
    std::vector<double> ours;
    for (int round = 0; round < 50; ++round) {
        bare.push_back(TimeBare(target));
        ours.push_back(TimeHotkey(target));
        Linger(320);  // the guard against repeats
    }
    Row("hotkey down to text in the target, median of 50", Median(ours), "ms");
    Row("bare put, sleep 20 ms, Ctrl+V, median of 50", Median(bare), "ms");
    Row("hotkey road: ratio to the bare program", Median(ours) / Median(bare), "(at most 1.15)");
}

void BenchStart() {
    const int counts[] = {10, 1000, 10000};
    double times[3] = {};
    double memory[3] = {};
    for (int index = 0; index < 3; ++index) {
        std::vector<double> runs(5);
        for (double& run : runs) run = StartTime(counts[index], &memory[index]);
        times[index] = Median(std::move(runs));
    }
    Row("start to hook ready, 10 entries", times[0], "ms");
    Row("start to hook ready, 1,000 entries", times[1], "ms");
    Row("start: 1,000 entries more than 10", times[1] - times[0], "ms (at most 300)");
    Row("start to hook ready, 10,000 entries", times[2], "ms");
    Row("resident when idle, 10 entries", memory[0] / 1e6, "MB");
    Row("resident when idle, 1,000 entries", memory[1] / 1e6, "MB");
    Row("resident per entry (10,000 against 10)", (memory[2] - memory[0]) / 9990 / 1000, "kB");
}

void BenchTree() {
    ProgramRun run;
    run.WriteSettings(SettingsText(ManyLines(10000)));
    if (!run.Start()) return;
    const HWND dialog = run.MainDialog();
    const HWND filter = GetDlgItem(dialog, IDC_FILTER);
    Linger(500);
    const auto time = [dialog](UINT message, WPARAM wParam) {
        const double start = Now();
        SendMessageW(dialog, message, wParam, 0);
        UpdateWindow(dialog);
        SendMessageW(dialog, WM_NULL, 0, 0);
        return Now() - start;
    };
    constexpr WPARAM kIgnoreCase = 3000;
    const double start = Now();
    SendMessageW(dialog, WM_COMMAND, kIgnoreCase, static_cast<LPARAM>(0xAFFE0000));
    const double setting = Now() - start;
    Row("a setting written beside 10,000 entries", setting, "ms");
    Row("tree of 10,000 entries shown, without that", time(WM_COMMAND, CMD_SHOW_TREE) - setting, "ms");
    const auto narrow = [&](const wchar_t* text) {
        const double begin = Now();
        SendMessageW(filter, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(dialog, WM_NULL, 0, 0);
        return Now() - begin;
    };
    Row("tree of 10,000 entries narrowed by a letter", narrow(L"9"), "ms");
    Row("by one more", narrow(L"99"), "ms");
    Row("widened again", narrow(L""), "ms");
    Row("tree of 10,000 entries opened", time(WM_COMMAND, CMD_EXPAND_ALL), "ms");
    Row("open tree narrowed by a letter", narrow(L"9"), "ms");
    Row("tree closed", time(WM_COMMAND, CMD_COLLAPSE_ALL), "ms");
}

}  // namespace verbatix::bench
