// Thousands of broken settings files through every reader: nothing may crash or hang.
#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/list_exchange.h"
#include "store/list_hotkeys.h"
#include "store/settings.h"

namespace verbatix {
namespace {

using test::HostileFiles;
using test::SettingsFolder;
using test::Utf16File;
using test::WriteBytes;

void ReadWithEverything(const std::string& bytes) {
    WriteBytes(settingsPath, bytes);
    settings = {};
    LoadSettings();
    LoadWindowPlace();
    LoadDisabledHotkeys();
    EntryList list;
    ListClient client;
    client.showMessage = [](HWND, const wchar_t*, const wchar_t*, UINT) WINAPI { return IDNO; };
    LoadList(list, client);
    MergeListFile(list, client, settingsPath);
    for (const auto& [position, slot] : list) {
        ASSERT_EQ(slot.current.text[4095], L'\0');
        ASSERT_EQ(slot.current.label[255], L'\0');
    }
}

class SeededFiles : public testing::TestWithParam<unsigned> {};

TEST_P(SeededFiles, NoneHangsOrCrashesTheReaders) {
    const SettingsFolder folder;
    HostileFiles files(GetParam());
    ULONGLONG slowest = 0;
    for (int i = 0; i < 400 && !HasFatalFailure(); ++i) {
        const ULONGLONG start = GetTickCount64();
        ReadWithEverything(files.Next());
        slowest = std::max(slowest, GetTickCount64() - start);
    }
    EXPECT_LT(slowest, 10000u) << "milliseconds for one small file";
    settings = {};
}

INSTANTIATE_TEST_SUITE_P(Store, SeededFiles, testing::Values(1u, 22u, 333u, 4711u, 80000u));

TEST(HostileFiles, LargeOnesAreReadInTime) {
    const SettingsFolder folder;
    const std::wstring head = L"[Program]\r\nlistcmd_count=300000000\r\n[list_text]\r\n";
    std::wstring sections;
    for (int i = 0; i < 20000; ++i) sections += L"[list_text]\r\ntext_000=Alt+A=x\r\n";
    const std::wstring files[] = {
        head + L"text_000=Alt+A=" + std::wstring(1 << 20, L'x'),
        head + std::wstring(1 << 20, L'='),
        head + L"text_000" + std::wstring(1 << 20, L'\0') + L"=Alt+A=x",
        std::wstring(L"[Program]\r\nlistcmd_count=300000000\r\n") + sections,
        L"[" + std::wstring(1 << 20, L'['),
    };
    for (const std::wstring& file : files) {
        const ULONGLONG start = GetTickCount64();
        ReadWithEverything(Utf16File(file));
        EXPECT_LT(GetTickCount64() - start, 20000u)
            << "milliseconds for the file beginning " << file.substr(0, 80);
    }
    settings = {};
}

}  // namespace
}  // namespace verbatix
