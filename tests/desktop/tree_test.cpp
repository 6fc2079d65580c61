// The tree in the place of the list, and moving and renaming in both, by mouse and keyboard down to the
// settings file.
#include "desktop/program_window.h"

namespace verbatix::test {
namespace {

class TreeWindow : public ProgramWindow {
  protected:
    // Rows of the tree:
    //   0 Ctrl + Q, 1 one, 2 Group, 3 two, 4 three, 5 four, 6 Ctrl + W, 7 five
    void Start(const wchar_t* programLines) {
        ProgramWindow::Start({{L"Ctrl+Q", L"text one", L"one"},
                              {L"Ctrl+Q", L"text two", L"Group/two"},
                              {L"Ctrl+W", L"text five", L"five"},
                              {L"Ctrl+Q", L"text three", L"Group/three"},
                              {L"Ctrl+Q", L"text four", L"four"}},
                             programLines);
        ASSERT_TRUE(ComesToFront());
    }
    // Items in sight or scrolled out of it, in no closed group.
    int TreeRows() const {
        int rows = 0;
        LRESULT item = SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_ROOT, 0);
        for (; item; item = SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) ++rows;
        return rows;
    }
    bool TreeGets(int rows) const {
        return WaitFor([&] { return TreeRows() == rows; });
    }
    POINT TreePlace(int row, int level, int percent = 50) const {
        const int height = static_cast<int>(SendMessageW(tree_, TVM_GETITEMHEIGHT, 0, 0));
        const int indent = static_cast<int>(SendMessageW(tree_, TVM_GETINDENT, 0, 0));
        return OnScreen(tree_, indent * (level + 1) + 8, height * row + height * percent / 100);
    }
    // Until what the stroke does has been done: who asks whether a key is down may be told how it is now.
    template <typename Fact>
    static bool HoldUntil(BYTE held, BYTE key, Fact fact) {
        EXPECT_TRUE(test::Hold({held}));
        PlayStroke({}, key);
        const bool holds = fact();
        LetKeyUp(held);
        return holds;
    }
    HWND RenameField(HWND view) const {
        const UINT message = view == tree_ ? TVM_GETEDITCONTROL : LVM_GETEDITCONTROL;
        return reinterpret_cast<HWND>(SendMessageW(view, message, 0, 0));
    }
    // F2 reaches the program by the hook alone: it is played outside.
    void RenameWithF2(HWND view, std::wstring_view shown, std::initializer_list<BYTE> keys) const {
        HWND field = nullptr;
        PlayStroke({}, VK_F2);
        ASSERT_TRUE(WaitFor([&] { return (field = RenameField(view)) != nullptr; }));
        EXPECT_EQ(WindowText(field), shown);
        Keys(keys);
        EXPECT_TRUE(WaitFor([&] { return RenameField(view) == nullptr; }));
    }
};

TEST_F(TreeWindow, TakesTheListsPlaceWithSelectionFilterAndMenu) {
    Start(L"");
    ASSERT_TRUE(Select(3, IDC_LABEL, L"Group/three"));
    SendMessageW(dialog_, WM_COMMAND, CMD_SHOW_TREE, kMarker);
    EXPECT_TRUE(IsWindowVisible(tree_));
    EXPECT_FALSE(IsWindowVisible(list_));
    EXPECT_TRUE(FileGets(L"m_show_tree=1"));
    EXPECT_TRUE(TreeGets(8));
    EXPECT_EQ(Text(IDC_LABEL), L"Group/three");
    PlayStroke({}, VK_UP);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Group/two"));
    // Letters find the next name; those that follow each other at once are one word.
    for (const auto& [key, label] :
         {std::pair(BYTE{'F'}, L"four"), {BYTE{'X'}, L"four"}, {BYTE{'T'}, L"Group/two"}}) {
        Keys({key});
        EXPECT_TRUE(Becomes(IDC_LABEL, label));
        Linger(1000);
        EXPECT_EQ(Text(IDC_LABEL), label);
    }
    // What the editor changes shows here: out of the group, which stays with one entry.
    SendMessageW(Control(IDC_LABEL), EM_SETSEL, 0, -1);
    PostMessageW(Control(IDC_LABEL), WM_CHAR, L'x', 0);
    EXPECT_TRUE(FileGets(L"text_001=x\r"));
    EXPECT_TRUE(TreeGets(8));
    // The menu acts at an item that is not the selected one: into the first group of its hotkey.
    ClickAt(TreePlace(1, 1), MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP);
    ASSERT_TRUE(MenuIsOpen(true));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"one"));
    for (int row = 0; row < 9; ++row) PlayStroke({}, VK_DOWN);
    Keys({VK_RIGHT, VK_DOWN, VK_RETURN});
    EXPECT_TRUE(FileGets(L"text_000=Group/one"));
    ASSERT_TRUE(MenuIsOpen(false));
    // The filter narrows it, and the deleted leave no trace.
    SetWindowTextW(Control(IDC_FILTER), L"two");
    EXPECT_TRUE(TreeGets(2));
    PlayStroke({VK_LCONTROL}, 'F');
    Keys({VK_DOWN, VK_DOWN});
    ASSERT_TRUE(Becomes(IDC_LABEL, L"x"));
    PlayStroke({}, VK_DELETE);
    EXPECT_TRUE(TreeGets(0));
    SetWindowTextW(Control(IDC_FILTER), L"");
    EXPECT_TRUE(TreeGets(7));
    SendMessageW(dialog_, WM_COMMAND, CMD_SHOW_TREE, kMarker);
    EXPECT_TRUE(IsWindowVisible(list_) && !IsWindowVisible(tree_));
}

TEST_F(TreeWindow, DraggingMovesToGroupsHotkeysAndPlacesForGood) {
    Start(L"m_show_tree=1\r\n");
    ASSERT_TRUE(TreeGets(8));
    const HWND bar = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    DragMouse(TreePlace(1, 1), TreePlace(6, 0), [&] {
        constexpr std::wstring_view kSaid = L"Ctrl + Q: will become Ctrl + W";
        EXPECT_TRUE(
            WaitFor([&] { return LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, 0, 0)) == kSaid.size(); }));
        PlayStroke({}, VK_ESCAPE);
    });
    EXPECT_TRUE(Becomes(IDC_LABEL, L"one"));
    Linger(GetDoubleClickTime() + 100);
    EXPECT_EQ(Text(IDC_KEY), L"Q");
    DragMouse(TreePlace(1, 1), TreePlace(2, 1));
    EXPECT_TRUE(FileGets(L"text_000=Group/one"));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Group/one"));
    // 0 Ctrl + Q, 1 Group, 2 one, 3 two, 4 three, 5 four
    DragMouse(TreePlace(5, 1), TreePlace(3, 2, 20));
    EXPECT_TRUE(FileGets(L"text_001=Group/four"));
    EXPECT_TRUE(FileGets(L"text_001=Ctrl+Q=text four<E<N<D|"));
    EXPECT_TRUE(Becomes(IDC_TEXT, L"text four"));
    DragMouse(TreePlace(2, 2), TreePlace(6, 0));
    EXPECT_TRUE(FileGets(L"text_000=Ctrl+W=text one<E<N<D|"));
    EXPECT_TRUE(Becomes(IDC_KEY, L"W"));
    EXPECT_TRUE(TreeGets(9));
    // In the list, where they stand as one, four, two, five, three: its order.
    SendMessageW(dialog_, WM_COMMAND, CMD_SHOW_TREE, kMarker);
    DragMouse(ListPlace(4), ListPlace(1, 10));
    EXPECT_TRUE(FileGets(L"text_001=Ctrl+Q=text three<E<N<D|"));
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+W=text five<E<N<D|"));
    EXPECT_TRUE(FileGets(L"text_004=five"));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Group/three"));
    EXPECT_TRUE(HoldUntil(VK_LMENU, VK_UP, [&] { return FileGets(L"text_000=Ctrl+Q=text three<E<N<D|"); }));
    EXPECT_TRUE(FileGets(L"text_000=Group/three\r\ntext_001=Group/one"));
    EXPECT_EQ(run_.Exit(), 1);
    ASSERT_TRUE(run_.Start());
    FindControls();
    ASSERT_TRUE(ComesToFront());
    EXPECT_TRUE(Select(1, IDC_LABEL, L"Group/one"));
    // In another order there is no place between two rows.
    SetWindowTextW(Control(IDC_FILTER), L"text");
    const std::string before = ReadBytes(run_.SettingsFile());
    const HWND status = FindWindowExW(dialog_, nullptr, STATUSCLASSNAMEW, nullptr);
    DragMouse(ListPlace(3), ListPlace(0, 10),
              [&] { EXPECT_TRUE(WaitFor([&] { return SendMessageW(status, SB_ISSIMPLE, 0, 0) != 0; })); });
    PlayStroke({VK_LMENU}, VK_UP);
    Linger(300);
    EXPECT_TRUE(run_.IsThrough());
    EXPECT_EQ(ReadBytes(run_.SettingsFile()), before);
}

TEST_F(TreeWindow, SeveralAreMovedGroupedAndDeletedAtOnceAndComeBackAtOnce) {
    Start(L"");
    const auto selected = [&](LRESULT count) {
        return WaitFor([&] { return SendMessageW(list_, LVM_GETSELECTEDCOUNT, 0, 0) == count; });
    };
    // With Ctrl or Shift, by message: the bench lets modifiers go when the pointer moves.
    const auto click = [&](HWND view, POINT place, WPARAM held, LRESULT count) {
        ScreenToClient(view, &place);
        PostMessageW(view, WM_LBUTTONDOWN, MK_LBUTTON | held, MAKELPARAM(place.x, place.y));
        PostMessageW(view, WM_LBUTTONUP, held, MAKELPARAM(place.x, place.y));
        EXPECT_TRUE(selected(count));
    };
    ASSERT_TRUE(Select(1, IDC_LABEL, L"Group/two"));
    click(list_, ListPlace(3), MK_CONTROL, 2);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Group/three"));
    PlayStroke({}, VK_DELETE);
    EXPECT_TRUE(FileGets(L"text_003=Ctrl+Q=<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"text_001=Ctrl+Q=<E<N<D|"));
    EXPECT_TRUE(WaitFor([&] { return Rows() == 3; }));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_001=Ctrl+Q=text two<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"text_003=Group/three"));
    EXPECT_TRUE(selected(2)) << "what came back";
    EXPECT_TRUE(
        HoldUntil(VK_LMENU, VK_DOWN, [&] { return FileGets(L"text_004=Ctrl+Q=text three<E<N<D|"); }));
    EXPECT_TRUE(FileHolds(L"text_002=Ctrl+Q=text two<E<N<D|"));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_003=Ctrl+Q=text three<E<N<D|"));
    ASSERT_TRUE(Select(0, IDC_LABEL, L"one"));
    click(list_, ListPlace(1), MK_SHIFT, 2);
    DragMouse(ListPlace(1), ListPlace(4, 90));
    EXPECT_TRUE(FileGets(L"text_003=Ctrl+Q=text one<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"text_004=Group/two"));
    PlayStroke({VK_LCONTROL}, 'A');
    EXPECT_TRUE(selected(5));

    // Rows: 0 Ctrl + Q, 1 Group, 2 three, 3 two, 4 four, 5 one, 6 Ctrl + W, 7 five
    SendMessageW(dialog_, WM_COMMAND, CMD_SHOW_TREE, kMarker);
    ASSERT_TRUE(TreeGets(8));
    ClickAt(TreePlace(4, 1));
    ASSERT_TRUE(Becomes(IDC_LABEL, L"four"));
    click(tree_, TreePlace(5, 1), MK_CONTROL, 2);
    EXPECT_TRUE(Becomes(IDC_LABEL, L"one"));
    DragMouse(TreePlace(5, 1), TreePlace(1, 1));
    EXPECT_TRUE(FileGets(L"text_003=Group/one"));
    EXPECT_TRUE(FileHolds(L"text_002=Group/four"));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_003=one"));
    EXPECT_TRUE(FileHolds(L"text_002=four"));
    // Of three rows the space bar takes one out again, and a group stands for what is in it.
    ClickAt(TreePlace(3, 2));
    ASSERT_TRUE(Becomes(IDC_LABEL, L"Group/two"));
    EXPECT_TRUE(HoldUntil(VK_LSHIFT, VK_UP, [&] { return selected(2); }));
    EXPECT_TRUE(HoldUntil(VK_LSHIFT, VK_DOWN, [&] { return selected(1); }));
    DragMouse(TreePlace(1, 1), TreePlace(6, 0));
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+W=text two<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"text_001=Ctrl+W=text three<E<N<D|"));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+Q=text two<E<N<D|"));
    Linger(GetDoubleClickTime() + 100);
    ClickAt(TreePlace(1, 1));
    ASSERT_TRUE(Becomes(IDC_LABEL, L""));
    EXPECT_FALSE(IsWindowEnabled(Control(CMD_TEST_ENTRY)));
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(Control(CMD_DELETE_ENTRY)); }));
    Click(Control(CMD_DELETE_ENTRY), 3, 3);
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+Q=<E<N<D|"));
    EXPECT_TRUE(TreeGets(5));
}

TEST_F(TreeWindow, F2RenamesInPlace) {
    Start(L"");
    ASSERT_TRUE(Select(1, IDC_LABEL, L"Group/two"));
    RenameWithF2(list_, L"Group/two", {'X', VK_ESCAPE});
    RenameWithF2(list_, L"Group/two", {VK_END, 'X', VK_RETURN});
    EXPECT_TRUE(FileGets(L"text_001=Group/twox"));
    EXPECT_TRUE(Becomes(IDC_LABEL, L"Group/twox"));
    SendMessageW(dialog_, WM_COMMAND, CMD_SHOW_TREE, 0);
    RenameWithF2(tree_, L"twox", {'Y', VK_RETURN});
    EXPECT_TRUE(FileGets(L"text_001=Group/y"));
    PlayStroke({}, VK_LEFT);
    EXPECT_TRUE(Becomes(IDC_LABEL, L""));
    RenameWithF2(tree_, L"Group", {'G', VK_RETURN});
    EXPECT_TRUE(FileGets(L"text_001=g/y"));
    EXPECT_TRUE(FileGets(L"text_003=g/three"));
    EXPECT_TRUE(TreeGets(8));
    // A hotkey's name is asked for by its keys, for all that it has, and comes back in one step.
    // Also for what the filter hides, which shows all then.
    SetWindowTextW(Control(IDC_FILTER), L"four");
    ASSERT_TRUE(TreeGets(2));
    ASSERT_TRUE(Becomes(IDC_LABEL, L"four"));
    HWND box = nullptr;
    Keys({VK_HOME});
    ASSERT_TRUE(Becomes(IDC_LABEL, L""));
    Keys({VK_F2});
    ASSERT_TRUE(WaitFor([&] { return (box = DialogOf(run_.Program().Id(), dialog_)) != nullptr; }));
    const HWND field = GetDlgItem(box, IDC_ASKED_HOTKEY);
    EXPECT_TRUE(WaitFor([&] { return WindowText(field) == L"Hotkey: Press the keys"; }));
    ASSERT_TRUE(WaitFor([&] { return GetForegroundWindow() == box; }));
    HoldAndLetGo({VK_LMENU, 'T'}, {VK_LMENU, 'T'});
    EXPECT_TRUE(WaitFor([&] { return WindowText(GetDlgItem(box, IDC_ASKED_KEY)) == L"T"; }));
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(FileGets(L"text_004=Alt+T=text four<E<N<D|"));
    for (const wchar_t* line : {L"text_000=Alt+T=text one", L"text_001=Alt+T=", L"text_003=Alt+T="})
        EXPECT_TRUE(FileHolds(line)) << testing::PrintToString(line);
    EXPECT_TRUE(FileHolds(L"text_002=Ctrl+W=")) << "of another hotkey";
    EXPECT_TRUE(TreeGets(8));
    PlayStroke({VK_LCONTROL}, 'Z');
    EXPECT_TRUE(FileGets(L"text_004=Ctrl+Q=text four<E<N<D|"));
    EXPECT_TRUE(FileHolds(L"text_000=Ctrl+Q=text one"));
}

}  // namespace
}  // namespace verbatix::test
