// Thousands of broken settings files through every reader: nothing may crash or hang.
#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/list_exchange.h"
#include "store/list_hotkeys.h"
#include "store/settings.h"

namespace verbatix::test {
namespace {

void ReadWithEverything(const std::string& bytes) {
    WriteBytes(settingsPath, bytes);
    settings = {};
    LoadSettings();
    LoadWindowPlace();
    LoadDisabledHotkeys();
    EntryList list;
    const ListClient client = Client(IDNO);
    LoadList(list, client);
    ImportListFile(list, client, settingsPath);
    for (const auto& [position, slot] : list) {
        ASSERT_EQ(slot.current.text[4095], L'\0');
        ASSERT_EQ(slot.current.label[255], L'\0');
    }
}

ULONGLONG MillisecondsFor(const std::string& bytes) {
    const ULONGLONG start = GetTickCount64();
    ReadWithEverything(bytes);
    return GetTickCount64() - start;
}

TEST(HostileFiles, NoneHangsOrCrashesTheReaders) {
    const SettingsFolder folder;
    HostileFiles files(4711);
    for (int i = 0; i < 1000 && !HasFailure(); ++i) EXPECT_LT(MillisecondsFor(files.Next()), 10000u);
    const std::wstring head = L"[Program]\r\nlistcmd_count=300000000\r\n";
    const std::wstring section = L"[list_text]\r\n";
    std::wstring sections;
    for (int i = 0; i < 20000; ++i) sections += section + L"text_000=Alt+A=x\r\n";
    for (const std::wstring& file :
         {head + section + L"text_000=Alt+A=" + std::wstring(1 << 20, L'x'),
          head + section + std::wstring(1 << 20, L'='),
          head + section + L"text_000" + std::wstring(1 << 20, L'\0') + L"=Alt+A=x", head + sections,
          std::wstring(1 << 20, L'[')}) {
        EXPECT_LT(MillisecondsFor(Utf16File(file)), 20000u)
            << "for the file beginning " << file.substr(0, 80);
    }
    settings = {};
}

}  // namespace
}  // namespace verbatix::test
