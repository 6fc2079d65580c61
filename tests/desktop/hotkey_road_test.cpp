// From a key pressed on the keyboard to the text in another program's edit control.
#include <gtest/gtest.h>

#include "base/text.h"
#include "ids.h"
#include "support/keys.h"
#include "support/mouse.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

// Longer than the guard against repeats, after which the next press counts again.
constexpr DWORD kGuardMilliseconds = 320;

struct Press {
    const wchar_t* hotkey;
    std::initializer_list<BYTE> held;
    BYTE key;
    std::wstring text;
    DWORD mouseDown = 0;
};

const std::initializer_list<BYTE> kCtrlAlt = {VK_LCONTROL, VK_LMENU};

const Press kPresses[] = {
    {L"L-Win+Q", {VK_LWIN}, 'Q', L"left Windows"},
    {L"Ctrl-Alt+Q", kCtrlAlt, 'Q', L"one\\ntwo\\nthree"},
    {L"Alt-Gr+Q", {VK_LCONTROL, VK_RMENU}, 'Q', L"right Alt"},
    {L"Ctrl+Q", {VK_LCONTROL}, 'Q', L"\x0442 \x20ac \x4e2d \xd83d\xde00 end"},
    {L"Alt+Q", {VK_LMENU}, 'Q', L"left Alt"},
    {L"R-Ctrl+Q", {VK_RCONTROL}, 'Q', L"right Ctrl"},
    {L"L-Mouse+Q", {}, 'Q', L"left button", MOUSEEVENTF_LEFTDOWN},
    {L"R-Mouse+Q", {}, 'Q', L"right button", MOUSEEVENTF_RIGHTDOWN},
    {L"Ctrl-Alt+F12", kCtrlAlt, VK_F12, L"last function key"},
    {L"Ctrl-Alt+NUM_+", kCtrlAlt, VK_ADD, L"number pad plus"},
    {L"Ctrl-Alt+U", kCtrlAlt, 'U', std::wstring(3999, L'x') + L"!"},
};

void Play(const Press& press) {
    mouse_event(press.mouseDown, 0, 0, 0, 0);
    if (press.mouseDown) Linger(50);
    PlayStroke(press.held, press.key);
    mouse_event(press.mouseDown << 1, 0, 0, 0, 0);
}

TEST(HotkeyRoad, EveryModifierKeyAndTextArrivesAndWhatIsNoHotkeyIsUntouched) {
    std::vector<StoredLine> lines = {{L"Ctrl+I", L"[i]"}};
    for (const Press& press : kPresses) lines.push_back({press.hotkey, press.text});
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText(lines, L"m_disables_keys=Ctrl+I|\r\n")));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    MoveMouse({900, 300});
    const auto shows = [&](const std::wstring& text) {
        return WaitFor([&] { return target.Text() == text; });
    };
    for (const Press& press : kPresses) {
        target.SetText(L"");
        ASSERT_TRUE(target.Activate() && SettlesInFront(target.Window()));
        Play(press);
        std::wstring expected = press.text;
        ReplaceAll(expected, L"\\n", L"\r\n");
        EXPECT_TRUE(shows(expected)) << ::testing::PrintToString(press.hotkey) << " gave "
                                     << ::testing::PrintToString(target.Text());
        EXPECT_TRUE(WaitFor([] { return !AnyModifierDown(); })) << ::testing::PrintToString(press.hotkey);
        // What a mouse button opened (a context menu) must not be in the way of the next.
        PlayStroke({}, VK_ESCAPE);
        Linger(kGuardMilliseconds);
    }
    target.SetText(L"");
    PlayStroke({VK_LCONTROL, VK_LSHIFT}, 'Q');
    // The disabled Ctrl+I would put a tab there if it reached the edit control.
    PlayStroke({VK_LCONTROL}, 'I');
    for (const BYTE key : {'H', 'E', 'Q', 'L', 'O'}) PlayStroke({}, key);
    PlayStroke({VK_LSHIFT}, 'Q');
    EXPECT_TRUE(shows(L"heqloQ")) << ::testing::PrintToString(target.Text());
    EXPECT_FALSE(AnyModifierDown());
}

TEST(HotkeyRoad, AReportTellsWhatBecameOfThePressesAndNoneOfTheirTexts) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText({{L"Ctrl+Q", L"secret text", L"secret label"},
                                                {L"Ctrl+J", L"cmd:no_such_program.exe"},
                                                {L"Ctrl+I", L"secret too"}},
                                               L"m_disables_keys=Ctrl+I|\r\n")));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    PlayStroke({VK_LCONTROL}, 'Q');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"secret text"; }));
    PlayStroke({VK_LCONTROL}, 'I');
    Linger(kGuardMilliseconds);
    ASSERT_TRUE(run.IsThrough());
    PlayStroke({VK_LCONTROL}, 'J');
    constexpr LPARAM kMenuBar = 0xAFFE0000;
    std::wstring report;
    const auto tells = [&](const wchar_t* words) {
        PostMessageW(run.MainDialog(), WM_COMMAND, CMD_DIAGNOSTICS, kMenuBar);
        return WaitFor([&] {
            const std::string bytes = ReadBytes(run.Place().File(L"Verbatix_diagnostics.txt"));
            report.assign(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
            return report.find(words) != std::wstring::npos;
        });
    };
    EXPECT_TRUE(tells(L"stopped: the program could not be started"));
    for (const wchar_t* words :
         {L"Ctrl + Q", L"target_window.exe", L"at once", L"entry 0", L" 0/1/0 ", L"done", L"Ctrl + J",
          L"entry 1", L"cmd:", L"Ctrl + I", L"this hotkey is switched off", L"switched-off hotkeys: 1"}) {
        EXPECT_NE(report.find(words), std::wstring::npos) << ::testing::PrintToString(words);
    }
    EXPECT_EQ(report.find(L"secret"), std::wstring::npos);
}

}  // namespace
}  // namespace verbatix::test
