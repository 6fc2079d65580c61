// The editor of the main window, by mouse and keyboard, down to the settings file.
#include <functional>

#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

class EditorTest : public ProgramWindow {
  protected:
    void Start(const std::vector<StoredLine>& lines, const wchar_t* programLines = L"") {
        ProgramWindow::Start(lines, programLines);
        ASSERT_TRUE(ComesToFront());
    }
    void Press(int button) const {
        PostMessageW(dialog_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(Control(button)));
    }
    void AskForHotkey() const {
        SetFocusTo(IDC_HOTKEY);
        EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
    }
    // Whether the list of codes comes up, or goes.
    bool CodesAreOpen(bool open) const {
        return WaitFor([&] {
            const HWND box = DialogOf(run_.Program().Id(), dialog_);
            return (box && GetDlgItem(box, IDC_CODE_LIST)) == open;
        });
    }
    void SetFocusTo(int id) const {
        PostMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Control(id)), TRUE);
        EXPECT_TRUE(WaitFor([&] { return HasKeyboard(id); }));
    }
    // A choice in a drop-down as its owner is told of it.
    void Choose(int id, WPARAM index) const {
        SendMessageW(Control(id), CB_SETCURSEL, index, 0);
        SendMessageW(dialog_, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(Control(id)));
    }
};

// Each way follows the typing at once; the timer that would keep it comes only when the queue is empty.
TEST_F(EditorTest, ShowsTheSelectedEntryAndLosesNothingTyped) {
    Start({{L"Ctrl+Q", L"one\\ntwo", L"First"}, {L"R-Mouse+F5", L"second", L"Second"}});
    ASSERT_TRUE(Select(0, IDC_LABEL, L"First"));
    EXPECT_EQ(Text(IDC_TEXT), L"one\r\ntwo");
    EXPECT_EQ(Text(IDC_KEY), L"Q");
    EXPECT_EQ(Text(IDC_MODIFIER), L"Ctrl");
    EXPECT_EQ(Text(IDC_COUNTER), L"Text (8/4000)");
    Type(IDC_LABEL, L"my ");
    EXPECT_TRUE(FileGets(L"text_000=my First"));
    Type(IDC_TEXT, L"ab\r");
    ASSERT_TRUE(Select(1, IDC_LABEL, L"Second"));
    EXPECT_TRUE(FileHolds(L"Ctrl+Q=ab\\none\\ntwo<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"R-Mouse+F5=second<E<N<D|"));
    EXPECT_FALSE(FileHolds(L"text_001=my"));
    std::wstring text = L"second";
    for (const UINT message : {WM_QUERYENDSESSION, WM_CLOSE}) {
        Type(IDC_TEXT, L"x");
        text.insert(0, L"x");
        ASSERT_TRUE(Becomes(IDC_TEXT, text));
        EXPECT_EQ(Text(IDC_COUNTER), L"Text (" + std::to_wstring(text.size()) + L"/4000)");
        SendMessageW(dialog_, message, 0, 0);
        EXPECT_TRUE(FileHolds(L"R-Mouse+F5=" + text + L"<E<N<D|")) << message;
    }
    Type(IDC_TEXT, L"y");
    EXPECT_EQ(run_.Exit(), 1);
    EXPECT_TRUE(FileHolds(L"R-Mouse+F5=xxysecond<E<N<D|"));
}

TEST_F(EditorTest, EntriesAreAddedCopiedAndDeleted) {
    Start({{L"Ctrl+Q", L"one", L"First & best"}, {L"Ctrl+X", L""}, {L"Alt+Q", L"three", L"Third"}});
    EXPECT_EQ(Rows(), 2);
    Press(CMD_NEW_ENTRY);
    EXPECT_TRUE(FileGets(L"text_001=Ctrl-Alt+=???Text<E<N<D|")) << "in the blank place";
    EXPECT_TRUE(FileHolds(L"listcmd_count=3"));
    EXPECT_EQ(Rows(), 3);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    Press(CMD_NEW_ENTRY);
    EXPECT_TRUE(FileGets(L"listcmd_count=4"));
    ASSERT_TRUE(Select(0, IDC_TEXT, L"one"));
    Press(CMD_COPY_ENTRY);
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+=one<E<N<D|"));
    ASSERT_TRUE(Select(2, IDC_LABEL, L"Third"));
    EXPECT_EQ(Text(IDC_CLASH), L"");
    Choose(IDC_MODIFIER, 4);
    EXPECT_EQ(Text(IDC_CLASH), L"Shares a menu with First & best.");
    EXPECT_TRUE(FileGets(L"text_002=Ctrl+Q=three<E<N<D|"));
    ASSERT_TRUE(Select(0, IDC_TEXT, L"one"));
    Press(CMD_DELETE_ENTRY);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 4; }));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"???Text")) << "the selection keeps its place";
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+Q=<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"listcmd_count=5"));
    EXPECT_FALSE(FileHolds(L"text_000=First"));

    // By key, again, and by the link that the status bar offers.
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+Q=one<E<N<D|"));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"First & best"));
    PlayStroke({VK_LCONTROL}, 'Y');
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+Q=<E<N<D|"));
    const HWND status = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    const HWND link = GetDlgItem(status, IDC_OFFER_LINK);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(link) && WindowText(link) == L"Undo"; }));
    Click(link, 3, 3);
    EXPECT_TRUE(FileGets(L"text_000=First & best"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 5; }));
    // What follows was typed into a field: in one step, whatever the pauses of saving.
    ASSERT_TRUE(Select(0, IDC_TEXT, L"one"));
    std::wstring typed;
    for (const wchar_t* letter : {L"x", L"y", L"z"}) {
        Type(IDC_TEXT, letter);
        typed += letter;
        EXPECT_TRUE(FileGets(L"=" + typed + L"one<"));
    }
    // By key in that field: once there and back, and on to the steps before, never to and fro.
    SetFocusTo(IDC_TEXT);
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(Becomes(IDC_TEXT, L"one"));
    PlayStroke({VK_LCONTROL}, 'Y');
    EXPECT_TRUE(Becomes(IDC_TEXT, L"xyzone"));
    EXPECT_EQ(SendMessageW(Control(IDC_TEXT), EM_GETSEL, 0, 0), MAKELONG(3, 3)) << "behind what came back";
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(Becomes(IDC_TEXT, L"one"));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Third"));
    EXPECT_TRUE(FileGets(L"text_002=Alt+Q=three<E<N<D|"));
    for (int steps = 0; steps < 3; ++steps) Menu(CMD_UNDO);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2; }));
    EXPECT_TRUE(FileHolds(L"text_000=Ctrl+Q=one<E<N<D|"));
    for (int steps = 0; steps < 5; ++steps) Menu(CMD_REDO);
    EXPECT_TRUE(FileGets(L"=xyzone<"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 5; }));
}

TEST_F(EditorTest, TheInsertMenuInsertsAndALineBreakInAPathIsMended) {
    Start({{L"Ctrl+Q", L"runx:notepad\\ncalc"}});
    ASSERT_TRUE(Select(0, IDC_TEXT, L"runx:notepad\r\ncalc"));
    EXPECT_FALSE(IsWindowVisible(Control(IDC_KEEP_PATHS)));
    SendMessageW(Control(IDC_TEXT), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L""));
    Type(IDC_TEXT, L"runx:C:\\new\\x.exe");
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(Control(IDC_KEEP_PATHS)); }));
    EXPECT_NE(Text(IDC_CLASH), L"");
    Press(IDC_KEEP_PATHS);
    EXPECT_TRUE(FileGets(L"Ctrl+Q=runx:C:\\%nc%new\\x.exe<E<N<D|"));
    EXPECT_EQ(Text(IDC_TEXT), L"runx:C:\\%nc%new\\x.exe");
    EXPECT_FALSE(IsWindowVisible(Control(IDC_KEEP_PATHS)));
    EXPECT_EQ(Text(IDC_CLASH), L"");
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 4, 4);
    PostMessageW(dialog_, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Control(IDC_INSERT)), -1);
    ASSERT_TRUE(MenuIsOpen(true));
    Keys({VK_DOWN, VK_RIGHT, VK_RETURN});
    EXPECT_TRUE(FileGets(L"Ctrl+Q=runx%MMMM%:C:"));
}

TEST_F(EditorTest, ThePreviewFollowsTheTextAndMendsACode) {
    Start({{L"Ctrl+Q", L"in %YYYY%"}});
    ASSERT_TRUE(Select(0, IDC_TEXT, L"in %YYYY%"));
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    const std::wstring dated = L"in " + std::to_wstring(now.wYear);
    EXPECT_TRUE(Becomes(IDC_PREVIEW, dated));
    EXPECT_FALSE(IsWindowVisible(Control(IDC_MEND_CODE)));
    Type(IDC_TEXT, L"%copy_txt%\r");
    EXPECT_TRUE(Becomes(IDC_PREVIEW, L"%copy_txt%\u00b6\r\n" + dated));
    EXPECT_TRUE(Becomes(IDC_MEND_CODE, L"%copy_txt% is no code. Did you mean %copy_text%?"));
    Type(IDC_TEXT, L"%c%");
    EXPECT_TRUE(Becomes(IDC_MEND_CODE, L"%copy_txt% is no code. Did you mean %copy_text%? And 1 more."));
    for (int letter = 0; letter < 3; ++letter) Type(IDC_TEXT, L"\b");
    EXPECT_TRUE(Becomes(IDC_MEND_CODE, L"%copy_txt% is no code. Did you mean %copy_text%?"));
    Press(IDC_MEND_CODE);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"%copy_text%\r\nin %YYYY%"));
    EXPECT_TRUE(Becomes(IDC_PREVIEW, L"sample text\u00b6\r\n" + dated));
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(Control(IDC_MEND_CODE)); }));
    SendMessageW(Control(IDC_TEXT), EM_UNDO, 0, 0);
    EXPECT_EQ(Text(IDC_TEXT), L"%copy_txt%\r\nin %YYYY%");
    Menu(CMD_SHOW_PREVIEW);
    EXPECT_TRUE(FileGets(L"show_preview=0"));
    for (const int control : {IDC_PREVIEW, IDC_MEND_CODE})
        EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(Control(control)); })) << control;
}

TEST_F(EditorTest, TheListOfCodesIsSearchedAndLeavesTheTextAlone) {
    Start({{L"Ctrl+Q", L""}, {L"Alt+W", L"second"}});
    ASSERT_TRUE(Select(0, IDC_TEXT, L"second"));
    SetFocusTo(IDC_TEXT);
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 0, -1);
    // Ignored, it takes nothing: neither letters nor Enter, Tab and Escape of the text.
    Type(IDC_TEXT, L"100% of 5 %");
    EXPECT_TRUE(CodesAreOpen(true));
    PressKey(IDC_TEXT, VK_ESCAPE);
    EXPECT_TRUE(CodesAreOpen(false));
    Type(IDC_TEXT, L"d%");
    PressKey(IDC_TEXT, VK_RETURN);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"100% of 5 %d%\r\n"));
    Type(IDC_TEXT, L"%zz!%DD%x");
    EXPECT_TRUE(Becomes(IDC_TEXT, L"100% of 5 %d%\r\n%zz!%DD%x"));
    EXPECT_TRUE(CodesAreOpen(false));
    Type(IDC_TEXT, L"%d");
    EXPECT_TRUE(CodesAreOpen(true));
    PressKey(IDC_TEXT, VK_RETURN);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"100% of 5 %d%\r\n%zz!%DD%x%d\r\n"));
    EXPECT_TRUE(CodesAreOpen(false));
    EXPECT_TRUE(HasKeyboard(IDC_TEXT));
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 0, -1);
    Type(IDC_TEXT, L"on %tom");
    ASSERT_TRUE(CodesAreOpen(true));
    EXPECT_TRUE(HasKeyboard(IDC_TEXT));
    PressKey(IDC_TEXT, VK_RETURN);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"on %d+1%"));
    EXPECT_TRUE(CodesAreOpen(false));
    EXPECT_TRUE(FileGets(L"Alt+W=on %d+1%<E<N<D|"));
    // With the keyboard, by its key.
    PlayStroke({VK_LCONTROL}, VK_SPACE);
    ASSERT_TRUE(CodesAreOpen(true));
    Keys({'Q', 'U', 'A', 'R', VK_DOWN, VK_RETURN});
    EXPECT_TRUE(Becomes(IDC_TEXT, L"on %d+1%%qfwd%"));
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_TEXT); }));
    Press(IDC_INSERT);
    ASSERT_TRUE(CodesAreOpen(true));
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(CodesAreOpen(false));
    Menu(CMD_LIST_ON_PERCENT);
    EXPECT_TRUE(FileGets(L"list_on_percent=0"));
    Type(IDC_TEXT, L"%d");
    EXPECT_TRUE(Becomes(IDC_TEXT, L"on %d+1%%qfwd%%d"));
    EXPECT_TRUE(CodesAreOpen(false));
    // In a new entry nothing is left of what only stands for a text; a step of its own in one that has one.
    Press(CMD_NEW_ENTRY);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    for (const wchar_t* text : {L"runx:", L"runx:runx:"}) {
        Press(IDC_INSERT);
        ASSERT_TRUE(CodesAreOpen(true));
        Keys({'R', 'U', 'N', 'X', VK_RETURN});
        EXPECT_TRUE(Becomes(IDC_TEXT, text)) << testing::PrintToString(Text(IDC_TEXT));
    }
    ASSERT_TRUE(SettlesInFront(dialog_));
    Type(IDC_TEXT, L"x");
    EXPECT_TRUE(Becomes(IDC_TEXT, L"runx:xrunx:")) << testing::PrintToString(Text(IDC_TEXT));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(Becomes(IDC_TEXT, L"runx:runx:")) << "what was typed behind it is a step of its own";
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(Becomes(IDC_TEXT, L"runx:")) << testing::PrintToString(Text(IDC_TEXT));
}

// The hotkey field takes every key, F1 too; from there it is opened by the menu.
TEST_F(EditorTest, TheGuideOpensAtTheChapterOfThePlace) {
    Start({{L"Ctrl+Q", L"text", L"label"}});
    wchar_t folder[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH + 1, folder);
    const std::wstring page = std::wstring(folder) + L"Verbatix_guide_open.html";
    const auto opensAt = [&](const char* place, const std::function<void()>& ask) {
        DeleteFileW(page.c_str());
        ask();
        EXPECT_TRUE(WaitFor([&] { return ReadBytes(page).find(place) != std::string::npos; })) << place;
        EXPECT_TRUE(WaitFor([&] { return DeleteFileW(page.c_str()) != FALSE; }));
        EXPECT_TRUE(run_.IsThrough()) << place;
    };
    const auto pressF1 = [] { PlayStroke({}, VK_F1); };
    SetFocusTo(IDC_FILTER);
    opensAt("#your-list\"", pressF1);
    AskForHotkey();
    opensAt("#hotkeys\"", [&] { Menu(CMD_GUIDE); });
    Press(IDC_INSERT);
    ASSERT_TRUE(CodesAreOpen(true));
    opensAt("#placeholders\"", pressF1);
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(CodesAreOpen(false));
    Menu(CMD_ABOUT);
    HWND about = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (about = DialogOf(run_.Program().Id(), dialog_)) != nullptr; }));
    opensAt("#when-something-goes-wrong\"", pressF1);
    Answer(IDOK);
}

TEST_F(EditorTest, FilterAndColumnsChangeWhatTheListShows) {
    Start({{L"Ctrl+Q", L"b alpha", L"2"}, {L"Alt+W", L"c beta", L"Mark"}, {L"Alt+E", L"a gamma", L"1"}});
    PlayStroke({VK_LCONTROL}, 'F');
    Keys({'M'});
    EXPECT_TRUE(WaitFor([&] { return Rows() == 2; }));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Mark")) << "the first hit is selected";
    Keys({VK_F3});
    EXPECT_TRUE(Becomes(IDC_LABEL, L"1"));
    PlayStroke({VK_LSHIFT}, VK_F3);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Mark"));
    Keys({'A', 'R'});
    EXPECT_TRUE(Becomes(IDC_FILTER, L"mar"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 1; }));
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"2")) << "and what was before comes back";
    Keys({'M', 'A', 'R', VK_RETURN});
    EXPECT_TRUE(Becomes(IDC_FILTER, L"mar"));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Mark"));
    // What no longer matches because it was edited stays in sight.
    SendMessageW(Control(IDC_LABEL), EM_SETSEL, 0, -1);
    Type(IDC_LABEL, L"3");
    EXPECT_TRUE(FileGets(L"text_001=3\r"));
    EXPECT_EQ(Rows(), 1);
    PlayStroke({VK_LCONTROL}, 'F');
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3; }));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"3"));
    EXPECT_TRUE(IsWindowVisible(dialog_));

    const HWND header = FindWindowExW(list_, nullptr, WC_HEADERW, nullptr);
    RECT place = {};
    GetWindowRect(header, &place);
    const int text = static_cast<int>(place.right - place.left) * 7 / 10;
    // What has changed is written, and nothing else: a new direction, or a new column.
    for (const auto& [written, firstLabel] :
         {std::pair{L"sort_col=2", L"1"}, {L"SortDescending=1", L"3"}, {L"sort_col=-1", L"2"}}) {
        Click(header, text, 5);
        EXPECT_TRUE(FileGets(written));
        EXPECT_TRUE(Select(0, IDC_LABEL, firstLabel)) << ::testing::PrintToString(Text(IDC_LABEL));
    }
    EXPECT_TRUE(FileHolds(L"SortDescending=0"));
    // The same by the menu, where the direction is a row of its own.
    for (const auto& [command, firstLabel] : {std::pair<WPARAM, const wchar_t*>{CMD_SORT_FIRST + 3, L"1"},
                                              {CMD_SORT_REVERSED, L"3"},
                                              {CMD_SORT_FIRST + 2, L"3"},
                                              {CMD_SORT_REVERSED, L"1"},
                                              {CMD_SORT_FIRST, L"2"}}) {
        Menu(command);
        EXPECT_TRUE(Select(0, IDC_LABEL, firstLabel)) << testing::PrintToString(Text(IDC_LABEL));
    }
    EXPECT_TRUE(FileHolds(L"text_000=Ctrl+Q=b alpha<E<N<D|"));
}

TEST_F(EditorTest, TheKeyboardAloneMakesAnEntryThatPastes) {
    const Target target;
    Start({{L"Ctrl+Q", L"one", L"First"}});
    PlayStroke({VK_LMENU}, 'X');
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_TEXT); }));
    // The caret stays where it is, and nothing is replaced.
    Keys({VK_RIGHT, VK_TAB});
    PlayStroke({VK_LMENU}, 'X');
    ASSERT_TRUE(WaitFor([&] { return HasKeyboard(IDC_TEXT); }));
    Keys({'X'});
    EXPECT_TRUE(Becomes(IDC_TEXT, L"oxne"));
    PlayStroke({VK_LMENU}, 'R');
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_LIST); }));
    PlayStroke({VK_LCONTROL}, 'N');
    ASSERT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    EXPECT_TRUE(HasKeyboard(IDC_LABEL));
    Keys({'L', 'B'});
    EXPECT_TRUE(Becomes(IDC_LABEL, L"lb"));
    PlayStroke({VK_LMENU}, 'X');
    ASSERT_TRUE(WaitFor([&] { return HasKeyboard(IDC_TEXT); }))
        << ::testing::PrintToString(Text(IDC_LABEL));
    Keys({'H', 'E', 'L', 'L', 'O'});
    EXPECT_TRUE(Becomes(IDC_TEXT, L"hello"));
    PlayStroke({VK_LMENU}, 'K');
    ASSERT_TRUE(WaitFor([&] { return HasKeyboard(IDC_KEY); }));
    PlayStroke({}, 'R');
    EXPECT_TRUE(Becomes(IDC_KEY, L"r"));
    PlayStroke({}, VK_TAB);
    EXPECT_TRUE(FileGets(L"Ctrl-Alt+R=hello<E<N<D|"));
    EXPECT_EQ(Text(IDC_KEY), L"R");
    // Tested, it goes into the window that the user came from, as it has just been typed, whatever lies
    // above it and whether it is itself always on top.
    const HWND above = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"Utility", WS_POPUP, 0, 0, 90, 9, nullptr,
                                       nullptr, nullptr, nullptr);
    ShowWindow(above, SW_SHOWNOACTIVATE);
    const auto targetShows = [&](const wchar_t* text) {
        return WaitFor([&] { return target.Text() == text; });
    };
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 5, 5);
    Type(IDC_TEXT, L"\r!");
    SetWindowPos(target.Window(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    PlayStroke({}, VK_F5);
    EXPECT_TRUE(targetShows(L"hello\r\n!")) << ::testing::PrintToString(target.Text());
    DestroyWindow(above);
    EXPECT_EQ(Text(IDC_TEXT), L"hello\r\n!");
    target.SetText(L"");
    ASSERT_TRUE(run_.IsThrough() && target.Activate() && SettlesInFront(target.Window()));
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'R');
    EXPECT_TRUE(targetShows(L"hello\r\n!")) << ::testing::PrintToString(target.Text());
}

// As people press it: held for a while, let go in any order. Ctrl+Q is the entry's own hotkey and Alt+F4 is
// Windows', and neither does what it does elsewhere.
TEST_F(EditorTest, TheHotkeyFieldTakesWhatIsPressedAndNothingElseHappens) {
    const Target target;
    Start({{L"Ctrl+Q", L"one", L"First"}, {L"Alt+W", L"two", L"Second"}});
    ASSERT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Ctrl + Q"));
    AskForHotkey();
    const std::tuple<std::vector<BYTE>, std::vector<BYTE>, const wchar_t*, const wchar_t*> rows[] = {
        {{VK_LMENU, 'W'}, {VK_LMENU, 'W'}, L"Alt + W", L"Alt+W=one"},
        {{VK_LCONTROL, 'Q'}, {'Q', VK_LCONTROL}, L"Ctrl + Q", L"Ctrl+Q=one"},
        {{VK_RCONTROL, VK_F10}, {VK_F10, VK_RCONTROL}, L"Right Ctrl + F10", L"R-Ctrl+F10=one"},
        {{VK_LWIN, 'E'}, {VK_LWIN, 'E'}, L"Left Win + E", L"L-Win+E=one"},
        {{VK_RMENU, 'K'}, {'K', VK_RMENU}, L"Alt Gr + K", L"Alt-Gr+K=one"},
        {{VK_LMENU, VK_LCONTROL, VK_TAB},
         {VK_LMENU, VK_TAB, VK_LCONTROL},
         L"Ctrl + Alt + TAB",
         L"Ctrl-Alt+TAB=one"},
        {{VK_LMENU, VK_F4}, {VK_F4, VK_LMENU}, L"Alt + F4", L"Alt+F4=one"},
    };
    for (const auto& [down, up, shown, stored] : rows) {
        HoldAndLetGo(down, up);
        EXPECT_TRUE(Becomes(IDC_HOTKEY, std::wstring(L"Hotkey: ") + shown))
            << testing::PrintToString(shown);
        EXPECT_TRUE(FileGets(stored)) << testing::PrintToString(stored);
        EXPECT_FALSE(AnyModifierDown());
        EXPECT_EQ(GetForegroundWindow(), dialog_);
    }
    ClickAt(OnScreen(Control(IDC_HOTKEY), 20, 5));
    SetFocusTo(IDC_TEXT);
    mouse_event(MOUSEEVENTF_RIGHTDOWN, 0, 0, 0, 0);
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
    HoldAndLetGo({VK_F4}, {VK_F4});
    mouse_event(MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
    EXPECT_TRUE(FileGets(L"R-Mouse+F4=one"));
    HoldAndLetGo({VK_LMENU, VK_F4}, {VK_F4, VK_LMENU});
    ASSERT_TRUE(FileGets(L"Alt+F4=one"));
    EXPECT_EQ(Text(IDC_CLASH), L"Windows needs Alt + F4: it closes the window.");
    EXPECT_EQ(Text(IDC_KEY), L"F4");
    EXPECT_EQ(Text(IDC_MODIFIER), L"Alt");
    // What cannot be one is said and not taken.
    HoldAndLetGo({'B'}, {'B'});
    EXPECT_TRUE(WaitFor([&] { return Text(IDC_CLASH).starts_with(L"B alone would be swallowed"); }));
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
    HoldAndLetGo({VK_LCONTROL, VK_LSHIFT, 'K'}, {'K', VK_LCONTROL, VK_LSHIFT});
    EXPECT_TRUE(WaitFor([&] { return Text(IDC_CLASH).starts_with(L"Ctrl + Shift + K cannot"); }));
    EXPECT_EQ(Text(IDC_KEY), L"F4");
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Alt + F4"));
    EXPECT_TRUE(FileHolds(L"Alt+F4=one"));
    // Only one modifier shows while it is held, and it ends with the keyboard elsewhere.
    AskForHotkey();
    PressKeyDown(VK_LCONTROL);
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Ctrl + ..."));
    ASSERT_TRUE(target.Activate());
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Alt + F4"));
    LetKeyUp(VK_LCONTROL);
    EXPECT_FALSE(AnyModifierDown());
    EXPECT_EQ(target.Text(), L"");
    // And the hotkeys work at once, what was pressed among them.
    ASSERT_TRUE(SettlesInFront(target.Window()));
    HoldAndLetGo({VK_LMENU, VK_F4}, {VK_F4, VK_LMENU});
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"one"; })) << testing::PrintToString(target.Text());
    Linger(320);
    HoldAndLetGo({VK_LMENU, 'W'}, {VK_LMENU, 'W'});
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"onetwo"; }));
}

TEST_F(EditorTest, TheHotkeyIsClearedLeftAndChosenWithoutMakingItUp) {
    Start({{L"Ctrl+Q", L"one", L"First"}, {L"Ctrl+Q", L"two", L"Second"}}, L"m_disables_keys=Ctrl+I|\r\n");
    ASSERT_TRUE(Becomes(IDC_LABEL, L"First"));
    // The link leads to the other entry and back.
    for (const std::wstring label : {L"Second", L"First"}) {
        ASSERT_TRUE(Becomes(IDC_CLASH, L"Shares a menu with " + label + L"."));
        SetFocusTo(IDC_CLASH);
        PlayStroke({}, VK_RETURN);
        EXPECT_TRUE(Becomes(IDC_LABEL, label));
    }
    // What is typed on the way to a key, or is none, is not saved.
    SetFocusTo(IDC_KEY);
    Keys({'H', 'Y', 'P', 'E', 'R'});
    EXPECT_TRUE(WaitFor([&] { return Text(IDC_CLASH).starts_with(L"\u201chyper\u201d cannot"); }));
    PlayStroke({}, VK_TAB);
    EXPECT_TRUE(Becomes(IDC_KEY, L"Q"));
    EXPECT_TRUE(FileHolds(L"Ctrl+Q=one"));
    // Tab moves on, either way, and Backspace clears.
    AskForHotkey();
    PlayStroke({}, VK_TAB);
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_MODIFIER); }));
    PlayStroke({VK_LSHIFT}, VK_TAB);
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey: Press the keys"));
    HoldAndLetGo({VK_LCONTROL, 'I'}, {'I', VK_LCONTROL});
    EXPECT_TRUE(WaitFor([&] { return Text(IDC_CLASH).starts_with(L"Ctrl + I is switched off"); }));
    PlayStroke({}, VK_BACK);
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+=one"));
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(Becomes(IDC_HOTKEY, L"Hotkey:"));
}

TEST_F(EditorTest, ASecondClickEditsTheCellAndLettersFindARow) {
    Start({{L"Ctrl+Q", L"one", L"First"}, {L"Ctrl+W", L"two", L"Second"}});
    ASSERT_TRUE(Select(1, IDC_LABEL, L"Second"));
    RECT client = {};
    GetClientRect(list_, &client);
    POINT place = ListPlace(1);
    ScreenToClient(list_, &place);
    const auto secondClick = [&](int percent) {
        SendMessageW(dialog_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list_), TRUE);
        Click(list_, static_cast<int>(client.right) * percent / 100, place.y);
    };
    secondClick(10);
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_HOTKEY); }));
    secondClick(80);
    EXPECT_TRUE(WaitFor([&] { return HasKeyboard(IDC_TEXT); }));
    secondClick(40);
    HWND edit = nullptr;
    EXPECT_TRUE(
        WaitFor([&] { return (edit = FindWindowExW(list_, nullptr, WC_EDITW, nullptr)) != nullptr; }));
    EXPECT_EQ(WindowText(edit), L"Second");
    Keys({VK_ESCAPE, 'F'});
    EXPECT_TRUE(Becomes(IDC_LABEL, L"First"));
    Linger(1000);  // the control takes letters that follow each other for one word
    Keys({'X'});
    Linger(1000);
    EXPECT_EQ(Text(IDC_LABEL), L"First") << "there is no such entry";
    Keys({'S'});
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Second"));
}

// Where an entry goes into a dialog of the program's own, its keys are that dialog's.
TEST_F(EditorTest, AnEntryMovesOnInADialogThatAsks) {
    Start({{L"Ctrl-Alt+W", L"a%send_tab%b"}});
    ASSERT_TRUE(Becomes(IDC_TEXT, L"a%send_tab%b"));
    PostMessageW(dialog_, WM_COMMAND, CMD_GROUP_MENU, 0);
    ASSERT_TRUE(MenuIsOpen(true));
    Keys({VK_DOWN, VK_DOWN, VK_RETURN});
    HWND box = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (box = DialogOf(run_.Program().Id(), dialog_)) != nullptr; }));
    ASSERT_TRUE(SettlesInFront(box));
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'W');
    EXPECT_TRUE(WaitFor([&] { return FocusOf(dialog_) == GetDlgItem(box, IDOK); }));
    EXPECT_EQ(WindowText(GetDlgItem(box, IDC_GROUP_NAME)), L"a");
}

TEST_F(EditorTest, NothingOverlapsAtTheSmallestSize) {
    Start({}, L"WinRC=40;50;140;150;1;x,y,w,h,SW\r\n");
    RECT client = {};
    GetClientRect(dialog_, &client);
    EXPECT_FALSE(IsWindowEnabled(Control(IDC_TEXT)));
    std::vector<std::pair<int, RECT>> places;
    for (HWND child = GetWindow(dialog_, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        RECT place = {};
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
        const int id = GetDlgCtrlID(child);
        // One of list and tree, and names for programs that read the screen out.
        if (!(GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) || IsRectEmpty(&place)) continue;
        EXPECT_GT(place.bottom - place.top, 8) << id;
        EXPECT_GE(place.left, 0) << id;
        EXPECT_LE(place.right, client.right) << id;
        EXPECT_LE(place.bottom, client.bottom) << id;
        for (const auto& [other, taken] : places) {
            RECT both = {};
            EXPECT_FALSE(IntersectRect(&both, &place, &taken)) << id << " and " << other;
        }
        places.emplace_back(id, place);
    }
    EXPECT_GE(places.size(), 18U);
}

}  // namespace
}  // namespace verbatix::test
