// The main window of a running program, worked by messages, and what comes of it in the settings file.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include "ids.h"
#include "support/keys.h"
#include "support/mouse.h"
#include "support/program_run.h"
#include "support/wait.h"

namespace verbatix::test {

class ProgramWindow : public ::testing::Test {
  protected:
    static constexpr LPARAM kMarker = 0xAFFE0000;

    void Start(const std::vector<StoredLine>& lines, const wchar_t* programLines = L"",
               const wchar_t* arguments = L"") {
        ASSERT_TRUE(run_.WriteSettings(SettingsText(lines, programLines)));
        ASSERT_TRUE(run_.Start(arguments));
        FindControls();
    }
    void FindControls() {
        dialog_ = run_.MainDialog();
        list_ = Control(IDC_LIST);
        tree_ = Control(IDC_TREE);
    }
    bool Shows(bool visible) const {
        return WaitFor([&] { return (IsWindowVisible(dialog_) != FALSE) == visible; });
    }
    // As the shell tells of a click on the icon.
    void ClickTray(UINT button) const {
        PostMessageW(run_.Frame(), WM_TRAY_CALLBACK, IDI_VERBATIX, button);
    }
    // Whether a popup menu comes up, or goes.
    static bool MenuIsOpen(bool open) {
        return WaitFor([&] {
            const HWND menu = FindWindowW(L"#32768", nullptr);
            return (menu && IsWindowVisible(menu)) == open;
        });
    }
    bool ComesToFront() const {
        return WaitFor([&] { return GetForegroundWindow() == dialog_; });
    }
    // The window of the same thread that has the keyboard.
    static HWND FocusOf(HWND window) {
        GUITHREADINFO info = {sizeof info, 0, {}, {}, {}, {}, {}, {}, {}};
        return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) ? info.hwndFocus
                                                                                  : nullptr;
    }
    // Whether the control, or a part of it, has the keyboard.
    bool HasKeyboard(int id) const {
        const HWND focus = FocusOf(dialog_);
        return focus && (focus == Control(id) || GetParent(focus) == Control(id));
    }
    HWND Control(int id) const { return GetDlgItem(dialog_, id); }
    std::wstring Text(int id) const { return WindowText(Control(id)); }
    bool Becomes(int id, std::wstring_view text, DWORD milliseconds = 5000) const {
        return WaitFor([&] { return Text(id) == text; }, milliseconds);
    }
    void Menu(WPARAM id) const { PostMessageW(dialog_, WM_COMMAND, id, kMarker); }
    void Type(int id, std::wstring_view text) const {
        for (const wchar_t character : text) PostMessageW(Control(id), WM_CHAR, character, 0);
    }
    static void Keys(std::initializer_list<BYTE> keys) {
        for (const BYTE key : keys) PlayStroke({}, key);
    }
    // As a hand does it, also in a field that takes what is held for itself, where it never shows as down.
    static void HoldAndLetGo(const std::vector<BYTE>& down, const std::vector<BYTE>& up) {
        constexpr DWORD kHeld = 70;
        for (const BYTE key : down) {
            PressKeyDown(key);
            Linger(kHeld);
        }
        for (const BYTE key : up) {
            LetKeyUp(key);
            Linger(kHeld);
        }
    }
    void PressKey(int id, WPARAM key) const { PostMessageW(Control(id), WM_KEYDOWN, key, 0); }
    std::wstring File() const {
        const std::string bytes = ReadBytes(run_.SettingsFile());
        return std::wstring(reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t));
    }
    bool FileHolds(std::wstring_view text) const { return File().find(text) != std::wstring::npos; }
    bool FileGets(std::wstring_view text) const {
        return WaitFor([&] { return FileHolds(text); });
    }
    int ReadNumber(const wchar_t* key) const {
        return static_cast<int>(GetPrivateProfileIntW(L"Program", key, -7, run_.SettingsFile().c_str()));
    }
    // A place in a row of the list, on the screen. The control tells its row height only by the room that
    // it needs.
    POINT ListPlace(int row, int percent = 50) const {
        const auto height = [&](WPARAM rows) {
            return static_cast<int>(
                HIWORD(SendMessageW(list_, LVM_APPROXIMATEVIEWRECT, rows, MAKELPARAM(0xffff, 0xffff))));
        };
        RECT header = {};
        GetWindowRect(FindWindowExW(list_, nullptr, WC_HEADERW, nullptr), &header);
        const int one = height(2) - height(1);
        return OnScreen(list_, 30,
                        static_cast<int>(header.bottom - header.top) + one * row + one * percent / 100);
    }
    LRESULT Rows() const { return SendMessageW(list_, LVM_GETITEMCOUNT, 0, 0); }
    static void Click(HWND window, int x, int y) {
        PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
        PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
    }
    // Selects a row of the list and waits until the editor's field shows that.
    bool Select(int row, int id, std::wstring_view text, DWORD milliseconds = 5000) const {
        POINT place = ListPlace(row);
        ScreenToClient(list_, &place);
        Click(list_, place.x, place.y);
        return Becomes(id, text, milliseconds);
    }
    // The visible dialog of that process which is not the main one.
    static HWND DialogOf(DWORD process, HWND notThis) {
        return FindTopWindow(L"#32770", [=](HWND box) {
            return ProcessOf(box) == process && box != notThis && IsWindowVisible(box);
        });
    }
    // Waits for the next message box, gives that answer and returns what it said.
    std::wstring Answer(int button) const {
        HWND box = nullptr;
        const auto comes = [&] { return (box = DialogOf(run_.Program().Id(), dialog_)) != nullptr; };
        EXPECT_TRUE(WaitFor(comes, 20000));
        std::wstring text = WindowText(GetDlgItem(box, 0xffff));
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        EXPECT_TRUE(WaitFor([&] { return !IsWindow(box); }));
        return text;
    }

    ProgramRun run_;
    HWND dialog_ = nullptr;
    HWND list_ = nullptr;
    HWND tree_ = nullptr;
};

}  // namespace verbatix::test
