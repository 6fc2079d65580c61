#include "app/fault_report.h"

#include <dbghelp.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <utility>

#include "app/fault_page.h"
#include "base/handle.h"
#include "base/product.h"
#include "base/system_library.h"

namespace verbatix {

namespace {

constexpr std::size_t kKeptReports = 3;
constexpr const wchar_t* kKinds[] = {L"crash", L"hang", L"start"};
constexpr wchar_t kExtension[] = L".txt";
constexpr wchar_t kTimeShape[] = L"00000000_000000";
constexpr std::size_t kTimeLength = std::size(kTimeShape) - 1;

struct Prepared {
    std::wstring folder;  // with "\" at its end
    UniqueModule debugHelp;
    decltype(&MiniDumpWriteDump) write = nullptr;
    LONG(NTAPI* lockLoader)(ULONG flags, ULONG* state, ULONG_PTR* cookie) = nullptr;
    LONG(NTAPI* unlockLoader)(ULONG flags, ULONG_PTR cookie) = nullptr;
};

// Never destroyed: the thread that writes goes on while the process ends.
Prepared& prepared = *new Prepared;

using FoundFiles = UniqueHandle<HANDLE, FindClose, -1>;

std::vector<std::wstring> FaultFiles(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found = {};
    const std::wstring pattern = folder + kProductName + L"_*" + kExtension;
    const FoundFiles search(FindFirstFileW(pattern.c_str(), &found));
    if (!search) return names;
    do {
        if (!TimeOfFaultFile(found.cFileName).empty()) names.emplace_back(found.cFileName);
    } while (FindNextFileW(search.Get(), &found));
    return names;
}

std::wstring DumpFileOf(const std::wstring& name) {
    return name.substr(0, name.size() - (std::size(kExtension) - 1)) + L".dmp";
}

// The minidump suspends every other thread and then needs the heap and the list of modules. The thread that
// crashed or hangs may hold either. So they are taken first, in the order in which whoever loads a library
// takes them: where the heap is not to be had, this thread waits, not the suspended rest of the program.
// The list of modules may be in other hands for a moment only.
class LocksOfTheDump {
  public:
    LocksOfTheDump() {
        constexpr int kTries = 50;
        constexpr DWORD kPause = 20;  // ms
        for (int tried = 0; !TakeLoader() && tried < kTries; ++tried) Sleep(kPause);
        if (owned_) HeapLock(GetProcessHeap());
    }
    ~LocksOfTheDump() {
        if (!owned_) return;
        HeapUnlock(GetProcessHeap());
        prepared.unlockLoader(0, cookie_);
    }
    LocksOfTheDump(const LocksOfTheDump&) = delete;
    LocksOfTheDump& operator=(const LocksOfTheDump&) = delete;
    explicit operator bool() const { return owned_; }

  private:
    bool TakeLoader() {
        constexpr ULONG kTry = 2;
        constexpr ULONG kTaken = 1;
        ULONG state = 0;
        owned_ = prepared.lockLoader && prepared.lockLoader(kTry, &state, &cookie_) >= 0 && state == kTaken;
        return owned_;
    }

    ULONG_PTR cookie_ = 0;
    bool owned_ = false;
};

// The report that is being written.
struct Writing {
    FaultFacts facts;
    wchar_t name[64] = {};
    bool isFinishing = false;
} writing;

void TellProgress() {
    if (writing.facts.progress) ReleaseSemaphore(writing.facts.progress, 1, nullptr);
}

void WriteDump() {
    const FaultFacts& facts = writing.facts;
    const LocksOfTheDump locks;
    TellProgress();
    if (!locks || !prepared.write) return;
    const UniqueFile file(CreateFileW((prepared.folder + DumpFileOf(writing.name)).c_str(), GENERIC_WRITE,
                                      0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return;
    MINIDUMP_EXCEPTION_INFORMATION exception = {facts.thread, facts.exception, FALSE};
    prepared.write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal,
                   facts.exception ? &exception : nullptr, nullptr, nullptr);
}

void DeleteOutdated() {
    for (const std::wstring& name : OutdatedFaultFiles(FaultFiles(prepared.folder), kKeptReports)) {
        DeleteFileW((prepared.folder + name).c_str());
        DeleteFileW((prepared.folder + DumpFileOf(name)).c_str());
    }
}

}  // namespace

static std::wstring StartOfName(const wchar_t* kind) {
    return std::wstring(kProductName) + L'_' + kind + L'_';
}

bool IsReportOf(Fault fault, const std::wstring& name) {
    return name.starts_with(StartOfName(kKinds[static_cast<int>(fault)]));
}

std::wstring TimeOfFaultFile(const std::wstring& name) {
    for (const wchar_t* kind : kKinds) {
        const std::wstring start = StartOfName(kind);
        if (name.size() != start.size() + kTimeLength + std::size(kExtension) - 1) continue;
        if (!name.starts_with(start) || !name.ends_with(kExtension)) continue;
        std::wstring time = name.substr(start.size(), kTimeLength);
        const bool fits = std::equal(time.begin(), time.end(), kTimeShape, [](wchar_t c, wchar_t shape) {
            return shape == L'0' ? c >= L'0' && c <= L'9' : c == shape;
        });
        if (fits) return time;
    }
    return {};
}

std::vector<std::wstring> OutdatedFaultFiles(std::vector<std::wstring> names, std::size_t kept) {
    std::erase_if(names, [](const std::wstring& name) { return TimeOfFaultFile(name).empty(); });
    std::sort(names.begin(), names.end(), [](const std::wstring& left, const std::wstring& right) {
        return TimeOfFaultFile(left) > TimeOfFaultFile(right);
    });
    names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(std::min(kept, names.size())));
    return names;
}

void PrepareFaultReports(const std::wstring& folder) {
    prepared.folder = folder + L'\\';
    prepared.debugHelp = LoadSystemLibrary(L"dbghelp.dll");
    prepared.write =
        FindFunction<decltype(&MiniDumpWriteDump)>(prepared.debugHelp.Get(), "MiniDumpWriteDump");
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    prepared.lockLoader = FindFunction<decltype(prepared.lockLoader)>(system, "LdrLockLoaderLock");
    prepared.unlockLoader = FindFunction<decltype(prepared.unlockLoader)>(system, "LdrUnlockLoaderLock");
    PrepareFaultPage(folder);
}

void WriteFaultReport(const FaultFacts& facts) {
    SYSTEMTIME now = {};
    GetSystemTime(&now);
    writing = {facts};
    _snwprintf(writing.name, std::size(writing.name) - 1, L"%ls_%ls_%04d%02d%02d_%02d%02d%02d%ls",
               kProductName, kKinds[static_cast<int>(facts.fault)], now.wYear, now.wMonth, now.wDay,
               now.wHour, now.wMinute, now.wSecond, kExtension);
    WriteFaultPage(writing.name, facts);
    FinishFaultReport();
}

void FinishFaultReport() {
    if (std::exchange(writing.isFinishing, true)) return;
    TellProgress();
    WriteDump();
    DeleteOutdated();
    TellProgress();
}

std::wstring FaultReportSince(const std::wstring& folder, const std::wstring& told) {
    std::wstring newest;
    for (const std::wstring& name : FaultFiles(folder + L'\\')) {
        if (TimeOfFaultFile(name) > TimeOfFaultFile(newest)) newest = name;
    }
    return TimeOfFaultFile(newest) > TimeOfFaultFile(told) ? newest : std::wstring();
}

}  // namespace verbatix
