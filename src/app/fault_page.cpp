#include "app/fault_page.h"

#include <windows.h>

#include <winternl.h>

#include <cstdarg>
#include <cwchar>
#include <iterator>

#include "app/system_version.h"
#include "base/handle.h"
#include "base/product.h"
#include "base/system_library.h"

namespace verbatix {

namespace {

struct NativeCalls {
    decltype(&NtCreateFile) createFile = nullptr;
    NTSTATUS(NTAPI* queryMemory)(HANDLE, void*, int kind, void*, SIZE_T, SIZE_T*) = nullptr;
    BOOLEAN(NTAPI* nativePath)(const wchar_t*, UNICODE_STRING*, wchar_t**, void*) = nullptr;
    decltype(&RtlFreeUnicodeString) freeString = nullptr;
};

struct Prepared {
    NativeCalls system;
    std::wstring folder;  // as the system's kernel names it, with "\" at its end
};

// Never destroyed: the thread that writes goes on while the process ends.
Prepared& prepared = *new Prepared;

// Opening by a path as programs know it takes memory from the heap.
UniqueFile CreateInFolder(const wchar_t* name) {
    wchar_t path[1024] = {};
    const int length = _snwprintf(path, std::size(path) - 1, L"%ls%ls", prepared.folder.c_str(), name);
    if (!prepared.system.createFile || prepared.folder.empty() || length < 0) return {};
    UNICODE_STRING text = {static_cast<USHORT>(length * 2), static_cast<USHORT>(length * 2), path};
    OBJECT_ATTRIBUTES attributes = {};
    InitializeObjectAttributes(&attributes, &text, OBJ_CASE_INSENSITIVE, nullptr, nullptr);
    HANDLE file = INVALID_HANDLE_VALUE;
    IO_STATUS_BLOCK status = {};
    const NTSTATUS answer = prepared.system.createFile(
        &file, GENERIC_WRITE | SYNCHRONIZE, &attributes, &status, nullptr, FILE_ATTRIBUTE_NORMAL, 0,
        FILE_OVERWRITE_IF, FILE_SYNCHRONOUS_IO_NONALERT | FILE_NON_DIRECTORY_FILE, nullptr, 0);
    return answer >= 0 ? UniqueFile(file) : UniqueFile();
}

// Written line by line: who ends in the middle leaves the lines before.
void WriteLine(HANDLE file, const wchar_t* format, ...) {
    wchar_t line[300] = {};
    std::va_list arguments;
    va_start(arguments, format);
    _vsnwprintf(line, std::size(line) - 1, format, arguments);
    va_end(arguments);
    char bytes[900] = {};
    const int count = WideCharToMultiByte(CP_UTF8, 0, line, -1, bytes, sizeof bytes, nullptr, nullptr);
    DWORD written = 0;
    if (count > 1) WriteFile(file, bytes, static_cast<DWORD>(count - 1), &written, nullptr);
    WriteFile(file, "\r\n", 2, &written, nullptr);
}

// "Verbatix.exe+0x1234", or the bare address outside of every module.
void WritePlace(HANDLE file, DWORD64 address) {
    constexpr int kNameOfMappedFile = 2;
    struct {
        UNICODE_STRING path;
        wchar_t room[600];
    } mapped = {};
    const auto place = reinterpret_cast<void*>(address);
    MEMORY_BASIC_INFORMATION memory = {};
    const bool isModule = VirtualQuery(place, &memory, sizeof memory) && memory.Type == MEM_IMAGE;
    if (!isModule || !prepared.system.queryMemory ||
        prepared.system.queryMemory(GetCurrentProcess(), place, kNameOfMappedFile, &mapped,
                                    sizeof mapped - sizeof(wchar_t), nullptr) < 0) {
        return WriteLine(file, L"  0x%I64x", address);
    }
    const wchar_t* const end = mapped.path.Buffer + mapped.path.Length / sizeof(wchar_t);
    const wchar_t* name = end;
    while (name > mapped.path.Buffer && name[-1] != L'\\') --name;
    WriteLine(file, L"  %.*ls+0x%I64x", static_cast<int>(end - name), name,
              address - reinterpret_cast<DWORD64>(memory.AllocationBase));
}

// From the innermost function outwards. The stack may be damaged: what cannot be followed ends the list.
void WriteStack(HANDLE file, CONTEXT context) {
    constexpr int kMostFrames = 60;
    for (int i = 0; i < kMostFrames; ++i) {
        WritePlace(file, context.Rip);
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
        if (context.Rsp <= before || context.Rip == 0) break;
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

}  // namespace

void PrepareFaultPage(const std::wstring& folder) {
    CurrentSystemVersion();
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    NativeCalls& calls = prepared.system;
    calls.createFile = FindFunction<decltype(calls.createFile)>(system, "NtCreateFile");
    calls.queryMemory = FindFunction<decltype(calls.queryMemory)>(system, "NtQueryVirtualMemory");
    calls.nativePath = FindFunction<decltype(calls.nativePath)>(system, "RtlDosPathNameToNtPathName_U");
    calls.freeString = FindFunction<decltype(calls.freeString)>(system, "RtlFreeUnicodeString");
    UNICODE_STRING path = {};
    if (!calls.nativePath || !calls.freeString ||
        !calls.nativePath((folder + L'\\').c_str(), &path, nullptr, nullptr))
        return;
    prepared.folder.assign(path.Buffer, path.Length / sizeof(wchar_t));
    calls.freeString(&path);
}

bool WriteFaultPage(const wchar_t* name, const FaultFacts& facts) {
    const UniqueFile file = CreateInFolder(name);
    if (!file) return false;
    const SystemVersion& system = CurrentSystemVersion();
    WriteLine(file.Get(), L"%ls %ls, Windows %lu.%lu.%lu", kProductName, kProductVersion, system.major,
              system.minor, system.build);
    if (facts.fault == Fault::kStart) WriteLine(file.Get(), L"The start had not been finished");
    if (facts.exception) {
        WriteLine(file.Get(), L"Exception 0x%08lx in thread %lu",
                  facts.exception->ExceptionRecord->ExceptionCode, facts.thread);
    } else {
        WriteLine(file.Get(), L"The main thread has not answered for 10 seconds");
    }
    WriteLine(file.Get(), L"At");
    CONTEXT context;
    if (ContextOf(facts, context)) WriteStack(file.Get(), context);
    return true;
}

}  // namespace verbatix
