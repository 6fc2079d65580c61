// The main window of a running program, worked by messages, and what comes of it in the settings file.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include "ids.h"
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
    bool ComesToFront() const {
        return WaitFor([&] { return GetForegroundWindow() == dialog_; });
    }
    HWND Control(int id) const { return GetDlgItem(dialog_, id); }
    std::wstring Text(int id) const { return WindowText(Control(id)); }
    bool Becomes(int id, std::wstring_view text) const {
        return WaitFor([&] { return Text(id) == text; });
    }
    void Menu(WPARAM id) const { PostMessageW(dialog_, WM_COMMAND, id, kMarker); }
    void Type(int id, std::wstring_view text) const {
        for (const wchar_t character : text) PostMessageW(Control(id), WM_CHAR, character, 0);
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
    // The visible dialog of that process which is not the main one.
    static HWND DialogOf(DWORD process, HWND notThis) {
        for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr;) {
            DWORD owner = 0;
            GetWindowThreadProcessId(box, &owner);
            if (owner == process && box != notThis && IsWindowVisible(box)) return box;
        }
        return nullptr;
    }
    // Waits for the next message box, gives that answer and returns what it said.
    std::wstring Answer(int button) const {
        HWND box = nullptr;
        if (!WaitFor([&] { return (box = DialogOf(run_.Program().Id(), dialog_)) != nullptr; })) return {};
        std::wstring text = WindowText(GetDlgItem(box, 0xffff));
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
        WaitFor([&] { return !IsWindow(box); });
        return text;
    }

    ProgramRun run_;
    HWND dialog_ = nullptr;
    HWND list_ = nullptr;
    HWND tree_ = nullptr;
};

}  // namespace verbatix::test
