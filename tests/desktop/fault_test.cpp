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

using FoundFiles = UniqueHandle<HANDLE, FindClose, -1>;

std::vector<std::wstring> Files(const std::wstring& pattern) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found = {};
    const FoundFiles search(FindFirstFileW(pattern.c_str(), &found));
    if (!search) return names;
    do names.emplace_back(found.cFileName);
    while (FindNextFileW(search.Get(), &found));
    return names;
}

std::string Content(const std::wstring& path) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
    std::string content(1 << 20, '\0');
    DWORD read = 0;
    if (!file || !ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr))
        return {};
    content.resize(read);
    return content;
}

void Write(const std::wstring& path, std::string_view content) {
    const UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
    DWORD written = 0;
    WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
}

// A thread of the program that calls nowhere.
void Crash(const ProgramRun& run) {
    constexpr ULONG_PTR kNowhere = 0x10;
    const UniqueKernelObject thread(CreateRemoteThread(run.Program().Handle(), nullptr, 0,
                                                       reinterpret_cast<LPTHREAD_START_ROUTINE>(kNowhere),
                                                       nullptr, 0, nullptr));
    ASSERT_TRUE(thread);
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

TEST(Fault, ACrashLeavesADumpOfWhichTheNextStartTellsOnce) {
    ProgramRun run;
    const std::wstring told = L"fault_told=Verbatix_crash_20010101_000002.txt\r\n";
    ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"geheim", L"geheim"}}, told)));
    for (const wchar_t* time : {L"20010101_000000", L"20010101_000001", L"20010101_000002"}) {
        Write(run.Place().File(Format(L"Verbatix_crash_%ls.dmp", time)), "old");
        Write(run.Place().File(Format(L"Verbatix_crash_%ls.txt", time)), "old");
    }
    Write(run.Place().File(L"Verbatix_crash_mine.dmp"), "not one of these");
    ASSERT_TRUE(run.Start(L"-bg"));
    Crash(run);
    EXPECT_EQ(run.Program().WaitForExit(60000), EXCEPTION_ACCESS_VIOLATION);

    std::vector<std::wstring> dumps = Files(run.Place().File(L"Verbatix_crash_2*.dmp"));
    ASSERT_EQ(dumps.size(), 3U);
    std::sort(dumps.begin(), dumps.end());
    EXPECT_EQ(dumps[0], L"Verbatix_crash_20010101_000001.dmp");
    EXPECT_EQ(Files(run.Place().File(L"Verbatix_crash_2*.txt")).size(), 3U);
    EXPECT_EQ(Files(run.Place().File(L"Verbatix_crash_mine.dmp")).size(), 1U);
    EXPECT_EQ(Content(run.Place().File(dumps[2])).substr(0, 4), "MDMP");
    const std::wstring report = dumps[2].substr(0, dumps[2].size() - 4) + L".txt";
    const std::string places = Content(run.Place().File(report));
    EXPECT_NE(places.find("Exception 0xc0000005"), std::string::npos) << places;

    ASSERT_TRUE(run.Start(L"-bg"));
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = BoxOf(run)) != nullptr; }, 30000));
    EXPECT_NE(WordsOf(box).find(report), std::wstring::npos);
    PostMessageW(box, WM_COMMAND, IDNO, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    EXPECT_EQ(run.Exit(), 1);
    wchar_t toldNow[MAX_PATH] = {};
    GetPrivateProfileStringW(L"Program", L"fault_told", L"", toldNow, MAX_PATH, run.SettingsFile().c_str());
    EXPECT_EQ(toldNow, report);
}

TEST(Fault, AMainThreadThatStandsStillIsWrittenDown) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({})));
    ASSERT_TRUE(run.Start(L"-bg"));
    // Between two messages, where it holds nothing that the watch needs.
    run.Program().WaitForIdle();
    SendMessageW(run.Frame(), WM_NULL, 0, 0);
    const DWORD mainThread = GetWindowThreadProcessId(run.Frame(), nullptr);
    const UniqueKernelObject thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, mainThread));
    ASSERT_NE(SuspendThread(thread.Get()), static_cast<DWORD>(-1));
    const auto reports = [&] { return Files(run.Place().File(L"Verbatix_hang_*.txt")); };
    EXPECT_TRUE(WaitFor([&] { return !reports().empty(); }, 60000));
    ResumeThread(thread.Get());
    ASSERT_EQ(reports().size(), 1U);
    std::wstring dump = run.Place().File(reports()[0]);
    dump.replace(dump.size() - 3, 3, L"dmp");
    EXPECT_TRUE(WaitFor([&] { return IsWritten(dump); }, 60000));
    EXPECT_EQ(run.Exit(), 1);
    const std::string places = Content(run.Place().File(reports()[0]));
    EXPECT_NE(places.find(".dll+0x"), std::string::npos) << places;
}

}  // namespace
}  // namespace verbatix::test
