#include "paste/command_prefixes.h"

#include <gtest/gtest.h>

namespace verbatix {
namespace {

TEST(ParseCommand, KnowsEveryPrefixAtTheVeryStartOnly) {
    const struct {
        const wchar_t* text;
        CommandKind kind;
        const wchar_t* argument;
    } rows[] = {
        {L"replace:\\na=>b", CommandKind::Replace, L"replace:\\na=>b"},
        {L"copy_slot:3", CommandKind::CopySlot, L"3"},
        {L"paste_slot:191", CommandKind::PasteSlots, L"191"},
        {L"save_slot: 3", CommandKind::SaveSlot, L" 3"},
        {L"sys:MonitorOff", CommandKind::Builtin, L"MonitorOff"},
        {L"runx:a\\nb", CommandKind::RunLines, L"a\nb"},
        {L"runA:x", CommandKind::RunLines, L"x"},
        {L"img:c:\\new.png", CommandKind::Image, L"c:\\new.png"},
        {L"cmd:", CommandKind::Run, L""},
        {L"run:c:\\new\\name.exe", CommandKind::Run, L"c:\\new\\name.exe"},
        {L"cpy:prog %cpy%", CommandKind::Cpy, L"prog %cpy%"},
        {L"cm%nc%d:x%nc%y", CommandKind::Run, L"xy"},
        {L"run%nc%x:a\\%nc%nb", CommandKind::RunLines, L"a\\nb"},
        {L"rep%nc%lace:", CommandKind::None, L""},
        {L" cmd:x", CommandKind::None, L""},
        {L"CMD:x", CommandKind::None, L""},
        {L"runy:x", CommandKind::None, L""},
        {L"cmd", CommandKind::None, L""},
        {L"", CommandKind::None, L""},
    };
    for (const auto& row : rows) {
        const ParsedCommand command = ParseCommand(row.text);
        EXPECT_EQ(command.kind, row.kind) << ::testing::PrintToString(row.text);
        EXPECT_EQ(command.argument, row.argument) << ::testing::PrintToString(row.text);
        EXPECT_EQ(command.elevate, std::wstring_view(row.text).starts_with(L"runA:"));
    }
}

// The slot character stands in different places behind the two prefixes; lists in use count on it.
TEST(ParseCommand, FindsTheSlotCharacter) {
    EXPECT_EQ(ParseCommand(L"copy_slot:4").slot, L'4');
    EXPECT_EQ(ParseCommand(L"copy_slot:").slot, L'\0');
    EXPECT_EQ(ParseCommand(L"save_slot:4").slot, L'\0');
    EXPECT_EQ(ParseCommand(L"save_slot: 4").slot, L'4');
    EXPECT_EQ(ParseCommand(L"save_slot:").slot, L'\0');
}

TEST(ParseCommand, CutsLongCommands) {
    const ParsedCommand command = ParseCommand(L"cmd:" + std::wstring(9000, L'x'));
    EXPECT_EQ(command.argument.size(), 4095U - 4U);
}

TEST(SplitProgram, KeepsTheQuotesOfTheProgram) {
    const struct {
        const wchar_t* line;
        const wchar_t* program;
        const wchar_t* parameters;
    } rows[] = {
        {L"notepad", L"notepad", L""},
        {L"notepad a b", L"notepad", L"a b"},
        {L"\"c:\\my tool.exe\" -x \"y\"", L"\"c:\\my tool.exe\"", L"-x \"y\""},
        {L"\"c:\\my tool.exe\"", L"\"c:\\my tool.exe\"", L""},
        {L"\"c:\\my tool.exe\"x", L"\"c:\\my tool.exe\"", L""},
        {L"\"never closes", L"\"never", L"closes"},
        {L"\"", L"\"", L""},
        {L" leading", L"", L"leading"},
        {L"", L"", L""},
    };
    for (const auto& row : rows) {
        const ProgramAndParameters parts = SplitProgram(row.line);
        EXPECT_EQ(parts.program, row.program);
        EXPECT_EQ(parts.parameters, row.parameters);
    }
}

TEST(ApplyReplaceRules, WorksThroughTheLines) {
    const struct {
        const wchar_t* entry;
        const wchar_t* subject;
        const wchar_t* result;
        std::size_t count;
    } rows[] = {
        {L"replace:\\na=>b", L"banana", L"bbnbnb", 3},
        {L"replace:a=>b", L"banana", L"banana", 0},    // the first line is no rule
        {L"replace:\\na=>b\\nb=>c", L"ab", L"cc", 3},  // one rule after the other
        {L"replace:\\n=>x", L"abc", L"abc", 0},        // nothing to look for
        {L"replace:\\na=>", L"banana", L"bnn", 3},
        {L"replace:\\na=>b=>c", L"xa", L"xb=>c", 1},  // split at the first arrow
        {L"replace:\\n%09=>%13%10", L"a\tb", L"a\r\nb", 1},
        {L"replace:\\nno rule\\na=>b", L"a", L"b", 1},
        {L"replace:\\n%25=>x", L"50%25", L"50x", 1},  // beyond the control codes
        {L"replace:\r\\nA=>b\r", L"Aa", L"ba", 1},    // exact case
        {L"replace:", L"abc", L"abc", 0},
    };
    for (const auto& row : rows) {
        const ReplaceResult result = ApplyReplaceRules(row.entry, row.subject);
        EXPECT_EQ(result.text, row.result) << ::testing::PrintToString(row.entry);
        EXPECT_EQ(result.count, row.count) << ::testing::PrintToString(row.entry);
    }
}

TEST(ApplyReplaceRules, ReplacesAHundredThousandOccurrences) {
    const ReplaceResult result = ApplyReplaceRules(L"replace:\\na=>bc", std::wstring(100000, L'a'));
    EXPECT_EQ(result.count, 100000U);
    EXPECT_EQ(result.text.size(), 200000U);
}

}  // namespace
}  // namespace verbatix
