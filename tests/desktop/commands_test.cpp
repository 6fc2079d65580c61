// Entries that do more than paste, pressed on the keyboard of the running program.
#include <gtest/gtest.h>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "support/keys.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {
namespace {

constexpr DWORD kGuardMilliseconds = 320;

class EntryCommands : public ::testing::Test {
  protected:
    void Start(const std::vector<StoredLine>& lines, const wchar_t* programLines = L"") {
        CopyFileW(HelperPath(L"record_launch.exe").c_str(), Tool().c_str(), FALSE);
        ASSERT_TRUE(run_.WriteSettings(SettingsText(lines, programLines)));
        ASSERT_TRUE(run_.Start(L"-bg"));
        target_ = std::make_unique<Target>();
    }
    std::wstring Tool() const { return run_.Place().File(L"my tool.exe"); }
    std::wstring Launched() const {
        const std::string bytes = ReadBytes(run_.Place().File(L"launched.txt"));
        return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    }
    void Press(BYTE key, DWORD held = 250) const {
        Linger(kGuardMilliseconds);
        for (const BYTE down : {static_cast<BYTE>(VK_LCONTROL), static_cast<BYTE>(VK_LMENU), key})
            PressKeyDown(down);
        // Long enough, as a finger is, that commands which follow the press are not met by its release.
        Linger(held);
        for (const BYTE up : {key, static_cast<BYTE>(VK_LMENU), static_cast<BYTE>(VK_LCONTROL)})
            LetKeyUp(up);
    }
    void Select(std::wstring_view text) const {
        ASSERT_TRUE(target_->Activate());
        target_->SetText(text);
        SendMessageW(target_->Edit(), EM_SETSEL, 0, -1);
    }
    bool Shows(const std::wstring& text) const {
        return WaitFor([&] { return target_->Text() == text; });
    }
    static std::wstring Clipboard() {
        std::wstring text;
        ClipboardGetText(text);
        return text;
    }

    ProgramRun run_;
    std::unique_ptr<Target> target_;
};

TEST_F(EntryCommands, SlotsKeepAndPaste) {
    Start({{L"Ctrl-Alt+1", L"copy_slot:1"},
           {L"Ctrl-Alt+9", L"copy_slot:9"},
           {L"Ctrl-Alt+S", L"save_slot: 2"},
           {L"Ctrl-Alt+P", L"paste_slot:1x92"}});
    Select(L"one,");
    Press('1');
    ASSERT_TRUE(WaitFor([] { return Clipboard() == L"one,"; }));
    Linger(300);
    Select(L"nine,");
    Press('9');
    ASSERT_TRUE(WaitFor([] { return Clipboard() == L"nine,"; }));
    Linger(300);
    ASSERT_TRUE(ClipboardPutText(L"two"));
    Press('S');
    Linger(300);
    target_->SetText(L"");
    Press('P');
    EXPECT_TRUE(Shows(L"one,nine,two")) << ::testing::PrintToString(target_->Text());
}

TEST_F(EntryCommands, ReplaceExpandAndPlayKeys) {
    Start({{L"Ctrl-Alt+R", L"replace:\\na=>b\\n%09=>, "},
           {L"Ctrl-Alt+A", L"<%copy_text%|%copy_text_uc%>%nc%%TAB%."},
           {L"Ctrl-Alt+K", L"a%send_enter%b%sleep_50%c%send_tab%%send_enter%d"}});
    Select(L"banana\tx");
    Press('R');
    EXPECT_TRUE(Shows(L"bbnbnb, x")) << ::testing::PrintToString(target_->Text());
    Select(L"Word");
    Press('A');
    EXPECT_TRUE(Shows(L"<Word|WORD>\t.")) << ::testing::PrintToString(target_->Text());
    Select(L"");
    Press('K');
    EXPECT_TRUE(Shows(L"a\r\nbc\t\r\nd")) << ::testing::PrintToString(target_->Text());
    EXPECT_FALSE(AnyModifierDown());
}

TEST_F(EntryCommands, ProgramsStart) {
    // The checkout may stand in a folder whose name begins with "n".
    std::wstring place = run_.Place().Path() + L"\\";
    ReplaceAll(place, L"\\n", L"\\%nc%n");
    const std::wstring tool = L"\"" + place + L"my tool.exe\"";
    Start({{L"Ctrl-Alt+A", L"cmd:" + tool + L" one \"two three\""},
           {L"Ctrl-Alt+B", L"run:" + place + L"my tool.exe"},
           {L"Ctrl-Alt+C", L"runx:" + tool + L" <%cpy%>\\n" + tool + L" %cpy_txt_urlencode%"},
           {L"Ctrl-Alt+D", L"cpy:" + tool + L" [%cpy%]"},
           {L"Ctrl-Alt+E", L"cmd:" + place + L"missing.exe x"},
           {L"Ctrl-Alt+F", L"later"}});
    const auto launched = [&](const std::wstring& line) {
        return WaitFor([&] { return Launched().find(line + L"|") != std::wstring::npos; }, 10000);
    };
    Press('A');
    EXPECT_TRUE(launched(L"one \"two three\"")) << ::testing::PrintToString(Launched());
    Press('B');  // a path with blanks, as a whole, is one file
    EXPECT_TRUE(launched(L"\n")) << ::testing::PrintToString(Launched());
    Select(L"  a b  ");
    Press('C');
    EXPECT_TRUE(launched(L"<a b>")) << ::testing::PrintToString(Launched());
    EXPECT_TRUE(launched(L"a%20b")) << ::testing::PrintToString(Launched());
    Select(L"sel");
    Press('D', 0);  // copies 200 ms after the press
    EXPECT_TRUE(launched(L"[sel]")) << ::testing::PrintToString(Launched());
    Press('E');  // says nothing and goes on
    Select(L"");
    Press('F');
    EXPECT_TRUE(Shows(L"later"));
    EXPECT_FALSE(run_.Program().WaitForVisibleWindow(L"#32770", nullptr, 0));
}

TEST_F(EntryCommands, TheUsersClipboardComesBackOnce) {
    // So long an entry that the next press comes before the clipboard is due to come back.
    Start({{L"Ctrl-Alt+A", L"a%send_tab%%sleep_200%"}, {L"Ctrl-Alt+P", L"sys:PathToClipboard"}},
          L"restore_old_clipboard=1\r\n");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    for (int press = 0; press < 3; ++press) Press('A', 0);
    EXPECT_TRUE(Shows(L"a\ta\ta\t")) << ::testing::PrintToString(target_->Text());
    EXPECT_TRUE(WaitFor([] { return Clipboard() == L"the user's"; }))
        << ::testing::PrintToString(Clipboard());
    // A command whose result is the clipboard's content keeps it there.
    Press('P');
    EXPECT_TRUE(WaitFor([] { return Clipboard() != L"the user's"; }));
    Linger(400);
    EXPECT_EQ(Clipboard(), L"");
}

TEST_F(EntryCommands, SharedHotkeyOpensAMenu) {
    Start({{L"Ctrl-Alt+M", L"first", L"&Alpha"}, {L"Ctrl-Alt+M", L"second", L"&Beta"}});
    const HWND dialog = run_.MainDialog();
    const auto isOpen = [] { return IsWindowVisible(FindWindowW(L"#32768", nullptr)) != FALSE; };
    // A stroke may come to nothing on the bench when the focus has just moved.
    const auto open = [&] {
        EXPECT_TRUE(target_->Activate());
        for (int press = 0; press < 3 && !isOpen(); ++press) {
            Linger(kGuardMilliseconds);
            PlayStroke({VK_LCONTROL, VK_LMENU}, 'M');
            WaitFor(isOpen, 1500);
        }
        return isOpen();
    };
    target_->SetText(L"before ");
    ASSERT_TRUE(open());
    PlayStroke({}, 'B');
    EXPECT_TRUE(Shows(L"before second")) << ::testing::PrintToString(target_->Text());
    EXPECT_EQ(GetForegroundWindow(), target_->Window());
    ASSERT_TRUE(open());
    EXPECT_EQ(Clipboard(), L"second");  // nothing comes back without the option
    PlayStroke({}, VK_UP);              // the program's own row
    PlayStroke({}, VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == dialog; }));
    ASSERT_TRUE(open());
    EXPECT_EQ(run_.Exit(), 1);
}

}  // namespace
}  // namespace verbatix::test
