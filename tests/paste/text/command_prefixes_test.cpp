// Commands, key tokens and command lines as the entries' texts have them.
#include "paste/text/command_prefixes.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "paste/steps/key_tokens.h"
#include "paste/steps/launcher.h"
#include "paste/text/placeholders.h"

namespace verbatix {
namespace {

TEST(Commands, ArePrefixesAtTheVeryStart) {
    const struct {
        const wchar_t* text;
        CommandKind kind;
        const wchar_t* argument;
        bool elevate = false;
        wchar_t slot = 0;
    } rows[] = {
        {L"replace:\\na=>b", CommandKind::Replace, L"replace:\\na=>b"},
        // The slot character stands in different places behind the two prefixes; lists in use count on it.
        {L"copy_slot:3", CommandKind::CopySlot, L"3", false, L'3'},
        {L"copy_slot:", CommandKind::CopySlot, L""},
        {L"save_slot: 3", CommandKind::SaveSlot, L" 3", false, L'3'},
        {L"save_slot:3", CommandKind::SaveSlot, L"3"},
        {L"paste_slot:191", CommandKind::PasteSlots, L"191"},
        {L"sys:MonitorOff", CommandKind::Builtin, L"MonitorOff"},
        {L"runx:a\\nb", CommandKind::RunLines, L"a\nb"},
        {L"runX:a", CommandKind::RunLines, L"a"},
        {L"runa:a", CommandKind::RunLines, L"a", true},
        {L"runA:a", CommandKind::RunLines, L"a", true},
        {L"img:a.png", CommandKind::Image, L"a.png"},
        {L"cpy:a b", CommandKind::Cpy, L"a b"},
        {L"cmd:", CommandKind::Run, L""},
        {L"run:c:\\new\\name.exe", CommandKind::Run, L"c:\\new\\name.exe"},
        {L"cm%nc%d:x%nc%y", CommandKind::Run, L"xy"},
        {L"run%nc%x:a\\%nc%nb", CommandKind::RunLines, L"a\\nb"},
        {L"rep%nc%lace:", CommandKind::None, L""},
        {L"CMD:x", CommandKind::None, L""},
    };
    for (const auto& row : rows) {
        const ParsedCommand command = ParseCommand(row.text);
        EXPECT_EQ(command.kind, row.kind) << row.text;
        EXPECT_EQ(command.argument, row.argument) << row.text;
        EXPECT_EQ(command.elevate, row.elevate) << row.text;
        EXPECT_EQ(command.slot, row.slot) << row.text;
    }
    EXPECT_EQ(ParseCommand(L"cmd:" + std::wstring(9000, L'x')).argument.size(), 4095u - 4u);
}

TEST(Commands, ReplaceByRules) {
    const std::tuple<const wchar_t*, const wchar_t*, const wchar_t*, std::size_t> rows[] = {
        {L"replace:a=>b\\na=>", L"banana", L"bnn", 3},  // the first line is no rule
        {L"replace:\\na=>b\\nb=>c", L"ab", L"cc", 3},   // one rule after the other
        {L"replace:\\na=>b=>c", L"xa", L"xb=>c", 1},    // split at the first arrow
        {L"replace:\\n%09=>%13%10", L"a\tb", L"a\r\nb", 1},
        {L"replace:\\n%25=>x", L"50%25", L"50x", 1},  // beyond the control codes
        {L"replace:\\n=>x\\nno rule", L"ab", L"ab", 0},
        {L"replace:\\na=>b\r\\n%nc%c=>d", L"ac", L"bd", 2},  // as it comes from a file
    };
    for (const auto& [entry, subject, text, count] : rows) {
        const ReplaceResult result = ApplyReplaceRules(entry, subject);
        EXPECT_EQ(result.text, text) << entry;
        EXPECT_EQ(result.count, count) << entry;
    }
    // Each rule makes ten of one, until the next would be beyond the limit.
    std::wstring rules = L"replace:";
    for (int rule = 0; rule < 30; ++rule) rules += L"\\nx=>xxxxxxxxxx";
    EXPECT_EQ(ApplyReplaceRules(rules, L"x").text.size(), 10'000'000u);
}

TEST(KeyTokens, CutTheTextIntoSteps) {
    const KeySteps plan = SplitAtKeyTokens(
        L"%send_tab%100%%send_tabs%%sleep_60%%SEND_TAB%%sleep_50%%sleep_500%b%send_enter%c%sleep_100%%"
        L"sleep_200%%");
    const std::vector<KeyStep> expected = {
        {L"", VK_TAB, 0}, {L"100%%send_tabs%%sleep_60%%SEND_TAB%", 0, 50},
        {L"", 0, 500},    {L"b", VK_RETURN, 0},
        {L"c", 0, 100},   {L"", 0, 200}};
    EXPECT_EQ(plan.steps, expected);
    EXPECT_EQ(plan.tail, L"%");
    EXPECT_TRUE(HoldsKeyToken(L"a%send_enter%") && HoldsKeyToken(L"%send_tab%"));
    EXPECT_FALSE(HoldsKeyToken(L"a%sleep_500%b%send_esc%"));  // pauses alone are text
}

TEST(CommandLines, AreToldFromFiles) {
    SetEnvironmentVariableW(L"VERBATIX_TEST", L"Value");
    SetEnvironmentVariableW(L"VERBATIX_LONG", std::wstring(521, L'x').c_str());
    SetEnvironmentVariableW(L"VERBATIX_EMPTY", L"");
    const std::pair<const wchar_t*, const wchar_t*> references[] = {
        {L"a%VERBATIX_TEST%b%verbatix_test%", L"aValuebValue"},
        {L"%NO_SUCH_NAME_HERE%VERBATIX_TEST%", L"%NO_SUCH_NAME_HEREValue"},
        {L"a%VERBATIX_EMPTY%b", L"ab"},  // is there, and empty
        {L"%VERBATIX_LONG%", L"%VERBATIX_LONG%"},
    };
    for (const auto& [text, result] : references) EXPECT_EQ(ExpandEnvironment(text), result);

    const std::wstring home = L"%UserProfile%";
    const std::pair<const wchar_t*, LaunchPlan> rows[] = {
        {L"C:\\my file.txt", {L"C:\\my file.txt", L"", L"C:\\my file.txt"}},
        {L"C:\\%VERBATIX_TEST%", {L"C:\\Value", L"", home}},
        {L"\"C:\\my tool.exe\" a %VERBATIX_TEST%",
         {L"\"C:\\my tool.exe\"", L"a Value", L"\"C:\\my tool.exe\""}},
        {L"\"\" a", {L"\"\"", L"a", home}},
        {L"\"never closes", {L"\"never", L"closes", home}},
        {L"SHELL:Downloads a", {L"SHELL:Downloads a", L"", home}},
        {L"%VERBATIX_TEST% x", {L"%VERBATIX_TEST%", L"x", home}},  // the shell expands the program
    };
    for (const auto& [line, plan] : rows) {
        EXPECT_EQ(PlanLaunch(line,
                             [](const std::wstring& path) {
                                 return path == L"C:\\my file.txt" || path == L"C:\\Value";
                             }),
                  plan)
            << line;
    }
}

}  // namespace
}  // namespace verbatix
