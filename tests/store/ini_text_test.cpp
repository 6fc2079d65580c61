#include "store/ini_text.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "store/ini_files.h"
#include "store/profile.h"
#include "store/text_file.h"

namespace verbatix::test {
namespace {

// What every reader gets of a file: all sections, their keys and the keys' values.
std::vector<std::wstring> Everything(const std::wstring& path) {
    const auto list = [](const std::wstring& buffer, DWORD length) {
        std::vector<std::wstring> names;
        for (const auto name : Split(std::wstring_view(buffer.data(), length), L'\0')) {
            if (!name.empty()) names.emplace_back(name);
        }
        return names;
    };
    std::wstring buffer(1 << 18, L'\0');
    const auto size = static_cast<DWORD>(buffer.size());
    std::vector<std::wstring> found;
    const DWORD length = GetPrivateProfileSectionNamesW(buffer.data(), size, path.c_str());
    for (const std::wstring& section : list(buffer, length)) {
        found.push_back(L"[" + section + L"]");
        const DWORD keys =
            GetPrivateProfileStringW(section.c_str(), nullptr, L"", buffer.data(), size, path.c_str());
        for (const std::wstring& key : list(buffer, keys))
            found.push_back(key + L"=" + ReadProfileTextFrom(path, section.c_str(), key.c_str(), 20000));
    }
    return found;
}

void ExpectWhatTheSystemWrites(const SettingsFolder& folder, const std::wstring& text,
                               const IniValues& values) {
    const std::wstring bySystem = folder.File(L"system.ini");
    const std::wstring byUs = folder.File(L"ours.ini");
    WriteBytes(bySystem, Utf16File(text));
    for (const IniValue& value : values) {
        ASSERT_TRUE(WritePrivateProfileStringW(value.section.c_str(), value.key.c_str(),
                                               value.value.c_str(), bySystem.c_str()));
    }
    const std::wstring written = SetIniValues(text, values);
    WriteBytes(byUs, Utf16File(written));
    ASSERT_EQ(Everything(byUs), Everything(bySystem)) << testing::PrintToString(text) << "\nbecame\n"
                                                      << testing::PrintToString(written);
}

TEST(SetIniValues, LeavesReadersWhatTheSystemWouldHaveWritten) {
    const SettingsFolder folder;
    const IniValues lists[] = {
        {{L"S", L"b", L"new"}, {L"T", L"t", L"1"}, {L"S", L"z", L"last"}, {L"S", L"A", L"first"}},
        {{L"s", L"a", L" blank "}, {L"S", L"d", L"\"q\""}, {L"S", L"A", L""}, {L"more", L"x", L"[S]"}},
    };
    for (const IniValues& values : lists) {
        for (const wchar_t* file : kOddFiles) ExpectWhatTheSystemWrites(folder, file, values);
    }
    HostileFiles random(4242);
    for (int i = 0; i < 100 && !HasFatalFailure(); ++i) {
        std::wstring text = random.RandomLines();
        // The system itself loses a header without a name, and with it where a section ends, and what
        // stands in a line behind a NUL.
        ReplaceAll(text, L"[]", L"[x]");
        std::erase(text, L'\0');
        IniValues values;
        for (unsigned count = random.Below(8) + 1; count > 0; --count) {
            values.push_back({random.Pick({L"list_text", L"Program", L"LIST_TEXT", L"new"}),
                              random.Pick({L"text_000", L"text_001", L"TEXT_000", L"topmost", L"added"}),
                              ProfileLine(random.RandomValue())});
        }
        ExpectWhatTheSystemWrites(folder, text, values);
    }
}

TEST(SetIniValues, TouchesNothingButTheValue) {
    const struct {
        const wchar_t* before;
        const wchar_t* after;  // with a=new and z=1 set in section S
    } rows[] = {
        {L"; head\r\n\r\n[S]\r\n ; note\r\n  A =  old  \r\nb\r\n\r\n\r\n[T]\r\na=1\r\n\r\n",
         L"; head\r\n\r\n[S]\r\n ; note\r\n  A =  new  \r\nb\r\nz=1\r\n\r\n\r\n[T]\r\na=1\r\n\r\n"},
        {L"[S]\na=\"x\"\nz= 1\n", L"[S]\na=new\nz= 1\n"},
        {L"[S]\r\na\r\na=2\r\n[S]\r\na=3", L"[S]\r\na=new\r\na=2\r\nz=1\r\n[S]\r\na=3"},
        {L"[T]\r\nfirst=1\r\n\r\n", L"[T]\r\nfirst=1\r\n\r\n[S]\r\na=new\r\nz=1\r\n"},
        {L"[S]\r\na=", L"[S]\r\na=new\r\nz=1\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(SetIniValues(row.before, {{L"S", L"a", L"new"}, {L"S", L"z", L"1"}}), row.after);
}

TEST(IsDoubtfulIni, IsTrueWhereSystemsDiffer) {
    for (const wchar_t* plain :
         {L"", L"[S]\r\n; x\r\n\r\na=[b]\r\n", L"[S]\na=1\n[T]", L"x\r\n[S]\r\n =]\r\n"})
        EXPECT_FALSE(IsDoubtfulIni(plain)) << plain;
    for (const std::wstring& doubtful :
         {std::wstring(L"[S]\ra=1\r"), std::wstring(L"[S]\r\n[s]\r\n"), std::wstring(L" [S]\r\n"),
          std::wstring(L"[ S]\r\n"), std::wstring(L"[S] ; x\r\n"), std::wstring(L"[S]]\r\n"),
          std::wstring(L"[S\r\n"), std::wstring(L"[S]\r\na\0=1\r\n", 10)})
        EXPECT_TRUE(IsDoubtfulIni(doubtful)) << testing::PrintToString(doubtful);
}

}  // namespace
}  // namespace verbatix::test
