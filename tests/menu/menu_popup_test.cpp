// The menu on its own thread with the hook, a user's keys from this one, another program in front.
#include "menu/menu_popup.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>

#include "base/text.h"
#include "ids.h"
#include "menu/menu_place.h"
#include "support/folder.h"
#include "support/keys.h"
#include "support/message_thread.h"
#include "support/process.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using test::Linger;
using test::PlayStroke;
using test::WaitFor;
using Texts = std::vector<std::wstring>;

std::mutex callsLock;
Texts calls;

void Record(std::wstring call) {
    const std::lock_guard lock(callsLock);
    calls.push_back(std::move(call));
}

Texts Calls() {
    const std::lock_guard lock(callsLock);
    return calls;
}

HWND foregroundWhenCalled;

// Executing types a letter: it lands where the keyboard is.
void Execute(const std::wstring& text) {
    foregroundWhenCalled = GetForegroundWindow();
    Record(L"execute " + text);
    PressKey('Z');
}

const MenuClient kClient = {Execute, [](const std::wstring& text) { Record(L"deliver " + text); },
                            [](int position) { Record(Format(L"edit %d", position)); },
                            [] { Record(L"show main window"); }, [] { Record(L"explain"); }};

EntryList list;  // used on the menu's thread while a menu is open
MenuOptions options;
bool showTooltips;
std::atomic<int> callsRunning;  // of ShowHotkeyMenu

LRESULT CALLBACK MainProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_COMMAND && LOWORD(wParam) == CMD_SHOW_PASTE_MENU) {
        ++callsRunning;
        ShowHotkeyMenu(keyboardHook.menuRequest, list, options, showTooltips, kClient);
        --callsRunning;
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeMainWindow() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = MainProcedure;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"VerbatixTestMain";
    RegisterClassW(&windowClass);
    return CreateWindowExW(0, windowClass.lpszClassName, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                           windowClass.hInstance, nullptr);
}

BOOL CALLBACK CountMenu(HWND window, LPARAM parameter) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    if (std::wstring_view(name) == L"#32768" && IsWindowVisible(window)) {
        reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
    }
    return TRUE;
}

std::vector<HWND> MenuWindows() {
    std::vector<HWND> windows;
    EnumWindows(CountMenu, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

class MenuPopupTest : public testing::Test {
  protected:
    MenuPopupTest() : target(test::HelperPath(L"target_window.exe")) {
        calls.clear();
        list.clear();
        options = {0, true, false};
        showTooltips = false;
        thread.Run([this] {
            mainWindow = MakeMainWindow();
            keyboardHook.client = {mainWindow, [](const std::wstring& text) { Record(L"hook " + text); },
                                   nullptr};
            InstallKeyboardHook();
        });
        window = target.WaitForVisibleWindow(L"VerbatixTestTarget");
        edit = FindWindowExW(window, nullptr, L"EDIT", nullptr);
        SetCursorPos(200, 700);
        EXPECT_TRUE(WaitFor([this] { return GetForegroundWindow() == window; }));
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"one two three\r\nfour"));
        SendMessageW(edit, EM_SETSEL, 4, 7);
    }

    ~MenuPopupTest() override {
        thread.Run([this] {
            CloseHotkeyMenu();
            RemoveKeyboardHook();
            DestroyWindow(mainWindow);
        });
        EXPECT_FALSE(test::AnyModifierDown());
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

    // What the hook does for a hotkey with several entries.
    void Open(unsigned key = 'Q', unsigned modifier = 2) {
        thread.Run([=] { keyboardHook.menuRequest = {key, modifier, GetFocus(), GetForegroundWindow()}; });
        PostMessageW(mainWindow, WM_COMMAND, CMD_SHOW_PASTE_MENU, 0);
        ASSERT_TRUE(WaitFor([] { return !MenuWindows().empty(); }));
    }

    // The menu is gone and what was chosen has been carried out.
    void ExpectClosed() {
        EXPECT_TRUE(WaitFor([] { return MenuWindows().empty() && callsRunning == 0; }));
    }

    void ExpectTargetUntouched() {
        EXPECT_TRUE(WaitFor([this] { return GetForegroundWindow() == window; }));
        EXPECT_EQ(test::WindowText(edit), L"one two three\r\nfour");
        EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), MAKELONG(4, 7));
        GUITHREADINFO info = {};
        info.cbSize = sizeof info;
        EXPECT_TRUE(WaitFor([&] {
            return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
                   info.hwndFocus == edit;
        }));
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
        const HMENU menu = RootMenu();
        GetMenuItemRect(nullptr, menu, static_cast<UINT>(position), &item);
        return {(item.left + item.right) / 2, (item.top + item.bottom) / 2};
    }

    static void Click(POINT point) {
        SetCursorPos(point.x, point.y);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    }

    test::MessageThread thread;
    HWND mainWindow = nullptr;
    test::Process target;
    HWND window = nullptr;
    HWND edit = nullptr;
};

TEST_F(MenuPopupTest, WhatIsChosenGoesToTheProgramInFront) {
    const struct {
        const char* way;
        std::function<void()> choose;
        const wchar_t* call;
    } rows[] = {
        {"enter", [] { PlayStroke({}, VK_DOWN), PlayStroke({}, VK_RETURN); }, L"execute text one"},
        {"letter", [] { PlayStroke({}, 'B'); }, L"execute text two"},
        {"the hotkey's own letter", [] { PlayStroke({}, 'Q'); }, L"execute text three"},
        {"click", [] { Click(ItemPoint(1)); }, L"execute text two"},
        {"group",
         [] {
             PlayStroke({}, 'G');
             WaitFor([] { return MenuWindows().size() == 2; });
             PlayStroke({}, VK_RETURN);
         },
         L"execute in a group"},
    };
    Add(L"text one", L"&First");
    Add(L"text two", L"&Bold & strong");
    Add(L"text three", L"&Quick");
    Add(L"in a group", L"&Group/item");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.way);
        calls.clear();
        SendMessageW(edit, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"one two three"));
        SendMessageW(edit, EM_SETSEL, 4, 7);
        Open();
        EXPECT_NE(GetForegroundWindow(), window);
        row.choose();
        ExpectClosed();
        EXPECT_EQ(Calls(), Texts{row.call});
        EXPECT_EQ(foregroundWhenCalled, window);
        // The letter replaces the selection, which therefore has outlived the menu.
        EXPECT_TRUE(WaitFor([this] { return test::WindowText(edit) == L"one z three"; }))
            << testing::PrintToString(test::WindowText(edit));
    }
}

TEST_F(MenuPopupTest, TheHotkeyOpensIt) {
    Add(L"text one");
    Add(L"text two");
    Listen();
    ASSERT_TRUE(WaitFor([this] { return Press(); }));
    ASSERT_TRUE(WaitFor([] { return !MenuWindows().empty(); }));
    PlayStroke({}, VK_DOWN);
    PlayStroke({}, VK_RETURN);
    ExpectClosed();
    EXPECT_EQ(Calls(), Texts{L"execute text one"});
    EXPECT_EQ(foregroundWhenCalled, window);
}

TEST_F(MenuPopupTest, EveryWayOutWithoutAChoiceLeavesTheTargetAsItWas) {
    const struct {
        const char* way;
        std::function<void()> leave;
    } rows[] = {
        {"escape", [] { PlayStroke({}, VK_ESCAPE); }},
        {"alt", [] { PlayStroke({}, VK_LMENU); }},
        {"asked for again", [this] { PostMessageW(mainWindow, WM_COMMAND, CMD_SHOW_PASTE_MENU, 0); }},
        {"title bar of the target",
         [] {
             Click({900, 72});
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
    Listen();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.way);
        Open();
        row.leave();
        ExpectClosed();
        Linger(50);  // nothing opens again
        EXPECT_TRUE(MenuWindows().empty());
        EXPECT_EQ(Calls(), Texts{});
        ExpectTargetUntouched();
    }
}

TEST_F(MenuPopupTest, TheHotkeyPressedAgainClosesIt) {
    Add(L"text one");
    Add(L"text two");
    Listen();
    // A stroke that came to nothing may have closed the menu by its Alt.
    const auto pressAgain = [this] {
        Open();
        Linger(150);  // for the focus to settle
        const bool pressed = Press();
        if (!pressed) thread.Run(CloseHotkeyMenu);
        ExpectClosed();
        return pressed;
    };
    EXPECT_TRUE(WaitFor(pressAgain, 15000));
    Linger(50);
    EXPECT_TRUE(MenuWindows().empty());
    EXPECT_EQ(Calls(), Texts{});
    EXPECT_TRUE(WaitFor([this] { return GetForegroundWindow() == window; }));
}

TEST_F(MenuPopupTest, GoingToAnotherProgramIsNotUndone) {
    const test::Process other(test::HelperPath(L"target_window.exe") + L" Other");
    const HWND otherWindow = other.WaitForVisibleWindow(L"VerbatixTestTarget", L"Other");
    other.WaitForIdle();
    SetWindowPos(otherWindow, nullptr, 20, 20, 300, 200, SWP_NOZORDER);
    Add(L"one");
    Add(L"two");
    for (const bool byClick : {true, false}) {
        SCOPED_TRACE(byClick ? "click" : "foreground taken");
        EXPECT_TRUE(WaitFor([&] {
            SetForegroundWindow(window);
            return GetForegroundWindow() == window;
        }));
        Open();
        if (byClick) {
            Click({150, 32});
        } else {
            SetForegroundWindow(otherWindow);
        }
        ExpectClosed();
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == otherWindow; }));
        Linger(100);
        EXPECT_EQ(GetForegroundWindow(), otherWindow);
        EXPECT_EQ(Calls(), Texts{});
    }
}

TEST_F(MenuPopupTest, TheKeyboardGoesBackPastOtherWindows) {
    // Left to itself, Windows would activate what lies below the menu's owner.
    const test::Process other(test::HelperPath(L"target_window.exe") + L" Other");
    const HWND otherWindow = other.WaitForVisibleWindow(L"VerbatixTestTarget", L"Other");
    other.WaitForIdle();
    SetWindowPos(otherWindow, HWND_TOPMOST, 20, 20, 300, 200, SWP_NOACTIVATE);
    EXPECT_TRUE(WaitFor([&] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window;
    }));
    Add(L"one");
    Open();
    PlayStroke({}, VK_ESCAPE);
    ExpectClosed();
    Linger(100);
    EXPECT_EQ(GetForegroundWindow(), window);
}

TEST_F(MenuPopupTest, OpensAtTheCaretAndOnTheScreen) {
    Add(L"text one");
    Add(L"text two");
    const RECT places[] = {{700, 60, 1220, 460}, {1000, 700, 1270, 890}, {-20, -10, 400, 300}};
    for (const RECT& place : places) {
        MoveWindow(window, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
        const MenuPlace caret = FindMenuPlace(window);
        EXPECT_LT(caret.exclude.top, caret.exclude.bottom) << "no caret found";
        RECT editRectangle = {};
        GetWindowRect(edit, &editRectangle);
        EXPECT_TRUE(PtInRect(&editRectangle, {caret.exclude.left, caret.exclude.top}));
        Open();
        RECT menu = {};
        GetWindowRect(MenuWindows().at(0), &menu);
        EXPECT_GE(menu.left, 0);
        EXPECT_GE(menu.top, 0);
        EXPECT_LE(menu.right, GetSystemMetrics(SM_CXSCREEN));
        EXPECT_LE(menu.bottom, GetSystemMetrics(SM_CYSCREEN));
        EXPECT_TRUE(menu.top >= caret.exclude.bottom || menu.bottom <= caret.exclude.top)
            << "the menu covers the caret's line";
        if (place.left == 700) {
            EXPECT_EQ(menu.left, caret.point.x);
            EXPECT_EQ(menu.top, caret.point.y);
        }
        PlayStroke({}, VK_ESCAPE);
        ExpectClosed();
    }
}

TEST_F(MenuPopupTest, OpensAtTheMouseWhereThereIsNoCaret) {
    SetCursorPos(333, 222);
    for (const HWND none : {HWND{nullptr}, mainWindow, reinterpret_cast<HWND>(0x7ffffff0)}) {
        const MenuPlace place = FindMenuPlace(none);
        EXPECT_EQ(place.point.x, 333);
        EXPECT_EQ(place.point.y, 222);
    }
}

TEST_F(MenuPopupTest, APieceIsDeliveredAsItStands) {
    Add(L"charmap:a,,&b,%c%");
    Open();
    Click(ItemPoint(2));
    ExpectClosed();
    EXPECT_EQ(Calls(), Texts{L"deliver %c%"});
}

TEST_F(MenuPopupTest, LeftShiftOpensTheEditor) {
    Add(L"text one");
    Add(L"text two");
    Open();
    // Wine lets a held key go when the focus moves, so it is pressed until the choice is carried out, which
    // blocks the hook.
    thread.Run(RemoveKeyboardHook);
    Click(ItemPoint(1));
    EXPECT_TRUE(WaitFor([] { return test::PressKeyDown(VK_LSHIFT), !Calls().empty(); }));
    test::LetKeyUp(VK_LSHIFT);
    ExpectClosed();
    EXPECT_EQ(Calls(), Texts{L"edit 1"});
}

TEST_F(MenuPopupTest, TheLastItemsAreTheMainWindowAndTheTakenKey) {
    Add(L"text one", {}, 0, VK_F22);
    Add(L"text two", {}, 0, VK_F22);
    for (const bool taken : {false, true}) {
        calls.clear();
        if (taken) {
            ASSERT_TRUE(RegisterHotKey(nullptr, 1, MOD_WIN, VK_F22));
        }
        Open(VK_F22, 0);
        Click(ItemPoint(3));
        ExpectClosed();
        EXPECT_EQ(Calls(), Texts{taken ? L"explain" : L"show main window"});
        if (taken) UnregisterHotKey(nullptr, 1);
    }
}

TEST_F(MenuPopupTest, ARowWhoseEntryIsGoneDoesNothing) {
    const struct {
        const char* what;
        void (*change)();
    } rows[] = {
        {"blanked", [] { list.at(0).current.text[0] = list.at(0).current.label[0] = 0; }},
        {"moved", [] { std::swap(list.at(0), list.at(1)); }},
        {"erased", [] { list.clear(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        list.clear();
        Add(L"text one");
        Add(L"text two");
        Open();
        thread.Run(row.change);
        PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RETURN);
        ExpectClosed();
        EXPECT_EQ(Calls(), Texts{});
    }
    // A change of the text is none of the place: what the user saw is what is executed.
    list.clear();
    Add(L"text one");
    Add(L"text two");
    Open();
    thread.Run([] { CopyText(list.at(0).current.text, L"changed"); });
    PlayStroke({}, VK_DOWN);
    PlayStroke({}, VK_RETURN);
    ExpectClosed();
    EXPECT_EQ(Calls(), Texts{L"execute text one"});
}

TEST_F(MenuPopupTest, AnotherHotkeyReplacesTheMenuAndAnEntrysIsSwallowed) {
    Add(L"text one");
    Add(L"text two");
    Add(L"other one", {}, 4, 'Y');
    Add(L"other two", {}, 4, 'Y');
    Add(L"single", {}, 4, 'E');
    Listen();
    Open();
    EXPECT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'E'); }));
    EXPECT_FALSE(MenuWindows().empty());
    EXPECT_TRUE(WaitFor([this] { return Press({VK_LCONTROL}, 'Y'); }));
    EXPECT_TRUE(WaitFor([] {
        wchar_t text[64] = {};
        GetMenuStringW(RootMenu(), 0, text, 64, MF_BYPOSITION);
        return std::wstring_view(text) == L"other one";
    }));
    PlayStroke({}, VK_DOWN);
    PlayStroke({}, VK_RETURN);
    ExpectClosed();
    EXPECT_EQ(Calls(), Texts{L"execute other one"});
    EXPECT_EQ(foregroundWhenCalled, window);
}

TEST_F(MenuPopupTest, NineHundredRowsCanBeUsedAndNoMore) {
    // Columns where they fit side by side, else a menu that scrolls, whose rectangles Wine gives
    // unscrolled.
    for (const int last : {120, 900}) {
        calls.clear();
        list.clear();
        for (int count = 1; count <= last; ++count) Add(Format(L"%d", count));
        Open();
        PlayStroke({}, VK_UP);
        PlayStroke({}, VK_UP);  // above the item that shows the main window
        EXPECT_TRUE(WaitFor([=] {
            return (GetMenuState(RootMenu(), static_cast<UINT>(last - 1), MF_BYPOSITION) & MF_HILITE) != 0;
        }));
        RECT screen = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        EXPECT_TRUE(last == 900 || PtInRect(&screen, ItemPoint(last - 1)));
        RECT menu = {};
        GetWindowRect(MenuWindows().at(0), &menu);
        EXPECT_LE(menu.bottom, screen.bottom);
        EXPECT_LE(menu.right, screen.right);
        // A menu with a column break would not scroll.
        const UINT behindRows = GetMenuState(RootMenu(), static_cast<UINT>(last), MF_BYPOSITION);
        EXPECT_EQ((behindRows & MF_MENUBREAK) == 0, last == 900);
        PlayStroke({}, VK_RETURN);
        ExpectClosed();
        EXPECT_EQ(Calls(), Texts{Format(L"execute %d", last)});
    }

    Add(L"one too many");
    PostMessageW(mainWindow, WM_COMMAND, CMD_SHOW_PASTE_MENU, 0);
    HWND box = nullptr;
    EXPECT_TRUE(WaitFor([&] { return (box = FindWindowW(L"#32770", L"Verbatix")) != nullptr; }));
    EXPECT_EQ(test::WindowText(GetDlgItem(box, 0xffff)), L"Max 900 per Menu");
    PostMessageW(box, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
    EXPECT_TRUE(MenuWindows().empty());
}

TEST_F(MenuPopupTest, HostileLabelsMakeAMenuOrNone) {
    const std::wstring slashes(255, L'/');
    std::wstring deep;
    for (int level = 0; level < 127; ++level) deep += L"g/";
    for (const std::wstring& label :
         {std::wstring(255, L'W'), slashes, deep + L"x", std::wstring(255, L'&'), std::wstring(L"&&"),
          std::wstring(L"\x05e9\x05dc\x05d5\x05dd\x202e rtl"), std::wstring(L"\xd83d\xde00\xdc00"),
          std::wstring(L"MenuBreakName:"), std::wstring(L"MenuBreak:"), std::wstring(L"a\tb\tc")}) {
        SCOPED_TRACE(testing::PrintToString(label));
        list.clear();
        Add(std::wstring(4000, L'M'), label);
        Add(L"charmap:" + std::wstring(4000, L','));
        Open();
        RECT menu = {};
        GetWindowRect(MenuWindows().at(0), &menu);
        EXPECT_LE(menu.right - menu.left, GetSystemMetrics(SM_CXSCREEN));
        PlayStroke({}, VK_DOWN);
        PlayStroke({}, VK_RIGHT);
        thread.Run(CloseHotkeyMenu);
        ExpectClosed();
        EXPECT_EQ(Calls(), Texts{});
    }
}

HWND VisibleTooltip() {
    const HWND tooltip = FindWindowW(L"tooltips_class32", nullptr);
    return tooltip && IsWindowVisible(tooltip) ? tooltip : nullptr;
}

TEST_F(MenuPopupTest, TheTooltipShowsTheHighlightedRowsText) {
    showTooltips = true;
    Add(L"Dear %name%\\nbest wishes", L"&Letter");
    Add(L"text two", L"&Other");
    Open();
    EXPECT_EQ(VisibleTooltip(), nullptr);
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(WaitFor([] {
        return VisibleTooltip() && test::WindowText(VisibleTooltip()) == L"Dear %name%\r\nbest wishes";
    }));
    RECT menu = {};
    RECT tooltip = {};
    GetWindowRect(MenuWindows().at(0), &menu);
    GetWindowRect(VisibleTooltip(), &tooltip);
    RECT common = {};
    EXPECT_FALSE(IntersectRect(&common, &menu, &tooltip));
    PlayStroke({}, VK_DOWN);
    EXPECT_TRUE(
        WaitFor([] { return VisibleTooltip() && test::WindowText(VisibleTooltip()) == L"text two"; }));
    PlayStroke({}, VK_ESCAPE);
    ExpectClosed();
    EXPECT_EQ(VisibleTooltip(), nullptr);
    showTooltips = false;
    Open();
    PlayStroke({}, VK_DOWN);
    Linger(100);
    EXPECT_EQ(VisibleTooltip(), nullptr);
}

}  // namespace
}  // namespace verbatix
