#include "app/fault_watch.h"

#include <shellapi.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <exception>

#include "app/fault_report.h"
#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/keyboard_hook.h"
#include "store/profile.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"

namespace verbatix {

namespace {

constexpr DWORD kAskEvery = 1000;  // milliseconds
constexpr int kMissedAnswersOfAHang = 10;
constexpr DWORD kLongestReport = 60000;
// Of the main thread's stack, so that an overflow of it can still be reported.
constexpr ULONG kStackForReport = 0x4000;
constexpr const wchar_t* kToldKey = L"fault_told";

// Exceptions of our own, in place of ends without one: an exception of C++ that nobody caught, and abort().
constexpr DWORD kTerminated = 0xE0564201;
constexpr DWORD kAborted = 0xE0564202;

struct Watch {
    HWND window = nullptr;
    DWORD mainThread = 0;
    std::atomic<DWORD> watcher = 0;
    UniqueKernelObject crashed;   // event: `facts` tell of a crash
    UniqueKernelObject reported;  // event: the report is written
    FaultFacts facts;
    std::atomic_flag crashing;
    std::wstring untold;  // report of an earlier run
};

// Never destroyed: its thread goes on while the process ends.
Watch& watch = *new Watch;

std::wstring SettingsFolder() {
    return settingsPath.substr(0, settingsPath.rfind(L'\\'));
}

// Asked again and again instead of once for all the time: of the seconds that the machine slept only one
// counts.
bool AnswersWithin(DWORD milliseconds) {
    DWORD_PTR answer = 0;
    return SendMessageTimeoutW(watch.window, WM_NULL, 0, 0, SMTO_NORMAL, milliseconds, &answer) ||
           GetLastError() != ERROR_TIMEOUT;
}

DWORD WINAPI WatchForFaults(void*) noexcept {
    watch.watcher = GetCurrentThreadId();
    PrepareFaultReports(SettingsFolder());
    int missed = 0;
    for (;;) {
        const DWORD pause = missed > 0 ? 0 : kAskEvery;
        if (WaitForSingleObject(watch.crashed.Get(), pause) == WAIT_OBJECT_0) {
            WriteFaultReport(watch.facts);
            SetEvent(watch.reported.Get());
            return 0;
        }
        // Who stops the program in a debugger knows why it does not answer.
        const bool answers = AnswersWithin(kAskEvery) || IsDebuggerPresent();
        missed = answers ? 0 : missed + 1;
        if (missed == kMissedAnswersOfAHang) WriteFaultReport({Fault::kHang, watch.mainThread, nullptr});
    }
}

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception) noexcept {
    // A report that fails ends the watch alone: who hung goes on, who crashed does not wait for it.
    if (GetCurrentThreadId() == watch.watcher) {
        SetEvent(watch.reported.Get());
        ExitThread(0);
    }
    // Another thread that crashes meanwhile waits for the end.
    if (watch.crashing.test_and_set()) Sleep(INFINITE);
    // Every key of the user's would wait for it.
    RemoveKeyboardHook();
    watch.facts = {Fault::kCrash, GetCurrentThreadId(), exception};
    SetEvent(watch.crashed.Get());
    WaitForSingleObject(watch.reported.Get(), kLongestReport);
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

void Terminated() noexcept {
    RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

void Aborted(int) {
    RaiseException(kAborted, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

}  // namespace

void StartFaultWatch(HWND mainThreadWindow) {
    watch.window = mainThreadWindow;
    watch.untold = FaultReportSince(SettingsFolder(), ReadProgramText(kToldKey, MAX_PATH));
    watch.mainThread = GetCurrentThreadId();
    watch.crashed.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    watch.reported.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const UniqueKernelObject thread(CreateThread(nullptr, 0, WatchForFaults, nullptr, 0, nullptr));
    if (!thread) return;
    ULONG stack = kStackForReport;
    SetThreadStackGuarantee(&stack);
    SetUnhandledExceptionFilter(ReportCrash);
    std::set_terminate(Terminated);
    std::signal(SIGABRT, Aborted);
}

void TellOfFault(HWND owner) {
    const std::wstring& report = watch.untold;
    if (report.empty()) return;
    WriteProgramText(kToldKey, report);
    const std::wstring path = SettingsFolder() + L'\\' + report;
    const int message = report.find(L"_crash_") != std::wstring::npos ? text::kCrashed : text::kHung;
    if (MessageBoxW(owner, FillIn(LanguageText(message), {path}).c_str(), kProductName,
                    MB_YESNO | MB_ICONINFORMATION) != IDYES) {
        return;
    }
    ShellExecuteW(owner, L"open", L"explorer.exe", (L"/select,\"" + path + L"\"").c_str(), nullptr,
                  SW_SHOWNORMAL);
}

}  // namespace verbatix
