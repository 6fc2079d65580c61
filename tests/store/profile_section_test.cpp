#include "store/profile_section.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/profile.h"

namespace verbatix::test {
namespace {

void ExpectSameAsSingleReads(const wchar_t* name, std::initializer_list<const wchar_t*> keys,
                             const std::string& bytes) {
    ProfileSection section = ReadSection(settingsPath, name);
    for (const wchar_t* key : keys) {
        for (const std::size_t size : {1u, 2u, 4u, 5u, 4096u}) {
            for (const wchar_t* old : {L"", L"old", L" \"blank\" ", L"\"q\""}) {
                ASSERT_EQ(SectionText(section, key, size, old),
                          ReadProfileTextFrom(settingsPath, name, key, size, old))
                    << key << " of size " << size << " in\n"
                    << testing::PrintToString(bytes);
            }
        }
    }
}

TEST(ReadSection, GivesWhatSingleReadsGiveOfOrdinaryAndHostileFiles) {
    const SettingsFolder folder;
    for (const wchar_t* file : kOddFiles) {
        for (const std::string& bytes : {ToBytes(file, CP_ACP), Utf16File(file)}) {
            WriteBytes(settingsPath, bytes);
            ExpectSameAsSingleReads(L"S", {L"a", L"A", L"b", L"c", L"d", L"missing"}, bytes);
        }
    }
    HostileFiles files(20240611);
    for (int i = 0; i < 150 && !HasFatalFailure(); ++i) {
        const std::string bytes = files.Next();
        WriteBytes(settingsPath, bytes);
        ExpectSameAsSingleReads(L"list_text", {L"text_000", L"text_001", L"text_002", L"text_1000"}, bytes);
    }
}

TEST(ReadSection, HoldsSectionsLargerThanItsFirstBuffer) {
    const SettingsFolder folder;
    for (const std::size_t length : {65510u, 65530u, 65531u, 65532u, 65533u, 65534u, 65540u, 300000u}) {
        WriteBytes(settingsPath, Utf16File(L"[S]\r\na=" + std::wstring(length, L'x') + L"\r\nb=2\r\n"));
        ProfileSection section = ReadSection(settingsPath, L"S");
        EXPECT_EQ(SectionText(section, L"a", 4096).size(), 4095u) << length;
        EXPECT_EQ(SectionText(section, L"b", 16), L"2") << length;
        EXPECT_EQ(SectionKeys(section), (std::set<std::wstring, std::less<>>{L"a", L"b"})) << length;
    }
}

}  // namespace
}  // namespace verbatix::test
