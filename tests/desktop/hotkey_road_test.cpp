// From a key pressed on the keyboard to the text in another program's edit control.
#include <gtest/gtest.h>

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
    if (!press.mouseDown) return PlayStroke(press.held, key);
    mouse_event(press.mouseDown, 0, 0, 0, 0);
    Linger(50);
    PressKeyDown(key);
    // The button first: held beyond the guard it would make the key's release a second press.
    mouse_event(press.mouseUp, 0, 0, 0, 0);
    LetKeyUp(key);
}

TEST(HotkeyRoad, EveryModifierPutsItsTextIntoTheTarget) {
    std::vector<StoredLine> lines;
    for (const Press& press : kModifiers) {
        lines.push_back(
            {press.modifierName + std::wstring(L"+Q"), std::wstring(L"by ") + press.modifierName});
        if (std::wstring_view(press.modifierName) == L"Alt-Gr") lines.pop_back();
    }
    lines.push_back({L"Alt-Gr+Q", L"by Alt-Gr"});
    ProgramRun run;
    ASSERT_TRUE(run.WriteSettings(SettingsText(lines)));
    ASSERT_TRUE(run.Start(L"-bg"));
    const Target target;
    for (const Press& press : kModifiers) {
        target.SetText(L"");
        ASSERT_TRUE(target.Activate());
        SetCursorPos(900, 300);
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
        {L"F1", VK_F1, L"function key"},
        {L"F12", VK_F12, L"last function key"},
        {L"NUM_7", VK_NUMPAD7, L"number pad"},
        {L"NUM_+", VK_ADD, L"number pad plus"},
        {L"5", '5', L"digit"},
        {L"Z", 'Z', L"\x043f\x0440\x0438\x0432\x0435\x0442 \x20ac \x4e2d"},
        {L"X", 'X', L"emoji \xd83d\xde00 end"},
        {L"Y", 'Y', L"one\\ntwo\\nthree"},
        {L"W", 'W', L"trailing blanks   "},
        {L"U", 'U', std::wstring(3999, L'x') + L"!"},
        {L"Left", VK_LEFT, L"arrow"},
        {L"Space", VK_SPACE, L"space key"},
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
            << ::testing::PrintToString(row.keyName);
        Linger(kGuardMilliseconds);
    }
    EXPECT_FALSE(AnyModifierDown());
}

class HotkeyRules : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(run_.WriteSettings(
            SettingsText({{L"Ctrl+Q", L"[q]"}, {L"Ctrl+I", L"[i]"}}, L"m_disables_keys=Ctrl+I|\r\n")));
        ASSERT_TRUE(run_.Start(L"-bg"));
        target_ = std::make_unique<Target>();
    }

    // What the target holds once a marker typed behind it has arrived.
    std::wstring Settled() {
        PlayStroke({}, 'M');
        WaitFor([&] { return target_->Text().find(L'm') != std::wstring::npos; });
        return target_->Text();
    }

    ProgramRun run_;
    std::unique_ptr<Target> target_;
};

TEST_F(HotkeyRules, ShiftIsNoPartOfAHotkey) {
    PlayStroke({VK_LCONTROL, VK_LSHIFT}, 'Q');
    EXPECT_EQ(Settled(), L"m");
    EXPECT_FALSE(AnyModifierDown());
}

TEST_F(HotkeyRules, TwoPressesWithinTheGuardPasteOnce) {
    // On a busy machine the second press may come too late to be kept off; then once more.
    ULONGLONG took = kGuardMilliseconds;
    for (int attempt = 0; took >= kGuardMilliseconds - 40 && attempt < 10; ++attempt) {
        Linger(kGuardMilliseconds);
        target_->SetText(L"");
        const ULONGLONG start = GetTickCount64();
        PlayStroke({VK_LCONTROL}, 'Q');
        PlayStroke({VK_LCONTROL}, 'Q');
        took = GetTickCount64() - start;
    }
    EXPECT_EQ(Settled(), L"[q]m");
    Linger(kGuardMilliseconds);
    PlayStroke({VK_LCONTROL}, 'Q');
    EXPECT_TRUE(WaitFor([&] { return target_->Text() == L"[q]m[q]"; }));
}

TEST_F(HotkeyRules, ADisabledHotkeyIsSwallowed) {
    // Ctrl+I that reached the edit control would put a tab there.
    target_->SetText(L"x");
    PlayStroke({VK_LCONTROL}, 'I');
    EXPECT_EQ(Settled(), L"xm");
}

TEST_F(HotkeyRules, OrdinaryKeysAreUntouched) {
    for (const BYTE key : {'H', 'E', 'Q', 'L', 'O'}) PlayStroke({}, key);
    PlayStroke({VK_LSHIFT}, 'Q');
    EXPECT_EQ(Settled(), L"heqloQm");
    PlayStroke({VK_LCONTROL}, VK_HOME);
    PlayStroke({VK_LCONTROL, VK_LSHIFT}, VK_END);
    PlayStroke({}, VK_DELETE);
    EXPECT_TRUE(WaitFor([&] { return target_->Text().empty(); }));
}

}  // namespace
}  // namespace verbatix::test
