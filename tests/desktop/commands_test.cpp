// Entries that do more than paste, pressed on the keyboard of the running program.
#include <gtest/gtest.h>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "hotkeys/key_watch.h"
#include "ids.h"
#include "support/desktop.h"
#include "support/foreign_clipboard.h"
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
    // As a hand does it: the modifiers first, then the key for a moment, which comes up before they do.
    void Press(BYTE key, DWORD pause = kGuardMilliseconds) const {
        Linger(pause);
        EXPECT_TRUE(Hold({VK_LCONTROL, VK_LMENU}));
        PressKeyDown(key);
        Linger(70);
        LetKeyUp(key);
        Linger(30);
        LetKeyUp(VK_LMENU);
        Linger(20);
        LetKeyUp(VK_LCONTROL);
    }
    void Select(std::wstring_view text) const {
        ASSERT_TRUE(target_->Activate());
        target_->SetText(text);
        SendMessageW(target_->Edit(), EM_SETSEL, 0, -1);
    }
    bool Shows(const std::wstring& text) const {
        return WaitFor([&] { return target_->Text() == text; });
    }

    ProgramRun run_;
    std::unique_ptr<Target> target_;
};

// Whether the clipboard comes back makes an execution longer, and moves its strokes to where the user lets
// the hotkey go.
class EntryCommandsWithRestore : public EntryCommands, public ::testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Off, EntryCommandsWithRestore, ::testing::Values(false));
INSTANTIATE_TEST_SUITE_P(On, EntryCommandsWithRestore, ::testing::Values(true));

TEST_P(EntryCommandsWithRestore, KeepReplaceExpandPlayAndStart) {
    // The checkout may stand in a folder whose name begins with "n".
    std::wstring place = run_.Place().Path() + L"\\";
    ReplaceAll(place, L"\\n", L"\\%nc%n");
    const std::wstring tool = L"\"" + place + L"my tool.exe\"";
    Start({{L"Ctrl-Alt+1", L"copy_slot:1"},
           {L"Ctrl-Alt+9", L"copy_slot:9"},
           {L"Ctrl-Alt+S", L"save_slot: 2"},
           {L"Ctrl-Alt+P", L"paste_slot:1x92"},
           {L"Ctrl-Alt+R", L"replace:\\na=>b\\n%09=>, "},
           {L"Ctrl-Alt+X", L"<%copy_text%|%copy_text_uc%>%nc%%TAB%."},
           {L"Ctrl-Alt+K", L"a%send_enter%b%sleep_50%c%send_tab%%send_enter%d"},
           {L"Ctrl-Alt+A", L"cmd:" + tool + L" one \"two three\""},
           {L"Ctrl-Alt+B", L"run:" + place + L"my tool.exe"},
           {L"Ctrl-Alt+C", L"runx:" + tool + L" <%cpy%>\\n" + tool + L" %cpy_txt_urlencode%"},
           {L"Ctrl-Alt+D", L"cpy:" + tool + L" [%cpy%]"},
           {L"Ctrl-Alt+E", L"cmd:" + place + L"missing.exe x"},
           {L"Ctrl-Alt+F", L"later"}},
          GetParam() ? L"restore_old_clipboard=1\r\n" : L"");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    for (const auto& [key, text] : {std::pair('1', L"one,"), std::pair('9', L"nine,")}) {
        Select(text);
        const DWORD before = GetClipboardSequenceNumber();
        Press(static_cast<BYTE>(key));
        ASSERT_TRUE(WaitFor([&] { return GetClipboardSequenceNumber() != before; }));
        ASSERT_TRUE(ClipboardGets(GetParam() ? L"the user's" : text));
        EXPECT_EQ(target_->Text(), text);
        Linger(300);
    }
    ASSERT_TRUE(ClipboardPutText(L"two"));
    Press('S');
    EXPECT_TRUE(run_.IsThrough());
    const std::tuple<const wchar_t*, char, const wchar_t*> pastes[] = {
        {L"", 'P', L"one,nine,two"},
        {L"banana\tx", 'R', L"bbnbnb, x"},
        {L"Word", 'X', L"<Word|WORD>\t."},
        {L"", 'K', L"a\r\nbc\t\r\nd"},
    };
    for (const auto& [selected, key, shown] : pastes) {
        Select(selected);
        Press(static_cast<BYTE>(key));
        EXPECT_TRUE(Shows(shown)) << ::testing::PrintToString(target_->Text());
    }
    const std::tuple<const wchar_t*, char, std::vector<std::wstring>> launches[] = {
        {L"", 'A', {L"one \"two three\""}},
        {L"", 'B', {L"\n"}},  // a path with blanks, as a whole, is one file
        {L"  a b  ", 'C', {L"<a b>", L"a%20b"}},
        {L"sel", 'D', {L"[sel]"}},
    };
    for (const auto& [selected, key, lines] : launches) {
        if (*selected) Select(selected);
        Press(static_cast<BYTE>(key));
        for (const std::wstring& line : lines) {
            EXPECT_TRUE(WaitFor([&] { return Launched().find(line + L"|") != std::wstring::npos; }, 10000))
                << ::testing::PrintToString(Launched());
        }
    }
    Press('E');  // says nothing and goes on
    EXPECT_TRUE(run_.IsThrough());
    Select(L"");
    Press('F');
    EXPECT_TRUE(Shows(L"later"));
    EXPECT_FALSE(run_.Program().WaitForVisibleWindow(L"#32770", nullptr, 0));
    EXPECT_TRUE(WaitFor([] { return !AnyModifierDown(); }));
}

TEST_F(EntryCommands, TheUsersClipboardComesBackOnce) {
    // So long an entry that the next press comes before the clipboard is due to come back.
    Start({{L"Ctrl-Alt+A", L"a%send_tab%%sleep_200%"}, {L"Ctrl-Alt+P", L"sys:PathToClipboard"}},
          L"restore_old_clipboard=1\r\n");
    ASSERT_TRUE(ClipboardPutText(L"the user's"));
    for (const wchar_t* shown : {L"a\t", L"a\ta\t", L"a\ta\ta\t"}) {
        Press('A', 0);
        EXPECT_TRUE(Shows(shown)) << ::testing::PrintToString(target_->Text());
        EXPECT_TRUE(run_.IsThrough());
    }
    EXPECT_TRUE(ClipboardGets(L"the user's")) << ::testing::PrintToString(ClipboardText());
    // A command whose result is the clipboard's content keeps it there.
    Press('P');
    EXPECT_TRUE(ClipboardGets(L""));
    Linger(400);
    EXPECT_EQ(ClipboardText(), L"");
}

TEST_F(EntryCommands, SharedHotkeyOpensAMenu) {
    Start({{L"Ctrl-Alt+M", L"first", L"&Alpha"}, {L"Ctrl-Alt+M", L"second", L"&Beta"}});
    const HWND dialog = run_.MainDialog();
    const auto isOpen = [] { return IsWindowVisible(FindWindowW(L"#32768", nullptr)) != FALSE; };
    // Once: the same hotkey closes an open menu.
    const auto open = [&] {
        EXPECT_TRUE(target_->Activate() && SettlesInFront(target_->Window()));
        Linger(kGuardMilliseconds);
        PlayStroke({VK_LCONTROL, VK_LMENU}, 'M');
        return WaitFor(isOpen, 10000);
    };
    target_->SetText(L"before ");
    ASSERT_TRUE(open()) << run_.Diagnostics();
    {
        // The steps of a "cpy:" entry wait until the menu is gone.
        KeyWatch watch;
        auto copies = [copied = 0]() mutable {
            for (const SeenKey& seen : KeyWatch::Take()) copied += seen == SeenKey{'C', false, 444};
            return copied;
        };
        PostMessageW(dialog, WM_TIMER, TIMER_CPY_COPY, 0);
        Linger(500);
        EXPECT_EQ(copies(), 0);
        EXPECT_TRUE(isOpen());
        PlayStroke({}, VK_ESCAPE);
        EXPECT_TRUE(WaitFor([&] { return copies() > 0; }));
        Linger(600);  // for the second step
    }
    ASSERT_TRUE(open()) << run_.Diagnostics();
    PlayStroke({}, 'B');
    EXPECT_TRUE(Shows(L"before second"))
        << ::testing::PrintToString(target_->Text()) << NameOf(GetForegroundWindow()) << run_.Diagnostics();
    EXPECT_EQ(GetForegroundWindow(), target_->Window()) << NameOf(GetForegroundWindow());
    ASSERT_TRUE(open()) << run_.Diagnostics();
    EXPECT_EQ(ClipboardText(), L"second");  // nothing comes back without the option
    PlayStroke({}, VK_UP);                  // the program's own row
    PlayStroke({}, VK_RETURN);
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == dialog; }))
        << NameOf(GetForegroundWindow()) << isOpen() << run_.Diagnostics();
    // Until the program is through with the menu, whose owner goes last.
    EXPECT_TRUE(WaitFor([] { return !IsWindowVisible(FindWindowW(L"VerbatixMenuOwner", nullptr)); }));
    ASSERT_TRUE(open()) << run_.Diagnostics();
    EXPECT_EQ(run_.Exit(), 1);
}

// Held for longer than Windows, and the bench, wait for a hook.
TEST_F(EntryCommands, AHeldKeyDoesNotReachTheBoxOfItsEntry) {
    Start({{L"Ctrl-Alt+Space", L"sys:ShellBrowser"}});
    EXPECT_TRUE(Hold({VK_LCONTROL, VK_LMENU}));
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] {
        PressKeyDown(VK_SPACE);
        return (box = FindWindowW(L"#32770", L"")) && GetForegroundWindow() == box;
    }));
    const ULONGLONG start = GetTickCount64();
    while (GetTickCount64() - start < 2500) {
        PressKeyDown(VK_SPACE);
        Linger(30);
    }
    for (const BYTE key : {BYTE{VK_SPACE}, BYTE{VK_LMENU}, BYTE{VK_LCONTROL}}) LetKeyUp(key);
    Linger(100);
    EXPECT_TRUE(IsWindow(box));
    PlayStroke({}, VK_SPACE);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    EXPECT_EQ(target_->Text(), L"");
}

}  // namespace
}  // namespace verbatix::test
