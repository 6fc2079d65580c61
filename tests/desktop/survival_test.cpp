// What stands in the settings file, through restarts and through bad files.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <random>

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

std::string HostileFile(int seed) {
    std::mt19937 random(static_cast<unsigned>(seed));
    const auto pick = [&](unsigned count) { return random() % count; };
    std::wstring text;
    switch (seed) {
        case 0: {
            std::string bytes(4000, '\0');
            for (char& byte : bytes) byte = static_cast<char>(random());
            return bytes;
        }
        case 1:
            text = SettingsText({{L"Ctrl+Q", L"kept"}});
            text += L"listcmd_count=7\r\n";
            break;
        case 2:
            text =
                L"[Program]\r\nlistcmd_count=300000000\r\n[list_text]\r\ntext_000=Ctrl+Q=kept<E<N<D|\r\n";
            break;
        case 3: text = SettingsText({{L"Ctrl+Q", std::wstring(1 << 20, L'x')}}); break;
        case 4: text = SettingsText({{L"Ctrl+Q", std::wstring(L"a\0b", 3)}, {L"Ctrl+W", L"\xd83d"}}); break;
        case 5:
            text = SettingsText({{L"Ctrl+Q", L"kept"}});
            text.resize(text.size() / 2);
            break;
        default:
            for (int line = 0; line < 200; ++line) {
                const wchar_t* const pieces[] = {
                    L"[list_text]", L"[Program", L"text_",         L"000",   L"=",       L"Ctrl+",  L"\"",
                    L"'",           L";",        L"listcmd_count", L"99999", L"<E<N<D|", L"\x20ac", L"\t "};
                for (unsigned piece = pick(8); piece > 0; --piece) text += pieces[pick(14)];
                text += L"\r\n";
            }
    }
    return Utf16File(text);
}

TEST(Survival, NoFileKeepsTheProgramFromStarting) {
    for (int seed = 0; seed < 24; ++seed) {
        ProgramRun run;
        ASSERT_TRUE(WriteBytes(run.SettingsFile(), HostileFile(seed)));
        ASSERT_TRUE(run.Start(L"-bg")) << "file " << seed;
        const auto entries = SendMessageW(GetDlgItem(run.MainDialog(), IDC_LIST), LVM_GETITEMCOUNT, 0, 0);
        if (seed == 1 || seed == 2) {
            EXPECT_EQ(entries, 1) << "file " << seed;
        }
        EXPECT_EQ(run.Exit(), 1) << "file " << seed;
    }
}

}  // namespace
}  // namespace verbatix::test
