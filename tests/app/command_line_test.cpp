#include "app/command_line.h"

#include <gtest/gtest.h>

#include <iterator>

namespace verbatix {
namespace {

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

StartOptions Options(std::wstring_view commandLine) {
    ArgumentList list;
    SplitCommandLine(list, commandLine, L':');
    return ReadStartOptions(list);
}

TEST(SplitCommandLine, CutsAtBlanksOutsideQuotesAndAtTheFirstSeparator) {
    const struct {
        const wchar_t* commandLine;
        const wchar_t* arguments;
    } rows[] = {
        {L"", L""},
        {L"     ", L""},
        {L"-bg", L"-bg"},
        {L"  -bg   hide ", L"-bg|hide"},
        {L"-ini:C:\\My Files\\x.ini", L"-ini=>C:\\My|Files\\x.ini"},
        {L"-ini:\"C:\\My Files\\x.ini\"", L"-ini=>C:\\My Files\\x.ini"},
        {L"\"-ini:C:\\My Files\\x.ini\" -bg", L"-ini=>C:\\My Files\\x.ini|-bg"},
        {L"-in\"\"i:a\"b c\"d", L"-ini=>ab cd"},
        {L"a:", L"a=>"},
        {L":b", L"=>b"},
        {L":", L"=>"},
        {L"\"\" a", L"a"},
        {L"\" \"", L" "},
        {L"a\tb", L"a b"},  // a tab is no blank while cutting, and one afterwards
        {L"a:x\ny", L"a=>x y"},
        {L"a \"b c", L"a|b c    "},  // never closed: holds to the end of the padded copy
        {L"\"", L"    "},
    };
    for (const auto& row : rows) EXPECT_EQ(Shown(row.commandLine), row.arguments) << row.commandLine;
    EXPECT_EQ(Shown(L"a=b:c d:e", L'='), L"a=>b:c|d:e");
}

TEST(SplitCommandLine, SurvivesHostileCommandLines) {
    EXPECT_EQ(Shown(std::wstring(32000, L'"')), L"");
    EXPECT_EQ(Shown(std::wstring(32001, L'"')), L"    ");
    EXPECT_EQ(Shown(std::wstring(32000, L':')), L"=>" + std::wstring(31999, L':'));
    EXPECT_EQ(Shown(std::wstring(32000, L'x')), std::wstring(32000, L'x'));

    std::wstring many;
    for (int i = 0; i < 300; ++i) many += std::to_wstring(i) + L":v ";
    ArgumentList list;
    EXPECT_EQ(SplitCommandLine(list, many, L':'), 256);
    EXPECT_STREQ(list.arguments[255].name, L"255");
    EXPECT_STREQ(list.arguments[255].value, L"v");

    // A list used again forgets what it held, and a moved one keeps its texts.
    EXPECT_EQ(SplitCommandLine(list, L"only", L':'), 1);
    const ArgumentList moved = std::move(list);
    EXPECT_STREQ(moved.arguments[0].name, L"only");
    EXPECT_EQ(std::distance(moved.begin(), moved.end()), 1);
}

TEST(ReadStartOptions, KnowsItsArguments) {
    const struct {
        const wchar_t* commandLine;
        bool background, hide, service;
        const wchar_t* ini;
    } rows[] = {
        {L"", false, false, false, L""},
        {L"-bg", true, false, false, L""},
        {L"x -BG", true, false, false, L""},
        {L"bg --bg -bgx", false, false, false, L""},
        {L"-bg:anything", true, false, false, L""},
        {L"HIDE -Bg", true, true, false, L""},
        {L"-hide", false, false, false, L""},
        {L"autoupdateservice_2020", false, false, true, L""},
        {L"-ini:x.ini", false, false, false, L"x.ini"},
        {L"-INI:x.ini", false, false, false, L""},
        {L"-ini x.ini", false, false, false, L""},
        {L"-ini -ini:a.ini -ini:b.ini", false, false, false, L"a.ini"},
        {L"-ini: -ini:b.ini", false, false, false, L""},
        {L"hide \"-ini:D:\\a b\\c.ini\"", false, true, false, L"D:\\a b\\c.ini"},
    };
    for (const auto& row : rows) {
        const StartOptions options = Options(row.commandLine);
        EXPECT_EQ(options.startInBackground, row.background) << row.commandLine;
        EXPECT_EQ(options.hideRequested, row.hide) << row.commandLine;
        EXPECT_EQ(options.updateService, row.service) << row.commandLine;
        EXPECT_EQ(options.iniPathOverride, row.ini) << row.commandLine;
        EXPECT_FALSE(options.skipInstanceCheck);
    }
    EXPECT_FALSE(Options(L"restart_branwell_2018").skipInstanceCheck);
}

}  // namespace
}  // namespace verbatix
