#include "app/command_line.h"

#include <gtest/gtest.h>

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
}  // namespace verbatix
