// The whole program ended by a fault, and standing still: what it leaves behind, and what the next start
// says.
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>

#include "base/text.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

void RunInside(const ProgramRun& run, void* place, void* parameter) {
    const UniqueKernelObject thread(CreateRemoteThread(run.Program().Handle(), nullptr, 0,
                                                       reinterpret_cast<LPTHREAD_START_ROUTINE>(place),
                                                       parameter, 0, nullptr));
    ASSERT_TRUE(thread);
}

void* Function(const wchar_t* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(library), name));
}

// As the heap does when it finds itself damaged.
void CrashLikeTheHeap(const ProgramRun& run) {
    RunInside(run, Function(L"ntdll.dll", "RtlRaiseStatus"), reinterpret_cast<void*>(0xC0000374));
}

// A thread of the program that takes the heap for itself and calls nowhere then.
void CrashWithTheHeap(const ProgramRun& run) {
    constexpr BYTE kCode[] = {
        0x48, 0x83, 0xEC, 0x28,                                // sub rsp, 40
        0x65, 0x48, 0x8B, 0x04, 0x25, 0x60, 0x00, 0x00, 0x00,  // mov rax, gs:[96]
        0x48, 0x89, 0xCA,                                      // mov rdx, rcx: HeapLock
        0x48, 0x8B, 0x48, 0x30,                                // mov rcx, [rax + 48]: the heap
        0xFF, 0xD2, 0x48, 0x83, 0xC4, 0x28,                    // call rdx; add rsp, 40
        0x31, 0xC0, 0xFF, 0xE0,                                // xor eax, eax; jmp rax
    };
    const HANDLE process = run.Program().Handle();
    void* const place =
        VirtualAllocEx(process, nullptr, sizeof kCode, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
    ASSERT_TRUE(WriteProcessMemory(process, place, kCode, sizeof kCode, nullptr));
    RunInside(run, place, Function(L"kernel32.dll", "HeapLock"));
}

// Of a program whose window is hidden.
HWND BoxOf(const ProgramRun& run) {
    return FindTopWindow(L"#32770", [&](HWND window) {
        return ProcessOf(window) == run.Program().Id() && IsWindowVisible(window);
    });
}

// The words of the box that is up.
std::wstring WordsOf(HWND box) {
    std::wstring words;
    for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Static", nullptr)) != nullptr;)
        words += WindowText(child);
    return words;
}

// Whether the file is there and nobody writes it any more.
bool IsWritten(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    return file && GetFileSize(file.Get(), nullptr) > 0;
}

// Answers it with No.
void Close(HWND box) {
    PostMessageW(box, WM_COMMAND, IDNO, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
}

// The box that says what the last run left, by the words in it.
HWND BoxThatTells(const ProgramRun& run, const std::wstring& report) {
    HWND box = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (box = BoxOf(run)) != nullptr; }, 30000));
    EXPECT_NE(WordsOf(box).find(report), std::wstring::npos);
    return box;
}

TEST(Fault, ACrashInTheStartLeavesADumpOfWhichTheNextStartTellsBeforeItComesToThePlace) {
    ProgramRun run;
    const std::wstring told = L"fault_told=Verbatix_crash_20010101_000001.txt\r\n";
    ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"geheim", L"geheim"}}, told)));
    for (const wchar_t* name :
         {L"crash_20010101_000000", L"crash_20010101_000001", L"start_20010101_000002"}) {
        WriteBytes(run.Place().File(Format(L"Verbatix_%ls.dmp", name)), "old");
        WriteBytes(run.Place().File(Format(L"Verbatix_%ls.txt", name)), "old");
    }
    WriteBytes(run.Place().File(L"Verbatix_crash_mine.dmp"), "not one of these");
    const std::wstring named = L"\"-ini:" + run.SettingsFile() + L"\" -bg";
    run.StartPlain(named);
    BoxThatTells(run, L"Verbatix_start_20010101_000002.txt");
    EXPECT_FALSE(run.MainDialog());
    CrashLikeTheHeap(run);
    EXPECT_EQ(run.Program().WaitForExit(60000), 0xC0000374);

    std::vector<std::wstring> dumps = FilesIn(run.Place().Path(), L"Verbatix_start_2*.dmp");
    ASSERT_EQ(dumps.size(), 2U);
    std::sort(dumps.begin(), dumps.end());
    EXPECT_EQ(FilesIn(run.Place().Path(), L"Verbatix_crash_2*.dmp"),
              std::vector<std::wstring>{L"Verbatix_crash_20010101_000001.dmp"});
    EXPECT_EQ(FilesIn(run.Place().Path(), L"Verbatix_*_2*.txt").size(), 3U);
    EXPECT_EQ(FilesIn(run.Place().Path(), L"Verbatix_crash_mine.dmp").size(), 1U);
    EXPECT_EQ(ReadBytes(run.Place().File(dumps[1])).substr(0, 4), "MDMP");
    const std::wstring report = dumps[1].substr(0, dumps[1].size() - 4) + L".txt";
    const std::string places = ReadBytes(run.Place().File(report));
    EXPECT_NE(places.find("Exception 0xc0000374"), std::string::npos) << places;

    run.StartPlain(named);
    const HWND box = BoxThatTells(run, report);
    EXPECT_FALSE(run.MainDialog());
    Close(box);
    EXPECT_TRUE(WaitFor([&] { return run.MainDialog() != nullptr; }, 30000));
    EXPECT_EQ(run.Exit(), 1);
    wchar_t toldNow[MAX_PATH] = {};
    GetPrivateProfileStringW(L"Program", L"fault_told", L"", toldNow, MAX_PATH, run.SettingsFile().c_str());
    EXPECT_EQ(toldNow, report);
}

TEST(Fault, AMainThreadThatStandsStillIsWrittenDownAndACrashWithTheHeapInItsHandsEndsAllTheSame) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({})));
    WriteBytes(run.Place().File(L"Verbatix_hang_19990101_000000.txt"), "old");
    ASSERT_TRUE(run.Start(L"-bg"));
    Close(BoxThatTells(run, L"Verbatix_hang_19990101_000000.txt"));
    // Between two messages, where it holds nothing that the watch needs.
    run.Program().WaitForIdle();
    SendMessageW(run.Frame(), WM_NULL, 0, 0);
    const DWORD mainThread = GetWindowThreadProcessId(run.Frame(), nullptr);
    const UniqueKernelObject thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, mainThread));
    ASSERT_NE(SuspendThread(thread.Get()), static_cast<DWORD>(-1));
    const auto reports = [&] { return FilesIn(run.Place().Path(), L"Verbatix_hang_2*.txt"); };
    const auto dumps = [&] { return FilesIn(run.Place().Path(), L"Verbatix_hang_2*.dmp"); };
    EXPECT_TRUE(
        WaitFor([&] { return !dumps().empty() && IsWritten(run.Place().File(dumps()[0])); }, 60000));
    ResumeThread(thread.Get());
    SendMessageW(run.Frame(), WM_NULL, 0, 0);
    CrashWithTheHeap(run);
    EXPECT_EQ(run.Program().WaitForExit(60000), EXCEPTION_ACCESS_VIOLATION);
    ASSERT_EQ(reports().size(), 1U);
    ASSERT_EQ(dumps().size(), 1U);
    EXPECT_EQ(ReadBytes(run.Place().File(dumps()[0])).substr(0, 4), "MDMP");
    const std::vector<std::wstring> crashes = FilesIn(run.Place().Path(), L"Verbatix_crash_2*");
    ASSERT_EQ(crashes.size(), 1U) << "the heap was not to be had for a minidump";
    for (const std::wstring& name : {reports()[0], crashes[0]}) {
        const std::string places = ReadBytes(run.Place().File(name));
        EXPECT_NE(places.find(".dll+0x"), std::string::npos) << places;
    }
    EXPECT_NE(ReadBytes(run.Place().File(crashes[0])).find("Exception 0xc0000005"), std::string::npos);
}

}  // namespace
}  // namespace verbatix::test
