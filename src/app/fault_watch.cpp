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
// For the steps of a report. Who holds the heap at the second, perhaps the crashed thread, does not let go.
constexpr DWORD kLongestSteps[kReportSteps] = {10000, 2000, 60000};
// Of the main thread's stack, so that an overflow of it can still be reported.
constexpr ULONG kStackForReport = 0x4000;
constexpr const wchar_t* kToldKey = L"fault_told";

// Exceptions of our own, in place of ends without one: an exception of C++ that nobody caught, and abort().
constexpr DWORD kTerminated = 0xE0564201;
constexpr DWORD kAborted = 0xE0564202;
constexpr DWORD kHeapCorruption = 0xC0000374;

struct Watch {
    std::atomic<HWND> window = nullptr;
    std::atomic<bool> isStarted = false;
    DWORD mainThread = 0;
    std::atomic<DWORD> watcher = 0;
    UniqueKernelObject crashed;   // event: `facts` tell of a crash
    UniqueKernelObject progress;  // semaphore: of its report
    FaultFacts facts;
    std::atomic_flag crashing;
    std::wstring untold;  // report of an earlier run
    bool isTold = false;  // in the middle of this start
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
            return 0;
        }
        // Who stops the program in a debugger knows why it does not answer.
        const bool answers = !watch.window || AnswersWithin(kAskEvery) || IsDebuggerPresent();
        missed = answers ? 0 : missed + 1;
        if (missed == kMissedAnswersOfAHang) WriteFaultReport({Fault::kHang, watch.mainThread, nullptr});
    }
}

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception) noexcept {
    // A report that fails ends the watch alone: who hung goes on, who crashed does not wait for it.
    if (GetCurrentThreadId() == watch.watcher) {
        FinishFaultReport();
        ReleaseSemaphore(watch.progress.Get(), kReportSteps, nullptr);
        ExitThread(0);
    }
    // Another thread that crashes meanwhile waits for the end.
    if (watch.crashing.test_and_set()) Sleep(INFINITE);
    // Every key of the user's would wait for it.
    RemoveKeyboardHook();
    watch.facts = {watch.isStarted ? Fault::kCrash : Fault::kStart, GetCurrentThreadId(), exception,
                   watch.progress.Get()};
    SetEvent(watch.crashed.Get());
    for (const DWORD longest : kLongestSteps) {
        if (WaitForSingleObject(watch.progress.Get(), longest) != WAIT_OBJECT_0) break;
    }
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Windows ends a program with a damaged heap without asking the filter of unhandled exceptions.
LONG CALLBACK ReportHeapCorruption(EXCEPTION_POINTERS* exception) noexcept {
    const bool isIt = exception->ExceptionRecord->ExceptionCode == kHeapCorruption;
    return isIt ? ReportCrash(exception) : EXCEPTION_CONTINUE_SEARCH;
}

void Terminated() noexcept {
    RaiseException(kTerminated, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

void Aborted(int) {
    RaiseException(kAborted, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

void Tell(HWND owner) {
    const std::wstring path = SettingsFolder() + L'\\' + watch.untold;
    const int message = IsReportOf(Fault::kHang, watch.untold) ? text::kHung : text::kCrashed;
    if (MessageBoxW(owner, FillIn(LanguageText(message), {path}).c_str(), kProductName,
                    MB_YESNO | MB_ICONINFORMATION | MB_SETFOREGROUND) != IDYES) {
        return;
    }
    ShellExecuteW(owner, L"open", L"explorer.exe", (L"/select,\"" + path + L"\"").c_str(), nullptr,
                  SW_SHOWNORMAL);
}

}  // namespace

void StartFaultWatch() {
    watch.mainThread = GetCurrentThreadId();
    watch.crashed.Reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    watch.progress.Reset(CreateSemaphoreW(nullptr, 0, 2 * kReportSteps, nullptr));
    const UniqueKernelObject thread(CreateThread(nullptr, 0, WatchForFaults, nullptr, 0, nullptr));
    if (!thread) return;
    ULONG stack = kStackForReport;
    SetThreadStackGuarantee(&stack);
    SetUnhandledExceptionFilter(ReportCrash);
    AddVectoredExceptionHandler(0, ReportHeapCorruption);
    std::set_terminate(Terminated);
    std::signal(SIGABRT, Aborted);
}

void WatchForHangs(HWND mainThreadWindow) {
    watch.untold = FaultReportSince(SettingsFolder(), ReadProgramText(kToldKey, MAX_PATH));
    watch.window = mainThreadWindow;
}

void TellOfCrashInStart() {
    if (!IsReportOf(Fault::kStart, watch.untold)) return;
    watch.isTold = true;
    Tell(nullptr);
}

void TellOfFault(HWND owner) {
    watch.isStarted = true;
    if (watch.untold.empty()) return;
    // Only now: who ends the program in the middle of a start that fails is told again.
    WriteProgramText(kToldKey, watch.untold);
    if (!watch.isTold) Tell(owner);
}

}  // namespace verbatix
