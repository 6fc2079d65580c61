// Which entries are executed before the hook has to answer.
#include "paste/execution_time.h"

#include <gtest/gtest.h>

#include <string>

namespace verbatix {
namespace {

TEST(ExecutionTime, OfAnEntryDecidesWhetherItFitsIntoTheHook) {
    constexpr ExecutionFacts kSaves = {true, false};
    constexpr ExecutionFacts kBusy = {false, true};
    const struct {
        const wchar_t* text;
        DWORD limitThatFits;  // the smallest of 300 and 1000, or 0: none
        ExecutionFacts facts = {};
    } rows[] = {
        {L"plain text, %YYYY%-%MM%", 300},
        {L"", 300},
        {L"a%send_tab%b", 300},
        {L"a%send_tab%%sleep_100%b%send_enter%", 1000},
        {L"%send_tab%%sleep_500%", 0},
        {L"%sleep_500%", 300},  // without a key it stays text
        {L"<%copy_text_uc%>", 1000},
        {L"%copy_html%%copy_text%", 1000},
        {L"%mix_al_rows%", 1000},
        {L"replace:a=>b", 1000},
        {L"copy_slot:1", 300},
        {L"cpy:notepad.exe %cpy%", 300},
        {L"paste_slot:1", 300},
        {L"paste_slot:12", 0},
        {L"sys:MonitorOff", 300},
        {L"sys:Txt2Key:abc", 0},
        {L"sys:nothing of that name", 0},
        {L"run:notepad.exe", 0},
        {L"cmd:notepad.exe", 0},
        {L"runX:notepad.exe", 0},
        {L"img:C:\\picture.png", 0},
        {L"on %C%", 0},
        {L"at %T%", 0},
        {L"%phtml%", 0},
        {L"%pptxt%", 0},
        {L"%plain_text_to_tmp_html%", 0},
        {L"plain text", 0, kSaves},
        {L"plain text", 0, kBusy},
    };
    for (const auto& [text, limitThatFits, facts] : rows) {
        const auto estimate = EstimateExecution(text, facts);
        EXPECT_EQ(FitsWell(estimate, 300), limitThatFits == 300) << text;
        EXPECT_EQ(FitsWell(estimate, 1000), limitThatFits != 0) << text;
    }
}

}  // namespace
}  // namespace verbatix
