// Which entries are executed before the hook has to answer.
#include "paste/execution_time.h"

#include <gtest/gtest.h>

#include <vector>

namespace verbatix {
namespace {

TEST(ExecutionTime, OfAnEntryDecidesWhetherItFitsIntoTheHook) {
    const struct {
        DWORD limit;  // of 300 and 1000 the smallest that the entries fit into; 0: none
        std::vector<const wchar_t*> texts;
    } rows[] = {
        {300,
         {L"plain text, %YYYY%-%MM%", L"", L"a%send_tab%b", L"%sleep_500%", L"copy_slot:1", L"paste_slot:1",
          L"cpy:notepad.exe %cpy%", L"sys:MonitorOff"}},
        {1000,
         {L"a%send_tab%%sleep_100%b%send_enter%", L"<%copy_text_uc%>", L"%copy_html%%copy_text%",
          L"%mix_al_rows%", L"replace:a=>b"}},
        {0,
         {L"%send_tab%%sleep_500%", L"paste_slot:12", L"sys:Txt2Key:abc", L"sys:nothing of that name",
          L"run:notepad.exe", L"cmd:notepad.exe", L"runX:notepad.exe", L"img:C:\\picture.png", L"on %C%",
          L"at %T%", L"%phtml%", L"%pptxt%", L"%plain_text_to_tmp_html%"}},
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
}

}  // namespace
}  // namespace verbatix
