// The menu on its own thread with the hook, a user's keys from this one, another program in front.
#include "menu/menu_popup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "base/text.h"
#include "hotkeys/caret_place.h"
#include "ids.h"
#include "support/import_patch.h"
#include "support/keys.h"
#include "support/message_thread.h"
#include "support/mouse.h"
#include "support/program_run.h"
#include "support/shared_list.h"
#include "support/wait.h"

extern "C" {
extern decltype(&GetAsyncKeyState) __imp_GetAsyncKeyState;
}

namespace verbatix::test {
namespace {

using Texts = std::vector<std::wstring>;

SharedList<std::wstring> called;

HWND foregroundWhenCalled;
HotkeyPress pressWhenCalled;

// Executing types a letter: it lands where the keyboard is.
void Execute(const std::wstring& text, const HotkeyPress& press) {
    foregroundWhenCalled = GetForegroundWindow();
    pressWhenCalled = press;
    called.Add(L"execute " + text);
    PressKey('Z');
}

const MenuClient kClient = {
    Execute, [](const std::wstring& text, const HotkeyPress&) { called.Add(L"deliver " + text); },
    [](int position) { called.Add(Format(L"edit %d", position)); }, [] { called.Add(L"show main window"); },
    [] {
        foregroundWhenCalled = GetForegroundWindow();
        called.Add(L"explain");
    }};

EntryList list;  // used on the menu's thread while a menu is open
MenuOptions options;
bool showTooltips;
std::atomic<int> callsRunning;  // of ShowHotkeyMenu
std::atomic<int> callsDone;

void OnCommand(int command) {
    if (command != CMD_SHOW_PASTE_MENU) return;
    ++callsRunning;
    const HotkeyPress request = std::exchange(keyboardHook.menuRequest, std::nullopt).value();
    ShowHotkeyMenu(request, list, options, showTooltips, kClient);
    --callsRunning;
    ++callsDone;
}

std::vector<HWND> MenuWindows() {
    std::vector<HWND> windows;
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, L"#32768", nullptr));) {
        if (IsWindowVisible(window)) windows.push_back(window);
    }
    return windows;
}

class MenuPopupTest : public testing::Test {
  protected:
    MenuPopupTest() {
        called.Take();
        list.clear();
        options = {0, true, false};
        showTooltips = false;
        thread.Run([this] {
            thread.onCommand = OnCommand;
            keyboardHook.client = {mainWindow,
                                   [](const std::wstring& text) { called.Add(L"hook " + text); }, nullptr};
            InstallKeyboardHook();
        });
        MoveMouse({200, 700});
        EXPECT_TRUE(SettlesInFront(window));
        Fill();
    }

    ~MenuPopupTest() override {
        thread.Run([] {
            CloseHotkeyMenu();
            RemoveKeyboardHook();
        });
        EXPECT_FALSE(AnyModifierDown());
    }

    // One of three words is selected, so that what is typed replaces it.
    void Fill() const {
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"one two three"));
        SendMessageW(edit, EM_SETSEL, 4, 7);
    }

    bool IsInFront() const {
        return WaitFor([this] { return GetForegroundWindow() == window; });
    }

    static void Add(std::wstring_view text, std::wstring_view label = {}, unsigned modifier = 2,
                    unsigned key = 'Q') {
        AddEntry(list, text, label, key, modifier, -1, 0);
    }

    // Tells the hook about the list.
    void Listen() {
        thread.Run([] {
            ClearHotkeys(keyboardHook.tables);
            for (const auto& [position, slot] : list) {
                AddHotkey(keyboardHook.tables, slot.current.keyCode, slot.current.modifier,
                          slot.current.text);
            }
        });
    }

    // Presses a hotkey on the keyboard; whether the hook took it for one. A focus that has just moved makes
    // Wine read the keyboard anew and let go keys that nobody holds, so that a stroke may come to nothing.
    bool Press(std::initializer_list<BYTE> held = {VK_LCONTROL, VK_LMENU}, BYTE key = 'Q') {
        bool triggered = false;
        thread.Run([] { keyboardHook.trigger.lastTrigger.reset(); });
        PlayStroke(held, key);
        thread.Run([&] { triggered = keyboardHook.trigger.lastTrigger.has_value(); });
        return triggered;
    }

    // How the last presses ended, the latest last.
    std::vector<PressEnd> Ends(std::size_t count) {
        std::vector<PressEnd> ends;
        thread.Run([&] {
            const std::vector<LoggedPress> presses = LoggedPresses();
            for (std::size_t i = presses.size() - std::min(count, presses.size()); i < presses.size(); ++i)
                ends.push_back(presses[i].end);
        });
        return ends;
    }

    // What the hook does for a hotkey with several entries.
    void Ask(HWND foreground, unsigned key = 'Q', unsigned modifier = 2) {
        thread.Run([=, this] { keyboardHook.menuRequest = {key, modifier, GetFocus(), foreground, edit}; });
        PostMessageW(mainWindow, WM_COMMAND, CMD_SHOW_PASTE_MENU, 0);
    }

    void Open(unsigned key = 'Q', unsigned modifier = 2) {
        Ask(GetForegroundWindow(), key, modifier);
        ASSERT_TRUE(WaitFor([] { return !MenuWindows().empty(); }));
    }

    // The menu is gone and what was chosen has been carried out.
    void ExpectClosed() {
        EXPECT_TRUE(WaitFor([] { return MenuWindows().empty() && callsRunning == 0; }));
    }

    static RECT ScreenPlace(HWND shown) {
        RECT place = {};
        GetWindowRect(shown, &place);
        return place;
    }

    void ExpectTargetUntouched() const {
        EXPECT_TRUE(IsInFront());
        EXPECT_EQ(target.Text(), L"one two three");
        EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), MAKELONG(4, 7));
    }

    static void ChooseFirst() {
        PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RETURN);
    }

    static HMENU RootMenu() {
        const std::vector<HWND> windows = MenuWindows();
        constexpr UINT kGetMenuHandle = 0x01e1;  // MN_GETHMENU
        return windows.empty() ? nullptr
                               : reinterpret_cast<HMENU>(SendMessageW(windows[0], kGetMenuHandle, 0, 0));
    }

    // Middle of the root menu's item, on the screen.
    static POINT ItemPoint(int position) {
        RECT item = {};
        GetMenuItemRect(nullptr, RootMenu(), static_cast<UINT>(position), &item);
        return {(item.left + item.right) / 2, (item.top + item.bottom) / 2};
    }

    MessageThread thread;
    const HWND mainWindow = thread.Window();
    const Target target;
    const HWND window = target.Window();
    const HWND edit = target.Edit();
};

TEST_F(MenuPopupTest, WhatIsChosenGoesToTheProgramInFront) {
    const std::pair<const wchar_t*, std::function<void()>> rows[] = {
        {L"execute text one", ChooseFirst},
        {L"execute text two", [] { PlayStroke({}, 'B'); }},
        {L"execute text three", [] { PlayStroke({}, 'Q'); }},  // the hotkey's own letter
        {L"execute text two", [] { ClickAt(ItemPoint(1)); }},
        {L"execute in a group",
         [] {
             PlayStroke({}, 'G');
             WaitFor([] { return MenuWindows().size() == 2; });
             PlayStroke({}, VK_RETURN);
         }},
    };
    Add(L"text one", L"&First");
    Add(L"text two", L"&Bold & strong");
    Add(L"text three", L"&Quick");
    Add(L"in a group", L"&Group/item");
    for (const auto& [call, choose] : rows) {
        called.Take();
        Fill();
        // As the thread knows the keyboard when Ctrl goes up just before it gets it.
        thread.Run([] {
            BYTE state[256] = {};
            state[VK_CONTROL] = state[VK_LCONTROL] = 0x80;
            SetKeyboardState(state);
        });
        Open();
        EXPECT_NE(GetForegroundWindow(), window);
        keyboardHook.press.target = mainWindow;  // of a hotkey that was pressed since
        choose();
        ExpectClosed();
        EXPECT_EQ(called.All(), Texts{call});
        EXPECT_EQ(foregroundWhenCalled, window);
        EXPECT_EQ(pressWhenCalled.target, edit);
        // The letter replaces the selection, which therefore has outlived the menu.
        EXPECT_TRUE(WaitFor([this] { return target.Text() == L"one z three"; }))
            << testing::PrintToString(target.Text());
    }
}

TEST_F(MenuPopupTest, DoesNotStayOpenWithoutTheKeyboardNorOpenWhileAnEntryIsExecuted) {
    Add(L"text one");
    std::atomic<bool> stop = false;
    std::thread refuser([&] {
        while (!stop) SetForegroundWindow(window);
    });
    for (int times = 0; times < 3; ++times) {
        const int before = callsDone;
        Ask(window);
        EXPECT_TRUE(WaitFor([=] { return callsDone > before; }));
        ExpectClosed();
    }
    stop = true;
    refuser.join();
    EXPECT_EQ(called.All(), Texts{});
    thread.Run([] { keyboardHook.trigger.busy = true; });
    const int before = callsDone;
    Ask(window);
    EXPECT_TRUE(WaitFor([=] { return callsDone > before; }));
    EXPECT_TRUE(MenuWindows().empty());
    thread.Run([] { keyboardHook.trigger.busy = false; });
}

TEST_F(MenuPopupTest, EveryWayOutWithoutAChoiceLeavesTheTargetAsItWas) {
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"escape", [] { PlayStroke({}, VK_ESCAPE); }},
        {"alt", [] { PlayStroke({}, VK_LMENU); }},
        {"asked for again", [this] { Ask(window); }},
        {"title bar of the target",
         [] {
             ClickAt({900, 72});
         }},
        {"from above", [this] { thread.Run(CloseHotkeyMenu); }},
        {"escape out of a group",
         [] {
             PlayStroke({}, 'G');
             WaitFor([] { return MenuWindows().size() == 2; });
             PlayStroke({}, VK_ESCAPE);
             WaitFor([] { return MenuWindows().size() == 1; });
             PlayStroke({}, VK_ESCAPE);
         }},
    };
    Add(L"text one", L"&First");
    Add(L"in a group", L"&Group/item");
    for (const auto& [way, leave] : rows) {
        SCOPED_TRACE(way);
        Open();
        leave();
        ExpectClosed();
        Linger(50);  // nothing opens again
        EXPECT_TRUE(MenuWindows().empty());
        ExpectTargetUntouched();
    }
    // Left to itself, Windows would activate what lies below the menu's owner.
    const Process other(HelperPath(L"target_window.exe") + L" Other");
    const HWND otherWindow = other.WaitForVisibleWindow(L"VerbatixTestTarget", L"Other");
    other.WaitForIdle();
    SetWindowPos(otherWindow, HWND_TOPMOST, 20, 20, 300, 200, SWP_NOACTIVATE);
    EXPECT_TRUE(target.Activate());
    Open();
    PlayStroke({}, VK_ESCAPE);
    ExpectClosed();
    Linger(100);
    ExpectTargetUntouched();
    // Going to another program is not undone.
    for (const bool byClick : {true, false}) {
        EXPECT_TRUE(target.Activate());
        Open();
        byClick ? ClickAt({150, 32}) : void(SetForegroundWindow(otherWindow));
        ExpectClosed();
        EXPECT_TRUE(WaitFor([=] { return GetForegroundWindow() == otherWindow; })) << byClick;
        Linger(100);
        EXPECT_EQ(GetForegroundWindow(), otherWindow) << byClick;
    }
    EXPECT_EQ(called.All(), Texts{});
}

TEST_F(MenuPopupTest, HotkeysOpenItAndReplaceIt) {
    Add(L"text one");
    Add(L"text two");
    Add(L"other one", {}, 4, 'Y');
    Add(L"other two", {}, 4, 'Y');
    Add(L"single", {}, 4, 'E');
    Listen();
    ASSERT_TRUE(WaitFor([this] { return Press(); }));
    ASSERT_TRUE(WaitFor([] { return !MenuWindows().empty(); }));
    EXPECT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'E'); }));  // an entry's is swallowed
    EXPECT_FALSE(MenuWindows().empty());
    EXPECT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'Y'); }));
    EXPECT_TRUE(WaitFor([] {
        wchar_t text[64] = {};
        GetMenuStringW(RootMenu(), 0, text, 64, MF_BYPOSITION);
        return std::wstring_view(text) == L"other one";
    }));
    ChooseFirst();
    ExpectClosed();
    EXPECT_EQ(called.All(), Texts{L"execute other one"});
    EXPECT_EQ(foregroundWhenCalled, window);
    EXPECT_EQ(pressWhenCalled.target, edit);  // still that of the first press
    EXPECT_EQ(Ends(3), (std::vector{PressEnd::kMenuClosed, PressEnd::kBusy, PressEnd::kDone}));
    EXPECT_EQ(CurrentPress().strokes, 1U);

    // The hotkey of an open menu closes it. In the middle of an entry it does nothing, not even to the
    // record of that entry.
    ASSERT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'Y'); }));
    ASSERT_TRUE(WaitFor([] { return !MenuWindows().empty(); }));
    ASSERT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'Y'); }));
    ExpectClosed();
    EXPECT_EQ(Ends(2), (std::vector{PressEnd::kMenuClosed, PressEnd::kClosedMenu}));
    thread.Run([] { keyboardHook.trigger.busy = true; });
    const PressNumber running = CurrentPressNumber();
    ASSERT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'Y'); }));
    EXPECT_TRUE(WaitFor([this] { return Ends(1) == std::vector{PressEnd::kBusy}; }));
    EXPECT_EQ(CurrentPressNumber(), running);
    EXPECT_TRUE(MenuWindows().empty());
    thread.Run([] { keyboardHook.trigger.busy = false; });
}

TEST_F(MenuPopupTest, OpensAtTheCaretElseAtTheMouse) {
    MoveMouse({333, 222});
    for (const HWND none : {HWND{nullptr}, mainWindow, reinterpret_cast<HWND>(0x7ffffff0)}) {
        const CaretPlace place = FindCaretPlace(none);
        EXPECT_TRUE(place.point.x == 333 && place.point.y == 222);
    }
    Add(L"text one");
    Add(L"text two");
    const RECT screen = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    for (const RECT& place : {RECT{700, 60, 1220, 460}, {1000, 700, 1270, 890}, {-20, -10, 400, 300}}) {
        MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
        const CaretPlace caret = FindCaretPlace(window);
        EXPECT_LT(caret.exclude.top, caret.exclude.bottom) << "no caret found";
        Open();
        const RECT menu = ScreenPlace(MenuWindows().at(0));
        RECT visible = {};
        IntersectRect(&visible, &menu, &screen);
        EXPECT_TRUE(EqualRect(&visible, &menu)) << "not on the screen";
        EXPECT_TRUE(menu.top >= caret.exclude.bottom || menu.bottom <= caret.exclude.top)
            << "covers the line";
        EXPECT_TRUE(place.left != 700 || (menu.left == caret.point.x && menu.top == caret.point.y));
        PlayStroke({}, VK_ESCAPE);
        ExpectClosed();
    }
}

decltype(&GetAsyncKeyState) realKeyState;

SHORT WINAPI WithShift(int key) {
    return key == VK_LSHIFT ? SHORT{-1} : realKeyState(key);
}

TEST_F(MenuPopupTest, OtherChoicesThanAnEntry) {
    const auto choose = [this](int item, const wchar_t* call, unsigned key, unsigned modifier) {
        called.Take();
        Open(key, modifier);
        ClickAt(ItemPoint(item));
        ExpectClosed();
        EXPECT_EQ(called.All(), Texts{call});
        EXPECT_TRUE(target.Activate());
    };
    Add(L"charmap:a,,&b,%c%");
    choose(2, L"deliver %c%", 'Q', 2);
    Add(L"text one", {}, 0, VK_F22);
    Add(L"text two", {}, 0, VK_F22);
    choose(3, L"show main window", VK_F22, 0);
    ASSERT_TRUE(RegisterHotKey(nullptr, 1, MOD_WIN, VK_F22));
    choose(3, L"explain", VK_F22, 0);
    EXPECT_EQ(foregroundWhenCalled, window) << "what the box gives the foreground back to";
    UnregisterHotKey(nullptr, 1);
    // The bench lets a held key go when the focus moves.
    called.Take();
    Open(VK_F22, 0);
    realKeyState = __imp_GetAsyncKeyState;
    const ImportPatch patch(__imp_GetAsyncKeyState, WithShift);
    ClickAt(ItemPoint(1));
    ExpectClosed();
    EXPECT_EQ(called.All(), Texts{L"edit 2"});
}

TEST_F(MenuPopupTest, HostileLabelsAndRowsWhoseEntriesAreGoneDoNothing) {
    for (const std::wstring& label :
         {std::wstring(255, L'W'), std::wstring(255, L'/'), std::wstring(255, L'&'),
          std::wstring(L"\x05e9\x05dd\x202e rtl"), std::wstring(L"\xd83d\xde00\xdc00"),
          std::wstring(L"MenuBreakName:"), std::wstring(L"a\tb\tc")}) {
        list.clear();
        Add(std::wstring(4000, L'M'), label);
        Add(L"charmap:" + std::wstring(4000, L','));
        Open();
        EXPECT_LE(ScreenPlace(MenuWindows().at(0)).right, GetSystemMetrics(SM_CXSCREEN)) << label;
        PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RIGHT);
        thread.Run(CloseHotkeyMenu);
        ExpectClosed();
        EXPECT_EQ(called.All(), Texts{});
    }
    const std::pair<void (*)(), Texts> rows[] = {
        {[] { list.at(0).current.text[0] = list.at(0).current.label[0] = 0; }, {}},
        {[] { std::swap(list.at(0), list.at(1)); }, {}},
        {[] { list.clear(); }, {}},
        // A change of the text is none of the place: what the user saw is what is executed.
        {[] { CopyText(list.at(0).current.text, L"changed"); }, {L"execute text one"}},
    };
    for (const auto& [change, expected] : rows) {
        list.clear();
        Add(L"text one");
        Add(L"text two");
        Open();
        thread.Run(change);
        ChooseFirst();
        ExpectClosed();
        EXPECT_EQ(called.All(), expected);
    }
}

TEST_F(MenuPopupTest, NineHundredRowsCanBeUsedAndNoMore) {
    // Columns where they fit side by side, else a menu that scrolls.
    for (const int last : {120, 900}) {
        called.Take();
        list.clear();
        for (int count = 1; count <= last; ++count) Add(Format(L"%d", count));
        Open();
        PlayStroke({}, VK_UP);
        PlayStroke({}, VK_UP);  // above the item that shows the main window
        EXPECT_TRUE(WaitFor([=] {
            return (GetMenuState(RootMenu(), static_cast<UINT>(last - 1), MF_BYPOSITION) & MF_HILITE) != 0;
        }));
        // A menu with a column break would not scroll.
        const UINT behindRows = GetMenuState(RootMenu(), static_cast<UINT>(last), MF_BYPOSITION);
        EXPECT_EQ((behindRows & MF_MENUBREAK) == 0, last == 900);
        PlayStroke({}, VK_RETURN);
        ExpectClosed();
        EXPECT_EQ(called.All(), Texts{Format(L"execute %d", last)});
    }
    Add(L"one too many");
    Ask(window);
    HWND box = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (box = FindWindowW(L"#32770", L"Verbatix")) != nullptr; }));
    EXPECT_EQ(WindowText(GetDlgItem(box, 0xffff)), L"Max 900 per Menu");
    PostMessageW(box, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    EXPECT_TRUE(MenuWindows().empty());
}

TEST_F(MenuPopupTest, TheTooltipShowsTheHighlightedRowsText) {
    showTooltips = true;
    Add(L"Dear %name%\\nbest wishes", L"&Letter");
    Add(L"text two", L"&Other");
    Open();
    EXPECT_FALSE(ShownTooltip());
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(WaitFor([&] { return WindowText(ShownTooltip()) == L"Dear %name%\r\nbest wishes"; }));
    const RECT menu = ScreenPlace(MenuWindows().at(0));
    const RECT tooltip = ScreenPlace(ShownTooltip());
    RECT common = {};
    EXPECT_FALSE(IntersectRect(&common, &menu, &tooltip));
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(WaitFor([&] { return WindowText(ShownTooltip()) == L"text two"; }));
    PlayStroke({}, VK_ESCAPE);
    ExpectClosed();
    EXPECT_FALSE(ShownTooltip());
    showTooltips = false;
    Open();
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(WaitFor([] { return (GetMenuState(RootMenu(), 0, MF_BYPOSITION) & MF_HILITE) != 0; }));
    thread.Run([] {});
    EXPECT_FALSE(ShownTooltip());
}

}  // namespace
}  // namespace verbatix::test
