// From a key pressed on the keyboard to the text in another program's edit control.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/keys.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

// Longer than the guard against repeats, after which the next press counts again.
constexpr DWORD kGuardMilliseconds = 320;

struct Press {
    const wchar_t* modifierName;
    std::initializer_list<BYTE> held;
    DWORD mouseDown = 0;
    DWORD mouseUp = 0;
};

const Press kModifiers[] = {
    {L"L-Win", {VK_LWIN}},
    {L"R-Win", {VK_RWIN}},
    {L"Ctrl-Alt", {VK_LCONTROL, VK_LMENU}},
    {L"Alt-Gr", {VK_LCONTROL, VK_RMENU}},
    {L"Alt-Gr", {VK_RMENU}},
    {L"Ctrl", {VK_LCONTROL}},
    {L"Alt", {VK_LMENU}},
    {L"R-Ctrl", {VK_RCONTROL}},
    {L"L-Mouse", {}, MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP},
    {L"M-Mouse", {}, MOUSEEVENTF_MIDDLEDOWN, MOUSEEVENTF_MIDDLEUP},
    {L"R-Mouse", {}, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP},
};

void Play(const Press& press, BYTE key) {
    if (press.mouseDown) mouse_event(press.mouseDown, 0, 0, 0, 0);
    if (press.mouseDown) Linger(50);
    PlayStroke(press.held, key);
    if (press.mouseUp) mouse_event(press.mouseUp, 0, 0, 0, 0);
}

TEST(HotkeyRoad, EveryModifierPutsItsTextIntoTheTarget) {
    std::vector<StoredLine> lines;
    for (const Press& press : kModifiers) {
        const std::wstring hotkey = press.modifierName + std::wstring(L"+Q");
        if (!lines.empty() && lines.back().hotkey == hotkey) continue;
        lines.push_back({hotkey, std::wstring(L"by ") + press.modifierName});
    }
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText(lines)));
    ASSERT_TRUE(run.Start(L"-bg"));
    SetCursorPos(900, 300);
    const Target target;
    for (const Press& press : kModifiers) {
        target.SetText(L"");
        ASSERT_TRUE(target.Activate());
        // The middle button pastes by itself in the edit control of the bench: then there is nothing.
        if (OpenClipboard(nullptr)) EmptyClipboard() && CloseClipboard();
        Play(press, 'Q');
        const std::wstring expected = std::wstring(L"by ") + press.modifierName;
        EXPECT_TRUE(WaitFor([&] { return target.Text() == expected; }))
            << press.modifierName << " gave " << ::testing::PrintToString(target.Text());
        EXPECT_TRUE(WaitFor([] { return !AnyModifierDown(); })) << press.modifierName;
        // What a mouse button opened (a context menu) must not be in the way of the next.
        PlayStroke({}, VK_ESCAPE);
        Linger(kGuardMilliseconds);
    }
}

TEST(HotkeyRoad, EveryKindOfKeyAndTextArrives) {
    const struct {
        const wchar_t* keyName;
        BYTE key;
        std::wstring text;
    } rows[] = {
        {L"F12", VK_F12, L"last function key"},
        {L"NUM_+", VK_ADD, L"number pad plus"},
        {L"X", 'X', L"\x0442 \x20ac \x4e2d \xd83d\xde00 end"},
        {L"7", '7', L"one\\ntwo\\nthree"},
        {L"U", 'U', std::wstring(3999, L'x') + L"!"},
        {L"Left", VK_LEFT, L"arrow"},
    };
    std::vector<StoredLine> lines;
    for (const auto& row : rows) lines.push_back({std::wstring(L"Ctrl-Alt+") + row.keyName, row.text});
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText(lines)));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    for (const auto& row : rows) {
        target.SetText(L"");
        PlayStroke({VK_LCONTROL, VK_LMENU}, row.key);
        std::wstring expected = row.text;
        for (std::size_t at; (at = expected.find(L"\\n")) != std::wstring::npos;)
            expected.replace(at, 2, L"\r\n");
        EXPECT_TRUE(WaitFor([&] { return target.Text() == expected; }))
            << ::testing::PrintToString(row.keyName) << " gave " << ::testing::PrintToString(target.Text());
        Linger(kGuardMilliseconds);
    }
}

TEST(HotkeyRoad, WhatIsNoHotkeyIsUntouchedAndADisabledOneIsSwallowed) {
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(
        SettingsText({{L"Ctrl+Q", L"[q]"}, {L"Ctrl+I", L"[i]"}}, L"m_disables_keys=Ctrl+I|\r\n")));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    PlayStroke({VK_LCONTROL, VK_LSHIFT}, 'Q');
    // Ctrl+I that reached the edit control would put a tab there.
    PlayStroke({VK_LCONTROL}, 'I');
    for (const BYTE key : {'H', 'E', 'Q', 'L', 'O'}) PlayStroke({}, key);
    PlayStroke({VK_LSHIFT}, 'Q');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"heqloQ"; }))
        << ::testing::PrintToString(target.Text());
    EXPECT_FALSE(AnyModifierDown());
}

}  // namespace
}  // namespace verbatix::test
