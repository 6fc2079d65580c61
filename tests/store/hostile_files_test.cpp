// Broken settings files through every reader: nothing may crash or hang, and a section read whole holds
// what the system's single reads find.
#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/list_exchange.h"
#include "store/list_hotkeys.h"
#include "store/profile.h"
#include "store/profile_section.h"
#include "store/settings.h"

namespace verbatix::test {
namespace {

void ExpectSameAsSingleReads(const wchar_t* name, std::initializer_list<const wchar_t*> keys,
                             const std::string& bytes) {
    ProfileSection section = ReadSection(settingsPath, name);
    for (const wchar_t* key : keys) {
        for (const std::size_t size : {1u, 2u, 4u, 5u, 4096u}) {
            for (const wchar_t* old : {L"old", L" \"blank\" "}) {
                ASSERT_EQ(SectionText(section, key, size, old),
                          ReadProfileTextFrom(settingsPath, name, key, size, old))
                    << key << " of size " << size << " in\n"
                    << testing::PrintToString(bytes);
            }
        }
    }
}

TEST(ReadSection, GivesWhatSingleReadsGive) {
    const SettingsFolder folder;
    for (const wchar_t* file : kOddFiles) {
        for (const std::string& bytes : {ToBytes(file, CP_ACP), Utf16File(file)}) {
            WriteBytes(settingsPath, bytes);
            ExpectSameAsSingleReads(L"S", {L"a", L"A", L"b", L"c", L"d", L"missing"}, bytes);
        }
    }
    // Around the size of its first buffer, and far beyond.
    for (const std::size_t length : {65510u, 65530u, 65531u, 65532u, 65533u, 65534u, 65540u, 300000u}) {
        WriteBytes(settingsPath, Utf16File(L"[S]\r\na=" + std::wstring(length, L'x') + L"\r\nb=2\r\n"));
        ProfileSection section = ReadSection(settingsPath, L"S");
        EXPECT_EQ(SectionText(section, L"a", 4096).size(), 4095u) << length;
        EXPECT_EQ(SectionText(section, L"b", 16), L"2") << length;
        EXPECT_EQ(SectionKeys(section), (std::set<std::wstring, std::less<>>{L"a", L"b"})) << length;
    }
}

// How long that takes, in milliseconds.
ULONGLONG ReadWithEverything(const std::string& bytes) {
    const ULONGLONG start = GetTickCount64();
    WriteBytes(settingsPath, bytes);
    settings = {};
    LoadSettings();
    LoadWindowPlace();
    LoadDisabledHotkeys();
    EntryList list;
    const ListClient client = Client(IDNO);
    LoadList(list, client);
    ImportListFile(list, client, settingsPath);
    for (const auto& [position, slot] : list)
        EXPECT_TRUE(slot.current.text[4095] == L'\0' && slot.current.label[255] == L'\0');
    return GetTickCount64() - start;
}

TEST(HostileFiles, NoneHangsOrCrashesTheReaders) {
    const SettingsFolder folder;
    HostileFiles files(4711);
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        const std::string bytes = files.Next();
        EXPECT_LT(ReadWithEverything(bytes), 10000u);
        WriteBytes(settingsPath, bytes);
        if (i % 4 == 0)
            ExpectSameAsSingleReads(L"list_text", {L"text_000", L"text_001", L"text_1000"}, bytes);
    }
    const std::wstring head = L"[Program]\r\nlistcmd_count=300000000\r\n";
    const std::wstring section = L"[list_text]\r\n";
    std::wstring sections;
    for (int i = 0; i < 20000; ++i) sections += section + L"text_000=Alt+A=x\r\n";
    for (const std::wstring& file :
         {head + section + L"text_000=Alt+A=" + std::wstring(1 << 20, L'x'),
          head + section + std::wstring(1 << 20, L'='),
          head + section + L"text_000" + std::wstring(1 << 20, L'\0') + L"=Alt+A=x", head + sections,
          std::wstring(1 << 20, L'[')}) {
        EXPECT_LT(ReadWithEverything(Utf16File(file)), 20000u)
            << "for the file beginning " << file.substr(0, 80);
    }
    settings = {};
}

}  // namespace
}  // namespace verbatix::test
