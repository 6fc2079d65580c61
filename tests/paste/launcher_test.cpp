#include "paste/launcher.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace verbatix {
namespace {

bool OnlyMyFile(const std::wstring& path) {
    return path == L"C:\\my file.txt" || path == L"C:\\Value";
}

TEST(PlanLaunch, TellsFilesFromCommandLines) {
    SetEnvironmentVariableW(L"VERBATIX_TEST", L"Value");
    const struct {
        const wchar_t* line;
        LaunchPlan plan;
    } rows[] = {
        {L"C:\\my file.txt", {L"C:\\my file.txt", L"", L"C:\\my file.txt"}},
        {L"C:\\%VERBATIX_TEST%", {L"C:\\Value", L"", L"%UserProfile%"}},
        {L"C:\\my file.txt x", {L"C:\\my", L"file.txt x", L"%UserProfile%"}},
        {L"\"C:\\my tool.exe\" a %VERBATIX_TEST%",
         {L"\"C:\\my tool.exe\"", L"a Value", L"\"C:\\my tool.exe\""}},
        {L"shell:AppsFolder\\a b", {L"shell:AppsFolder\\a b", L"", L"%UserProfile%"}},
        {L"SHELL:Downloads", {L"SHELL:Downloads", L"", L"%UserProfile%"}},
        {L"shell", {L"shell", L"", L"%UserProfile%"}},
        {L"%VERBATIX_TEST% x",
         {L"%VERBATIX_TEST%", L"x", L"%UserProfile%"}},  // the shell expands the program
    };
    for (const auto& row : rows) {
        const LaunchPlan plan = PlanLaunch(row.line, OnlyMyFile);
        EXPECT_EQ(plan.file, row.plan.file);
        EXPECT_EQ(plan.parameters, row.plan.parameters);
        EXPECT_EQ(plan.folder, row.plan.folder);
    }
}

TEST(ExpandEnvironment, ReplacesWhatExists) {
    SetEnvironmentVariableW(L"VERBATIX_TEST", L"Value");
    SetEnvironmentVariableW(L"VERBATIX_LONG", std::wstring(521, L'x').c_str());
    const struct {
        const wchar_t* text;
        const wchar_t* result;
    } rows[] = {
        {L"a%VERBATIX_TEST%b%verbatix_test%", L"aValuebValue"},
        {L"%NO_SUCH_NAME_HERE%VERBATIX_TEST%", L"%NO_SUCH_NAME_HEREValue"},
        {L"100% of %VERBATIX_TEST%", L"100% of Value"},
        {L"%%%", L"%%%"},
        {L"%VERBATIX_LONG%", L"%VERBATIX_LONG%"},
        {L"", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(ExpandEnvironment(row.text), row.result);
}

}  // namespace
}  // namespace verbatix
