// The editor of the main window, by mouse and keyboard, down to the settings file.
#include "desktop/program_window.h"
#include "support/keys.h"

namespace verbatix::test {
namespace {

class EditorTest : public ProgramWindow {
  protected:
    void Start(const std::vector<StoredLine>& lines, const wchar_t* programLines = L"") {
        ProgramWindow::Start(lines, programLines);
        ASSERT_TRUE(ComesToFront());
    }
    void ClickRow(int row) const {
        POINT place = ListPlace(row);
        ScreenToClient(list_, &place);
        Click(list_, place.x, place.y);
    }
    LRESULT Rows() const { return SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0); }

    static void Click(HWND window, int x, int y) {
        PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    void Press(int button) const {
        PostMessageW(dialog_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
                     reinterpret_cast<LPARAM>(Control(button)));
    }
    // A choice in a drop-down as its owner is told of it.
    void Choose(int id, WPARAM index) const {
        SendMessageW(Control(id), CB_SETCURSEL, index, 0);
        SendMessageW(dialog_, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(Control(id)));
    }
};

TEST_F(EditorTest, ShowsTheSelectedEntryAndKeepsWhatIsTyped) {
    Start({{L"Ctrl+Q", L"one\\ntwo", L"First"}, {L"R-Mouse+F5", L"second", L"Second"}});
    EXPECT_FALSE(IsWindowEnabled(Control(IDC_TEXT)));
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_LABEL, L"First"));
    EXPECT_EQ(Text(IDC_TEXT), L"one\r\ntwo");
    EXPECT_EQ(Text(IDC_KEY), L"Q");
    EXPECT_EQ(Text(IDC_MODIFIER), L"Ctrl");
    EXPECT_EQ(Text(IDC_COUNTER), L"Text (8/4000)");
    Type(IDC_TEXT, L"ab\r");
    EXPECT_TRUE(FileGets(L"Ctrl+Q=ab\\none\\ntwo<E<N<D|"));
    EXPECT_EQ(Text(IDC_COUNTER), L"Text (12/4000)");
    Type(IDC_LABEL, L"my ");
    EXPECT_TRUE(FileGets(L"text_000=my First"));
    ClickRow(1);
    ASSERT_TRUE(Becomes(IDC_LABEL, L"Second"));
    EXPECT_FALSE(FileHolds(L"text_001=my"));
}

// Each way follows the typing at once; the timer that would keep it comes only when the queue is empty.
TEST_F(EditorTest, NothingTypedIsLost) {
    for (const UINT message : {WM_CLOSE, WM_QUERYENDSESSION, WM_COMMAND}) {
        Start({{L"Ctrl+Q", L"old"}, {L"Ctrl+W", L"other"}});
        ClickRow(0);
        ASSERT_TRUE(Becomes(IDC_TEXT, L"old"));
        Type(IDC_TEXT, L"new ");
        if (message == WM_COMMAND) {
            PostMessageW(dialog_, message, CMD_EXIT, 0);
            EXPECT_EQ(run_.Program().WaitForExit(), 1U);
        } else {
            ASSERT_TRUE(Becomes(IDC_TEXT, L"new old"));
            SendMessageW(dialog_, message, 0, 0);
        }
        EXPECT_TRUE(FileHolds(L"Ctrl+Q=new old<E")) << message;
        if (message != WM_COMMAND) run_.Exit();
    }
}

TEST_F(EditorTest, ChangingTheSelectionKeepsTheEdit) {
    Start({{L"Ctrl+Q", L"old"}, {L"Ctrl+W", L"other"}});
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"old"));
    Type(IDC_TEXT, L"new ");
    ClickRow(1);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"other"));
    EXPECT_TRUE(FileHolds(L"Ctrl+Q=new old<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"Ctrl+W=other<E<N<D|"));
}

TEST_F(EditorTest, ATextBeyondTheLimitIsToldOfAndNotTaken) {
    const std::wstring text(3999, L'x');
    Start({{L"Ctrl+Q", text}, {L"Ctrl+W", L"other"}});
    ClickRow(0);
    ASSERT_TRUE(WaitFor([&] { return Text(IDC_TEXT).size() == 3999; }));
    Type(IDC_TEXT, L"ab");
    HWND box = run_.Program().WaitForVisibleWindow(L"#32770", L"Verbatix");
    ASSERT_TRUE(WaitFor(
        [&] { return (box = FindWindowExW(nullptr, nullptr, L"#32770", L"Verbatix")) && box != dialog_; }));
    EXPECT_EQ(WindowText(GetDlgItem(box, 0xffff)), L"The text is too long. Characters at most: 4000");
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_FALSE(FileHolds(L"Ctrl+Q=ab"));
    EXPECT_EQ(Text(IDC_COUNTER), L"Text (4001/4000)");
    // Another row: one box, however many notifications the click has, and the selection comes back.
    ClickRow(1);
    ASSERT_TRUE(WaitFor([&] { return !IsWindowEnabled(dialog_); }));
    Linger(200);
    int boxes = -1;  // the window itself has their class and title
    for (HWND next = nullptr; (next = FindWindowExW(nullptr, next, L"#32770", L"Verbatix"));) {
        box = next == dialog_ ? box : next;
        ++boxes;
    }
    EXPECT_EQ(boxes, 1);
    SendMessageW(box, WM_COMMAND, IDOK, 0);
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(dialog_) != FALSE; }));
    EXPECT_EQ(Text(IDC_COUNTER), L"Text (4001/4000)");
    Type(IDC_TEXT, L"\b");
    EXPECT_TRUE(FileGets(L"Ctrl+Q=a" + text + L"<E<N<D|"));
}

TEST_F(EditorTest, NewTakesTheBlankPlaceFirst) {
    Start({{L"Ctrl+Q", L"one"}, {L"Ctrl+X", L""}, {L"Ctrl+W", L"three"}});
    EXPECT_EQ(Rows(), 2);
    Press(CMD_NEW_ENTRY);
    EXPECT_TRUE(FileGets(L"text_001=Ctrl-Alt+=???Text<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"listcmd_count=3"));
    EXPECT_EQ(Rows(), 3);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    Press(CMD_NEW_ENTRY);
    EXPECT_TRUE(FileGets(L"listcmd_count=4"));
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"one"));
    Press(CMD_COPY_ENTRY);
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+=one<E<N<D|"));
}

TEST_F(EditorTest, DeleteAsksAndKeepsThePlace) {
    Start({{L"Ctrl+Q", L"one", L"First"}, {L"Ctrl+W", L"two", L"Second"}});
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_LABEL, L"First"));
    for (const int answer : {IDNO, IDYES}) {
        Press(CMD_DELETE_ENTRY);
        EXPECT_EQ(Answer(answer), L"Delete the selected entry?");
        EXPECT_TRUE(WaitFor([&] { return Rows() == (answer == IDNO ? 2 : 1); }));
    }
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Second"));
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+Q=<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"listcmd_count=2"));
    EXPECT_FALSE(FileHolds(L"First"));
}

TEST_F(EditorTest, NamesTheEntryWithTheSameHotkey) {
    Start({{L"Ctrl+Q", L"one", L"First & best"}, {L"Alt+Q", L"two", L"Second"}});
    ClickRow(1);
    ASSERT_TRUE(Becomes(IDC_LABEL, L"Second"));
    EXPECT_EQ(Text(IDC_CLASH), L"");
    Choose(IDC_MODIFIER, 4);
    EXPECT_EQ(Text(IDC_CLASH), L"Also used by: First & best. Pressing it will show a menu.");
    EXPECT_TRUE(FileGets(L"text_001=Ctrl+Q=two<E<N<D|"));
}

TEST_F(EditorTest, OffersToKeepAPathThatALineBreakTakesApart) {
    Start({{L"Ctrl+Q", L"runx:notepad\\ncalc"}});
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"runx:notepad\r\ncalc"));
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
}

TEST_F(EditorTest, FilterNarrowsTheListAndEscapeWidensIt) {
    Start({{L"Ctrl+Q", L"alpha"}, {L"Alt+W", L"beta", L"Mark"}, {L"Alt+E", L"gamma"}});
    PlayStroke({VK_LCONTROL}, 'F');
    for (const BYTE key : {'M', 'A', 'R'}) PlayStroke({}, key);
    EXPECT_TRUE(Becomes(IDC_FILTER, L"mar"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 1; }));
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Mark"));
    // What no longer matches because it was edited stays in sight.
    SendMessageW(Control(IDC_LABEL), EM_SETSEL, 0, -1);
    Type(IDC_LABEL, L"K");
    EXPECT_TRUE(FileGets(L"text_001=K\r"));
    EXPECT_EQ(Rows(), 1);
    PlayStroke({VK_LCONTROL}, 'F');
    PlayStroke({}, VK_ESCAPE);
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3; }));
    EXPECT_EQ(Text(IDC_LABEL), L"K");
    EXPECT_TRUE(IsWindowVisible(dialog_));
}

TEST_F(EditorTest, AColumnClickSortsAndIsRemembered) {
    Start({{L"Ctrl+Q", L"b", L"2"}, {L"Alt+W", L"c", L"3"}, {L"Alt+E", L"a", L"1"}});
    const HWND header = FindWindowExW(list_, nullptr, WC_HEADERW, nullptr);
    RECT place = {};
    GetWindowRect(header, &place);
    const int text = static_cast<int>(place.right - place.left) * 7 / 10;
    // What has changed is written, and nothing else: a new direction, or a new column.
    const struct {
        const wchar_t* written;
        const wchar_t* firstLabel;
    } steps[] = {{L"sort_col=2", L"1"}, {L"SortDescending=1", L"3"}, {L"sort_col=-1", L"2"}};
    for (const auto& step : steps) {
        Click(header, text, 5);
        EXPECT_TRUE(WaitFor([&] { return FileHolds(step.written); }));
        ClickRow(0);
        EXPECT_TRUE(Becomes(IDC_LABEL, step.firstLabel)) << ::testing::PrintToString(Text(IDC_LABEL));
    }
    EXPECT_TRUE(FileHolds(L"SortDescending=0"));
    EXPECT_TRUE(FileHolds(L"text_000=Ctrl+Q=b<E<N<D|"));
}

TEST_F(EditorTest, TheKeyboardAloneMakesAnEntryThatPastes) {
    Start({{L"Ctrl+Q", L"one", L"First"}});
    const auto hasKeyboard = [this](int id) {
        GUITHREADINFO info = {sizeof info, 0, {}, {}, {}, {}, {}, {}, {}};
        return GetGUIThreadInfo(GetWindowThreadProcessId(dialog_, nullptr), &info) &&
               info.hwndFocus == Control(id);
    };
    PlayStroke({VK_LMENU}, 'X');
    EXPECT_TRUE(WaitFor([&] { return hasKeyboard(IDC_TEXT); }));
    PlayStroke({VK_LMENU}, 'E');
    EXPECT_TRUE(WaitFor([&] { return hasKeyboard(IDC_LIST); }));
    PlayStroke({VK_LMENU}, 'N');
    ASSERT_TRUE(Becomes(IDC_TEXT, L"???Text"));
    EXPECT_TRUE(hasKeyboard(IDC_TEXT));
    for (const BYTE key : {'H', 'E', 'L', 'L', 'O'}) PlayStroke({}, key);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"hello"));
    PlayStroke({VK_LMENU}, 'L');
    for (const BYTE key : {'L', 'B'}) PlayStroke({}, key);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"lb"));
    PlayStroke({VK_LMENU}, 'K');
    PlayStroke({}, 'R');
    EXPECT_TRUE(Becomes(IDC_KEY, L"r"));
    PlayStroke({}, VK_TAB);
    EXPECT_TRUE(FileGets(L"Ctrl-Alt+R=hello<E<N<D|"));
    EXPECT_EQ(Text(IDC_KEY), L"R");
    const Target target;
    ASSERT_TRUE(target.Activate());
    PlayStroke({VK_LCONTROL, VK_LMENU}, 'R');
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"hello"; }))
        << ::testing::PrintToString(target.Text());
}

TEST_F(EditorTest, TestPastesIntoTheWindowBehind) {
    const Target target;
    Start({{L"Ctrl+Q", L"old\\nend"}});
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"old\r\nend"));
    Type(IDC_TEXT, L"very ");
    Press(CMD_TEST_ENTRY);
    EXPECT_TRUE(WaitFor([&] { return target.Text() == L"very old\r\nend"; }))
        << ::testing::PrintToString(target.Text());
    EXPECT_EQ(Text(IDC_TEXT), L"very old\r\nend");
}

TEST_F(EditorTest, TheInsertMenuInsertsAtTheCaret) {
    Start({{L"Ctrl+Q", L"ab"}});
    ClickRow(0);
    ASSERT_TRUE(Becomes(IDC_TEXT, L"ab"));
    SendMessageW(Control(IDC_TEXT), EM_SETSEL, 1, 1);
    Press(IDC_INSERT);
    HWND menu = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (menu = FindWindowW(L"#32768", nullptr)) && IsWindowVisible(menu); }));
    PlayStroke({}, VK_DOWN);
    PlayStroke({}, VK_RIGHT);
    PlayStroke({}, VK_RETURN);
    EXPECT_TRUE(Becomes(IDC_TEXT, L"a%MMMM%b"));
    EXPECT_TRUE(FileGets(L"Ctrl+Q=a%MMMM%b<E<N<D|"));
}

TEST_F(EditorTest, NothingOverlapsAtTheSmallestSize) {
    Start({}, L"WinRC=40;50;140;150;1;x,y,w,h,SW\r\n");
    RECT client = {};
    GetClientRect(dialog_, &client);
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
