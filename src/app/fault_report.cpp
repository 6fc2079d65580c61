#include "app/fault_report.h"

#include <dbghelp.h>

#include <algorithm>
#include <cstdio>
#include <optional>

#include "app/system_version.h"
#include "base/handle.h"
#include "base/product.h"
#include "base/system_library.h"
#include "base/text.h"

namespace verbatix {

namespace {

constexpr std::size_t kKeptReports = 3;
constexpr const wchar_t* kKinds[] = {L"crash", L"hang"};
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

// The minidump suspends every other thread and then needs the heap and the list of modules. A thread that
// hangs may hold either; then there is no dump, rather than two threads that wait for each other.
class LocksOfTheDump {
  public:
    LocksOfTheDump() {
        constexpr ULONG kTry = 2;
        constexpr ULONG kTaken = 1;
        ULONG state = 0;
        owned_ = prepared.lockLoader && prepared.lockLoader(kTry, &state, &cookie_) >= 0 && state == kTaken;
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
    ULONG_PTR cookie_ = 0;
    bool owned_ = false;
};

bool WriteDump(const std::wstring& path, const FaultFacts& facts) {
    if (!prepared.write) return false;
    std::optional<LocksOfTheDump> locks;
    if (!facts.exception && !locks.emplace()) return false;
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return false;
    MINIDUMP_EXCEPTION_INFORMATION exception = {facts.thread, facts.exception, FALSE};
    return prepared.write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal,
                          facts.exception ? &exception : nullptr, nullptr, nullptr);
}

// "Verbatix.exe+0x1234", or the bare address outside of every module.
void AppendPlace(std::string& lines, DWORD64 address) {
    HMODULE module = nullptr;
    wchar_t path[MAX_PATH] = {};
    constexpr DWORD kHow =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    char place[MAX_PATH + 40] = {};
    if (GetModuleHandleExW(kHow, reinterpret_cast<LPCWSTR>(address), &module) &&
        GetModuleFileNameW(module, path, MAX_PATH)) {
        const wchar_t* name = wcsrchr(path, L'\\');
        std::snprintf(place, sizeof place, "  %ls+0x%llx\r\n", name ? name + 1 : path,
                      static_cast<unsigned long long>(address - reinterpret_cast<DWORD64>(module)));
    } else {
        std::snprintf(place, sizeof place, "  0x%llx\r\n", static_cast<unsigned long long>(address));
    }
    lines += place;
}

// From the innermost function outwards. The stack may be damaged: what cannot be followed ends the list.
void AppendStack(std::string& lines, CONTEXT context) {
    constexpr int kMostFrames = 60;
    for (int i = 0; i < kMostFrames && context.Rip != 0; ++i) {
        AppendPlace(lines, context.Rip);
        DWORD64 base = 0;
        const auto function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
        const DWORD64 before = context.Rsp;
        if (function) {
            void* handlerData = nullptr;
            DWORD64 frame = 0;
            RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData, &frame,
                             nullptr);
        } else if (i > 0) {
            break;
        } else {  // a function without a frame, or a call of nowhere: the caller stands on the stack
            SIZE_T read = 0;
            if (!ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<void*>(context.Rsp), &context.Rip,
                                   sizeof context.Rip, &read)) {
                break;
            }
            context.Rsp += sizeof context.Rip;
        }
        if (context.Rsp <= before) break;
    }
}

bool ContextOf(const FaultFacts& facts, CONTEXT& context) {
    if (facts.exception) {
        context = *facts.exception->ContextRecord;
        return true;
    }
    const UniqueKernelObject thread(OpenThread(
        THREAD_GET_CONTEXT | THREAD_SUSPEND_RESUME | THREAD_QUERY_INFORMATION, FALSE, facts.thread));
    if (!thread || SuspendThread(thread.Get()) == static_cast<DWORD>(-1)) return false;
    context = {};
    context.ContextFlags = CONTEXT_FULL;
    const bool known = GetThreadContext(thread.Get(), &context);
    ResumeThread(thread.Get());
    return known;
}

void WriteText(const std::wstring& path, const FaultFacts& facts) {
    const SystemVersion& system = CurrentSystemVersion();
    std::string lines = ToBytes(Format(L"%ls %ls, Windows %lu.%lu.%lu\r\n", kProductName, kProductVersion,
                                       system.major, system.minor, system.build),
                                CP_UTF8);
    if (facts.exception) {
        const EXCEPTION_RECORD& record = *facts.exception->ExceptionRecord;
        lines += ToBytes(Format(L"Exception 0x%08lx in thread %lu\r\n", record.ExceptionCode, facts.thread),
                         CP_UTF8);
    } else {
        lines += "The main thread has not answered for 10 seconds\r\n";
    }
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) return;
    DWORD written = 0;
    WriteFile(file.Get(), lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
    lines = "At\r\n";
    CONTEXT context;
    if (ContextOf(facts, context)) AppendStack(lines, context);
    WriteFile(file.Get(), lines.data(), static_cast<DWORD>(lines.size()), &written, nullptr);
}

void DeleteOutdated() {
    for (const std::wstring& name : OutdatedFaultFiles(FaultFiles(prepared.folder), kKeptReports)) {
        DeleteFileW((prepared.folder + name).c_str());
        DeleteFileW((prepared.folder + DumpFileOf(name)).c_str());
    }
}

}  // namespace

std::wstring FaultFileName(Fault fault, const SYSTEMTIME& at) {
    return Format(L"%ls_%ls_%04d%02d%02d_%02d%02d%02d%ls", kProductName, kKinds[static_cast<int>(fault)],
                  at.wYear, at.wMonth, at.wDay, at.wHour, at.wMinute, at.wSecond, kExtension);
}

std::wstring TimeOfFaultFile(const std::wstring& name) {
    for (const wchar_t* kind : kKinds) {
        const std::wstring start = std::wstring(kProductName) + L"_" + kind + L"_";
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
    CurrentSystemVersion();
}

bool WriteFaultReport(const FaultFacts& facts) {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    const std::wstring name = FaultFileName(facts.fault, now);
    // Of a crash the dump first: the stack that the lines are made of may be what is broken.
    bool written = facts.exception && WriteDump(prepared.folder + DumpFileOf(name), facts);
    WriteText(prepared.folder + name, facts);
    if (!facts.exception) written = WriteDump(prepared.folder + DumpFileOf(name), facts);
    DeleteOutdated();
    return written;
}

std::wstring FaultReportSince(const std::wstring& folder, const std::wstring& told) {
    std::wstring newest;
    for (const std::wstring& name : FaultFiles(folder + L'\\')) {
        if (TimeOfFaultFile(name) > TimeOfFaultFile(newest)) newest = name;
    }
    return TimeOfFaultFile(newest) > TimeOfFaultFile(told) ? newest : std::wstring();
}

}  // namespace verbatix
