// Commands, key tokens, command lines and paths as the entries' texts have them, and how long they take.
#include "paste/text/command_prefixes.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "paste/execution_time.h"
#include "paste/steps/key_tokens.h"
#include "paste/steps/launcher.h"
#include "paste/text/path_breaks.h"
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

// "#" stands for a backslash-n that is kept a part of its path, "|" for one that stays a line break.
TEST(KeepPaths, TellsAPathFromALineBreak) {
    const wchar_t* const rows[] = {
        L"run:C:#ew\\tool.exe",
        L"runx:C:\\tools#ew#ext.exe a|\"D:#otes\\b.exe\" C:#ew",
        L"runa:C:\\my texts#otes.exe|calc",
        L"cmd:\"C:\\a.b#ew.exe\" x",
        L"runX:\"C:\\a.exe#ow",  // quoted to the end: no command begins there
        L"cpy:%AppData%#otes.exe %cpy%",
        L"img:\\\\server#ew.png",
        L"runA:tool /out=C:#ew.txt|tool",
        L"runx:notepad|calc|C:\\x.exe|E:\\y",
        L"runx:C:\\a.exe one|notepad",
        L"runx:C:\\tools|C:\\more",
        L"runx:C:\\tools\\|\\\\server\\x",
        L"runx:C:\\tools|",
        L"runx:50% off|now",
        L"runx:12:|30",
        // Nothing runs.
        L"C:|ew",
        L"replace:C:|ew=>x",
        L"sys:Txt2Key:C:|ew",
        L"run",
        L"",
    };
    for (const std::wstring_view row : rows) {
        std::wstring stored, kept;
        for (const wchar_t c : row) {
            stored += c == L'#' || c == L'|' ? L"\\n" : std::wstring(1, c);
            kept += c == L'#' ? L"\\%nc%n" : c == L'|' ? L"\\n" : std::wstring(1, c);
        }
        EXPECT_EQ(KeepPaths(stored), kept);
        EXPECT_TRUE(PathBreaks(kept).empty()) << testing::PrintToString(kept);
    }
}

TEST(ExecutionTime, OfAnEntryDecidesWhetherItFitsIntoTheHook) {
    const struct {
        DWORD limit;  // of 300 and 1000 the smallest that the entries fit into; 0: none
        std::vector<const wchar_t*> texts;
    } rows[] = {
        {300,
         {L"plain text, %YYYY%-%MM%", L"", L"a%send_tab%b", L"C%DD", L"%Text%", L"%sleep_500%",
          L"copy_slot:1", L"paste_slot:1", L"cpy:notepad.exe %cpy%", L"sys:MonitorOn"}},
        {1000,
         {L"a%send_tab%%sleep_100%b%send_enter%", L"<%copy_text_uc%>", L"%mix_al_rows%", L"replace:a=>b"}},
        {0,
         {L"%send_tab%%sleep_500%", L"paste_slot:12", L"sys:Txt2Key:abc", L"sys:MonitorOff",
          L"sys:nothing of that name", L"run:notepad.exe", L"cmd:notepad.exe", L"runX:notepad.exe",
          L"img:C:\\picture.png", L"on %C%", L"at %T%", L"C%DD%", L"%DD% %T", L"%phtml%", L"%copy_html%",
          L"%pptxt%", L"%plain_text_to_tmp_html%"}},
    };
    for (const auto& [limit, texts] : rows) {
        for (const wchar_t* const text : texts) {
            const auto estimate = EstimateExecution(text, {});
            EXPECT_EQ(FitsWell(estimate, 300), limit == 300) << text;
            EXPECT_EQ(FitsWell(estimate, 1000), limit != 0) << text;
        }
    }
    EXPECT_FALSE(EstimateExecution(L"plain text", {.savesClipboard = true}));
    EXPECT_FALSE(EstimateExecution(L"plain text", {.clipboardIsBusy = true}));
    EXPECT_FALSE(EstimateExecution(L"plain text", {.targetIsOurs = true}));
}

}  // namespace
}  // namespace verbatix
