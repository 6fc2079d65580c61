#include "store/profile_section.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/profile.h"
#include "store/section_lines.h"

namespace verbatix {
namespace {

using test::HostileFiles;
using test::ReadBytes;
using test::SettingsFolder;
using test::Utf16File;
using test::WriteBytes;

// Ordinary files, and what hands and other programs make of them.
const wchar_t* const kFiles[] = {L"",
                                 L"[S]",
                                 L"[S]\r\na=1\r\nb=2",
                                 L"[S]\na=1\nb=2\n",
                                 L"[S]\ra=1\rb=2\r",
                                 L"[other]\r\na=9\r\n[S]\r\na=1\r\n[more]\r\nb=9\r\n",
                                 L"[S]\r\na=1\r\n[other]\r\n[S]\r\nb=2\r\na=3\r\n",
                                 L"[S]\r\na=\"1\"\r\nb='2'\r\nc=\"3'\r\nd=\"\r\n",
                                 L"[S]\r\na=  1  \r\n b = 2\r\nc\t=\t3\t\r\n",
                                 L"[S]\r\na=\"x\r\nb=x\"\r\nc='x'y'\r\nd=\"\"x\"\"\r\n",
                                 L"[S]\r\na=\" x \"\r\nb= ' ' \r\nc=\t\"\tx\t\"\t\r\nd=\" \r\n",
                                 L"[S]\r\na=\"12\"\r\nb=\"123\"\r\nc='1234'\r\nd=\"12345\"\r\n",
                                 L"[S]\r\na=12 4\r\nb=123 5\r\nc='12 4'\r\nd=\"12345\r\n",
                                 L"[S]\r\n\"a\"=1\r\n'b=2\r\nc\"=3\r\n a =4\r\n",
                                 L"[S]\r\n; a=1\r\n;b=2\r\n#c=3\r\nd=4;comment\r\n",
                                 L"[S]\r\na\r\nb=\r\n=c\r\na=1\r\n",
                                 L"a=0\r\n[S]\r\na=1\r\n",
                                 L" [S] \r\na=1\r\n",
                                 L"[S\r\na=1\r\n",
                                 L"[S]]\r\na=1\r\n",
                                 L"[S] ; x\r\na=1\r\n",
                                 L"[S]\r\na=\xe4\xf6\r\nb=\xa0x\xa0\r\n"};

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
    for (const wchar_t* file : kFiles) {
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

TEST(Section, OfAFileThatIsNoneIsEmptyAndCannotBeWritten) {
    const SettingsFolder folder;
    for (const std::wstring& path : {folder.Path(), std::wstring(L"Q:\\x.ini"), std::wstring(),
                                     folder.File(std::wstring(300, L'x'))}) {
        settingsPath = path;
        ProfileSection section = ReadSection(path, L"S");
        EXPECT_EQ(SectionText(section, L"a", 16, L"old"), L"old");
        EXPECT_EQ(SectionNumber(section, L"a", -1), -1);
        EXPECT_TRUE(SectionKeys(section).empty());
        EXPECT_FALSE(WriteSection(L"S", {{L"a", L"1"}})) << path;
    }
}

TEST(PlainSectionLines, AreThoseOfASectionThatNothingDisturbs) {
    using Lines = std::vector<std::pair<std::wstring, std::wstring>>;
    constexpr const wchar_t* kDisturbed = L"(disturbed)";
    const std::pair<std::wstring, const wchar_t*> rows[] = {
        {L"", L""},
        {L"[o]\r\na=1\r\n", L""},
        {L"x=9\r\n[o]\r\n;b\r\n\r\n[s]\r\na=1\r\nB=\r\n[p]\r\nc=9\r\n", L"a=1|B=|"},
        {L"[S]\r\na=1", kDisturbed},
        {L"[S]\na=1\n", kDisturbed},
        {L"[S]\r\na=1\r\rb=2\r\n", kDisturbed},
        {L"[o]\r\nb=\x1a\r\n[S]\r\na=1\r\n", kDisturbed},
        {std::wstring(L"[o]\r\n\0\r\n", 8), kDisturbed},
        {L"[S]\r\na=1\r\n[o]\r\n[s]\r\n", kDisturbed},
        {L"[S] \r\na=1\r\n", kDisturbed},
    };
    const auto shown = [](std::wstring_view text) {
        const auto lines = PlainSectionLines(text, L"S");
        std::wstring result = lines ? L"" : kDisturbed;
        for (const auto& [key, value] : lines.value_or(Lines())) result.append(key + L"=" + value + L"|");
        return result;
    };
    for (const auto& [text, lines] : rows) EXPECT_EQ(shown(text), lines) << text;
    for (const wchar_t* line :
         {L"", L"a", L"=1", L";a=1", L"#a=1", L" a=1", L"a =1", L"a= 1", L"a=1 ", L"A=1"})
        EXPECT_EQ(shown(std::wstring(L"[S]\r\na=2\r\n") + line + L"\r\n"), kDisturbed) << line;
}

// Writes `values` as a section into one file and key by key into another like it.
void ExpectSameAsSingleWrites(const SettingsFolder& folder, const std::string* bytes,
                              const wchar_t* section, const ProfileValues& values) {
    std::string results[2];
    for (const bool isSection : {false, true}) {
        settingsPath = folder.File(isSection ? L"section.ini" : L"single.ini");
        DeleteFileW(settingsPath.c_str());
        if (bytes) WriteBytes(settingsPath, *bytes);
        if (isSection) {
            EXPECT_TRUE(WriteSection(section, values));
        } else {
            for (const auto& [key, value] : values)
                EXPECT_TRUE(WriteProfileText(section, key.c_str(), value));
        }
        // Blanks at a line's end may stand there until the system rewrites the file; nobody can read them.
        EXPECT_TRUE(WriteProfileText(L"zz", L"next", L"write"));
        results[isSection] = ReadBytes(settingsPath);
    }
    ASSERT_EQ(results[0], results[1]) << "written into\n"
                                      << testing::PrintToString(bytes ? *bytes : "(no file)");
}

TEST(WriteSection, LeavesTheFileThatSingleWritesLeave) {
    const SettingsFolder folder;
    const ProfileValues lists[] = {
        {{L"b", L"new"}, {L"z", L"last"}, {L"a", L"first"}},
        {{L"a", L" blank "}, {L"b", L"\"quoted\""}, {L"c", {}}, {L"d", L"  "}, {L"e", L"\t'x'"}},
        {{L"a", L"\x416"}, {L"n", L"line\r\nbreak"}, {L"A", L"twice"}, {L"m", L"=x=;"}, {L"o", L"\xd83d"}},
        {},
    };
    for (const ProfileValues& values : lists) {
        ExpectSameAsSingleWrites(folder, nullptr, L"S", values);
        for (const wchar_t* file : kFiles) {
            for (const std::string& bytes : {ToBytes(file, CP_ACP), Utf16File(file)}) {
                if (values.empty() && bytes.size() <= 2) continue;  // the section writer begins the file
                ExpectSameAsSingleWrites(folder, &bytes, L"S", values);
                if (HasFatalFailure()) return;
            }
        }
    }
    HostileFiles files(77);
    for (int i = 0; i < 100 && !HasFatalFailure(); ++i) {
        const std::string bytes = files.Next();
        ProfileValues values;
        for (unsigned count = files.Below(6) + 1; count > 0; --count) {
            values.emplace_back(
                files.Pick({L"text_000", L"text_001", L"text_002", L"text_999", L"TEXT_000"}),
                files.RandomValue());
        }
        ExpectSameAsSingleWrites(folder, &bytes, L"list_text", values);
    }
}

}  // namespace
}  // namespace verbatix
