// The command line, and the settings file that it or the place of the program chooses.
#include "app/settings_location.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "app/command_line.h"
#include "base/text.h"
#include "store/settings_commit.h"
#include "store/settings_path.h"
#include "support/folder.h"

namespace verbatix::test {
namespace {

// A world in which the paths beginning with one of `writable` can be written.
struct Disk {
    std::wstring writable;  // separated by "|"
    bool plain = true;

    SettingsProbe Probe() {
        return {[this](const std::wstring& path, int) {
                    for (const std::wstring_view prefix : Split(writable, L'|')) {
                        if (!prefix.empty() && path.starts_with(prefix)) return true;
                    }
                    return false;
                },
                [this](const std::wstring&) { return plain; }, [](const std::wstring&) {}};
    }
    std::wstring Decide(const SettingsFacts& facts) {
        const SettingsChoice choice = DecideSettingsPath(facts, Probe());
        std::wstring text = choice.path + (choice.portableRequested ? L" requested" : L"") +
                            (choice.portableActive ? L" active" : L"");
        for (const auto& [kind, path] : choice.messages) {
            text += (kind == StartMessage::kWriteError ? L" | write " : L" | extension ") + path;
        }
        return text;
    }
};

TEST(DecideSettingsPath, ChoosesTheFileOfThisRun) {
    // APP stands for the file in the application-data folder.
    const struct {
        const wchar_t *module, *ini, *writable, *choice;
    } rows[] = {
        {L"C:\\Tools\\Verbatix.exe", L"", L"C:|D:", L"APP"},
        {L"C:\\Tools\\V_p.exe", L"", L"C:", L"C:\\Tools\\Verbatix.ini requested active"},
        {L"C:\\V_PORT.EXE", L"", L"C:", L"C:\\Verbatix.ini requested active"},
        {L"C:\\Tools\\V_p.exe", L"", L"D:", L"APP requested | write C:\\Tools\\Verbatix.ini"},
        {L"C:\\Tools\\V_p.exe", L"", L"", L"APP requested | write C:\\Tools\\Verbatix.ini | write APP"},
        // In the temporary folder, written in another case, nothing stays beside the program.
        {L"C:\\USERS\\temp\\x\\V_p.exe", L"", L"C:|D:", L"APP requested"},
        {L"\\\\server\\share\\V_p.exe", L"", L"\\\\", L"\\\\server\\share\\Verbatix.ini requested active"},
        // A named file is taken as it stands when the program folder can be written.
        {L"C:\\Tools\\Verbatix.exe", L"E:\\my\\list.INI", L"C:", L"E:\\my\\list.INI"},
        {L"C:\\Tools\\Verbatix.exe", L"E:\\noextension", L"D:", L"APP | extension E:\\noextension"},
        {L"C:\\Tools\\V_p.exe", L"E:\\x.txt", L"C:",
         L"C:\\Tools\\Verbatix.ini requested active | extension E:\\x.txt"},
        {L"C:\\Tools\\Verbatix.exe", L"ini", L"C:|D:", L"APP"},  // three characters name nothing
        {L"", L"", L"D:", L"APP"},
    };
    for (const auto& row : rows) {
        std::wstring choice = row.choice;
        ReplaceAll(choice, L"APP", L"D:\\Roaming\\Verbatix\\Verbatix.ini");
        EXPECT_EQ(Disk{row.writable}.Decide({row.module, L"C:\\Users\\Temp\\", L"D:\\Roaming", row.ini}),
                  choice)
            << row.module << L" " << row.ini;
    }
    Disk notPlain{.writable = L"C:", .plain = false};
    EXPECT_TRUE(notPlain.Decide({L"C:\\t\\V_p.exe", L"T:\\", L"C:\\R", L""}).starts_with(L"C:\\R\\"));
}

TEST(WriteTest, LeavesAFreshStampAndWhatTheFileHeld) {
    const Folder folder;
    const std::wstring path = folder.File(L"new.ini");
    const auto stamp = [&] { return GetPrivateProfileIntW(L"Program", L"TestIni", -1, path.c_str()); };
    ASSERT_TRUE(WriteTest(path, 0));
    const UINT first = stamp();
    ASSERT_TRUE(WriteTest(path, 22));
    EXPECT_LT(stamp(), first);
    EXPECT_EQ(ReadBytes(path).substr(0, 4), std::string("\xff\xfe[\0", 4));

    WriteBytes(path, "[Other]\r\na=1\r\n");
    EXPECT_TRUE(WriteTest(path, 0));
    EXPECT_TRUE(ReadBytes(path).starts_with("[Other]\r\na=1\r\n"));

    for (const std::wstring& bad : {folder.Path(), folder.File(L"missing\\x.ini"),
                                    folder.File(std::wstring(40000, L'n') + L".ini")}) {
        EXPECT_FALSE(WriteTest(bad, 0)) << bad.substr(0, 300);
    }

    // Another program holds it: waited for, and the right file even where that takes too long.
    UniqueFile reader = OpenShared(path, FILE_SHARE_READ);
    ASSERT_TRUE(reader);
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(WriteTest(path, 44));
    EXPECT_GE(GetTickCount64() - start, 2000u);
    const UINT before = stamp();
    reader.Reset();
    EXPECT_TRUE(PrepareSettingsFile());
    EXPECT_EQ(stamp(), before);
    EXPECT_TRUE(WriteProgramNumber(L"topmost", 1));
    EXPECT_LT(stamp(), before) << "written with the next value";
}

TEST(ChooseSettingsPath, MakesANamedFileAFullPathOnce) {
    const std::wstring folder = HelperPath(L"");
    ASSERT_TRUE(SetCurrentDirectoryW(folder.c_str()));
    const auto tidyUp = [&] {
        for (const wchar_t* name : {L"named.ini", L"named.ini.bak", L"Verbatix.ini", L"Verbatix.ini.bak"})
            DeleteFileW((folder + name).c_str());
    };
    tidyUp();  // after a run that was ended
    for (const wchar_t* named : {L"named.ini", L"./x/../named.INI", L"x/../named.ini"}) {
        startOptions.iniPathOverride = named;
        EXPECT_EQ(ChooseSettingsPath(), 1);
        EXPECT_TRUE(EqualsIgnoreCase(settingsPath, folder + L"named.ini")) << settingsPath;
        EXPECT_EQ(startOptions.iniPathOverride, settingsPath) << "so the next start finds it from anywhere";
    }
    tidyUp();
}

// The arguments as "name" or "name=>value", joined by "|".
std::wstring Shown(std::wstring_view commandLine, wchar_t separator = L':') {
    ArgumentList list;
    EXPECT_EQ(SplitCommandLine(list, commandLine, separator), list.count);
    std::wstring result;
    for (const Argument& argument : list) {
        if (!result.empty()) result += L'|';
        result += argument.name;
        if (argument.value) result.append(L"=>").append(argument.value);
    }
    return result;
}

TEST(CommandLine, IsCutAtBlanksOutsideQuotesAndAtTheFirstSeparator) {
    const wchar_t* const rows[][2] = {
        {L"  -bg   hide ", L"-bg|hide"},
        {L"-ini:C:\\My Files\\x.ini", L"-ini=>C:\\My|Files\\x.ini"},
        {L"\"-ini:C:\\My Files\\x.ini\" -bg", L"-ini=>C:\\My Files\\x.ini|-bg"},
        {L"-in\"\"i:a\"b c\"d", L"-ini=>ab cd"},
        {L"a: :b : \"\" e", L"a=>|=>b|=>|e"},
        {L"a\tb", L"a b"},           // a tab is no blank while cutting, and one afterwards
        {L"a \"b c", L"a|b c    "},  // never closed: holds to the end of the padded copy
    };
    for (const auto& row : rows) EXPECT_EQ(Shown(row[0]), row[1]) << row[0];
    EXPECT_EQ(Shown(L"a=b:c d:e", L'='), L"a=>b:c|d:e");

    EXPECT_EQ(Shown(std::wstring(32000, L':')), L"=>" + std::wstring(31999, L':'));
    EXPECT_EQ(Shown(std::wstring(32000, L'x')), std::wstring(32000, L'x'));
    std::wstring many;
    for (int i = 0; i < 300; ++i) many += std::to_wstring(i) + L":v ";
    ArgumentList list;
    EXPECT_EQ(SplitCommandLine(list, many, L':'), 256);
    EXPECT_STREQ(list.arguments[255].name, L"255");
    EXPECT_EQ(SplitCommandLine(list, L"only", L':'), 1) << "used again, it forgets what it held";
    const ArgumentList moved = std::move(list);
    EXPECT_STREQ(moved.arguments[0].name, L"only");
}

TEST(CommandLine, OptionsAreReadFromItAndGivenToARestart) {
    // What is read, the file among it, and what a restart is given: the same file and no window.
    const wchar_t* const rows[][4] = {
        {L"x -BG", L"background ", L"", L""},
        {L"-bg:anything", L"background ", L"", L""},
        {L"HIDE -Bg", L"background hide ", L"", L"hide"},
        {L"autoupdateservice_2020", L"service ", L"", L""},
        {L"-INI:x.ini", L"", L"", L""},
        {L"-ini: -ini:b.ini", L"", L"", L""},
        {L"\"-ini:D:\\a b\\c.ini\" -BG hide", L"background hide ", L"D:\\a b\\c.ini",
         L"\"-ini:D:\\a b\\c.ini\" hide"},
    };
    for (const auto& row : rows) {
        ArgumentList list;
        SplitCommandLine(list, row[0], L':');
        const StartOptions options = ReadStartOptions(list);
        const std::wstring seen = std::wstring(options.startInBackground ? L"background " : L"") +
                                  (options.hideRequested ? L"hide " : L"") +
                                  (options.updateService ? L"service " : L"") +
                                  (options.skipInstanceCheck ? L"no check" : L"");
        EXPECT_EQ(seen, row[1]) << row[0];
        EXPECT_EQ(options.iniPathOverride, row[2]) << row[0];
        EXPECT_EQ(RestartArguments(options), row[3]) << row[0];
    }
}

}  // namespace
}  // namespace verbatix::test
