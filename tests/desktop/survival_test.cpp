// What stands in the settings file, through restarts and through bad files.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "base/text.h"
#include "ids.h"
#include "support/keys.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

const std::wstring kManyScripts = L"\x041f\x0440\x0438\x0432\x0435\x0442 \x20ac 5 \xd83d\xde00  ";

TEST(Survival, OtherScriptsOutliveARestart) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl-Alt+Q", kManyScripts, L"\x00c4rger/\x4e2d"}})));
    const std::string before = ReadBytes(run.SettingsFile());
    for (int start = 0; start < 2; ++start) {
        ASSERT_TRUE(run.Start(L"-bg"));
        const Target target;
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'Q');
        EXPECT_TRUE(WaitFor([&] { return target.Text() == kManyScripts; }));
        EXPECT_EQ(run.Exit(), 1);
    }
    const std::string after = ReadBytes(run.SettingsFile());
    const std::string entry = Utf16File(kManyScripts + L"<E<N<D|").substr(2);
    EXPECT_NE(before.find(entry), std::string::npos);
    EXPECT_NE(after.find(entry), std::string::npos);
}

TEST(Survival, AnOldAnsiFileIsReadAsItIs) {
    ProgramRun run;
    const std::wstring text = SettingsText({{L"Ctrl-Alt+Q", L"gr\x00fc\x00df"}});
    ASSERT_TRUE(WriteBytes(run.SettingsFile(), ToBytes(text, CP_ACP)));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'Q');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"gr\x00fc\x00df"; }));
    EXPECT_EQ(run.Exit(), 1);
    EXPECT_NE(ReadBytes(run.SettingsFile()).substr(0, 2), "\xff\xfe");
}

TEST(Survival, NoFileKeepsTheProgramFromStarting) {
    const std::wstring list = SettingsText({{L"Ctrl+Q", L"kept"}});
    std::string noise(4000, '\0');
    for (std::size_t i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * i >> 7);
    const std::pair<std::string, int> files[] = {
        {noise, -1},
        {Utf16File(list.substr(0, list.size() / 2)), -1},
        {Utf16File(list + L"listcmd_count=7\r\n"), 1},
        {Utf16File(
             L"[Program]\r\nlistcmd_count=300000000\r\n[list_text]\r\ntext_000=Ctrl+Q=kept<E<N<D|\r\n"),
         1},
    };
    for (const auto& [bytes, entries] : files) {
        ProgramRun run;
        ASSERT_TRUE(WriteBytes(run.SettingsFile(), bytes));
        ASSERT_TRUE(run.Start(L"-bg")) << ::testing::PrintToString(bytes);
        const auto rows = SendMessageW(GetDlgItem(run.MainDialog(), IDC_LIST), LVM_GETITEMCOUNT, 0, 0);
        EXPECT_TRUE(entries < 0 || rows == entries) << rows;
        EXPECT_EQ(run.Exit(), 1);
    }
}

}  // namespace
}  // namespace verbatix::test
