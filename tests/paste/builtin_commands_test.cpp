#include "paste/builtin_commands.h"

#include <gtest/gtest.h>

#include <utility>

#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "clipboard/shell_paths.h"
#include "image_samples.h"
#include "support/desktop.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"
#include "support/keys.h"
#include "support/message_box.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using namespace test;

TEST(FindBuiltinCommand, TakesTheFirstNameThatTheTextBeginsWith) {
    struct Case {
        const wchar_t* text;
        const wchar_t* name;
    };
    const Case cases[] = {
        {L"MonitorOff", L"MonitorOff"},
        {L"MonitorOffline", L"MonitorOff"},
        {L"MonitorOn", L"MonitorOn"},
        {L"PathToClipboard", L"PathToClipboard"},
        // The plain form stands first and takes them all.
        {L"PathToClipboard+", L"PathToClipboard"},
        {L"PathToClipboardSlash", L"PathToClipboard"},
        {L"PathToClipboardSlash+", L"PathToClipboard"},
        {L"SwitchPowerOptions:2", L"SwitchPowerOptions:"},
        {L"SwitchPowerOptions", nullptr},
        {L"Txt2Key:ClTxt2Key", L"Txt2Key"},
        {L"ClTxt2Key", L"ClTxt2Key"},
        {L" MonitorOff", nullptr},
        {L"monitoroff", nullptr},
        {L"Monitor", nullptr},
        {L"", nullptr},
    };
    for (const Case& c : cases) {
        const BuiltinCommand* const command = FindBuiltinCommand(c.text);
        EXPECT_EQ(std::wstring(command ? command->name : L""), c.name ? c.name : L"") << c.text;
    }
}

TEST(BuiltinCommands, StandInTheirOrder) {
    std::wstring names;
    for (const BuiltinCommand& command : BuiltinCommands()) names += std::wstring(command.name) + L" ";
    EXPECT_EQ(names,
              L"MonitorOff MonitorOn ScreensaverOn ImgToClipboard PathToClipboard PathToClipboard+ "
              L"PathToClipboardSlash PathToClipboardSlash+ SwitchPowerOptions: ClipboardImgCliper "
              L"ClipboardImgRGBA ShellBrowser Txt2Key ClTxt2Key CopyHtmlCode2TxtPaste "
              L"CopyText2TmpHtmlPageAndOpen ");
}

class BuiltinCommandsTest : public testing::Test {
  protected:
    BuiltinCommandsTest() {
        WaitForClipboard();
        ClipboardPutText(L"before");
        keepClipboardOnce = false;
    }
};

TEST_F(BuiltinCommandsTest, AnUnknownOneIsTold) {
    for (const std::wstring& text :
         {std::wstring(L" MonitorOff"), std::wstring(), std::wstring(4095, L'u')}) {
        MessageBoxAnswer box;
        EXPECT_EQ(RunBuiltinCommand(text, nullptr), 1);
        ASSERT_TRUE(box.Seen());
        EXPECT_EQ(box.Caption(), L"x");
        EXPECT_EQ(box.Text(), L"unknown command:\n" + text);
        EXPECT_FALSE(box.HasOwner());
    }
    EXPECT_FALSE(keepClipboardOnce);
}

// A window that takes every message away from the system and remembers the system commands and the rest.
class Recorder {
  public:
    explicit Recorder(HWND parent = nullptr, DWORD style = WS_OVERLAPPEDWINDOW) {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"VerbatixTestRecorder";
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(0, windowClass.lpszClassName, L"Recorder", style, 10, 10, 200, 100,
                                  parent, nullptr, windowClass.hInstance, this);
    }
    ~Recorder() { DestroyWindow(window_); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    HWND Window() const { return window_; }

    std::vector<std::pair<WPARAM, LPARAM>> commands;
    int asked = 0;             // for its shell browser
    LRESULT shellBrowser = 0;  // the answer
  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        if (message == WM_NCCREATE) {
            const auto& made = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made.lpCreateParams));
        }
        auto* const self = reinterpret_cast<Recorder*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self && message == WM_SYSCOMMAND) {
            self->commands.emplace_back(wParam, lParam);
            return 0;
        }
        if (self && message == WM_USER + 7) {
            ++self->asked;
            return self->shellBrowser;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window_;
};

TEST_F(BuiltinCommandsTest, MonitorAndScreenSaverArePostedToEveryWindow) {
    const Process other(L"\"" + HelperPath(L"target_window.exe") + L"\"");
    const HWND otherWindow = other.WaitForVisibleWindow(L"VerbatixTestTarget");
    Recorder first;
    Recorder second;
    EXPECT_EQ(RunBuiltinCommand(L"MonitorOff", nullptr), 1);
    EXPECT_TRUE(first.commands.empty());  // posted, not sent
    RunBuiltinCommand(L"MonitorOn and more", nullptr);
    RunBuiltinCommand(L"ScreensaverOn", nullptr);
    EXPECT_TRUE(WaitFor([&] { return first.commands.size() >= 3 && second.commands.size() >= 3; }));
    const std::vector<std::pair<WPARAM, LPARAM>> expected = {{0xF170, 2}, {0xF170, -1}, {0xF140, -1}};
    EXPECT_EQ(first.commands, expected);
    EXPECT_EQ(second.commands, expected);
    // Other programs live on.
    EXPECT_TRUE(SendMessageTimeoutW(otherWindow, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 5000, nullptr));
}

TEST_F(BuiltinCommandsTest, ShellBrowserAsksFourGenerations) {
    struct Case {
        int generation;  // that answers; 0 is the target itself
        const wchar_t* text;
    };
    for (const Case& c : {Case{0, L"2"}, Case{3, L"2"}, Case{4, L"Noshel"}, Case{-1, L"Noshel"}}) {
        std::vector<std::unique_ptr<Recorder>> line;  // the oldest first
        for (int i = 0; i < 5; ++i) {
            const HWND parent = line.empty() ? nullptr : line.back()->Window();
            line.push_back(std::make_unique<Recorder>(parent, parent ? WS_CHILD : WS_OVERLAPPEDWINDOW));
        }
        std::reverse(line.begin(), line.end());
        if (c.generation >= 0) line[static_cast<std::size_t>(c.generation)]->shellBrowser = 0x1234;
        MessageBoxAnswer box;
        RunBuiltinCommand(L"ShellBrowser", line.front()->Window());
        ASSERT_TRUE(box.Seen());
        EXPECT_EQ(box.Text(), c.text) << c.generation;
        EXPECT_EQ(box.Caption(), L"");
        EXPECT_FALSE(box.HasOwner());
        // No further than the first answer, and never further than the great-grandparent.
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(line[static_cast<std::size_t>(i)]->asked,
                      i < 4 && (c.generation < 0 || i <= c.generation))
                << i;
        }
        while (!line.empty()) line.erase(line.begin());
    }
    MessageBoxAnswer box;
    RunBuiltinCommand(L"ShellBrowser", nullptr);
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Text(), L"Noshel");
}

// A file manager in which three files are selected.
class ShellSelectionTest : public BuiltinCommandsTest {
  protected:
    HWND Select(std::initializer_list<const wchar_t*> names) {
        std::wstring command = L"\"" + HelperPath(L"shell_view.exe") + L"\"";
        for (const wchar_t* const name : names) {
            WriteBytes(folder.File(name), kPng);
            command += L" \"" + folder.File(name) + L"\"";
        }
        view.emplace(command);
        const HWND window = view->WaitForVisibleWindow(L"VerbatixTestShellView");
        WaitFor([&] { return GetForegroundWindow() == window; });
        return window;
    }

    static std::wstring Text() {
        std::wstring text = L"(none)";
        ClipboardGetText(text);
        return text;
    }

    Folder folder;
    std::optional<Process> view;
};

TEST_F(ShellSelectionTest, PathsArriveLineByLineInEveryForm) {
    const HWND window = Select({L"one.png", L"zwei \x00E4\x4E2D.png", L"three"});
    const std::wstring paths = folder.File(L"one.png") + L"\r\n" + folder.File(L"zwei \x00E4\x4E2D.png") +
                               L"\r\n" + folder.File(L"three") + L"\r\n";
    for (const wchar_t* const command :
         {L"PathToClipboard", L"PathToClipboard+", L"PathToClipboardSlash", L"PathToClipboardSlash+"}) {
        pathQuote = L"'";  // left by whoever
        EXPECT_EQ(RunBuiltinCommand(command, window), 1);
        EXPECT_EQ(Text(), paths) << command;
        EXPECT_TRUE(std::exchange(keepClipboardOnce, false));
    }
}

TEST_F(ShellSelectionTest, WithoutAShellSelectionThePathsAreAnEmptyText) {
    const Process target(L"\"" + HelperPath(L"target_window.exe") + L"\"");
    const HWND window = target.WaitForVisibleWindow(L"VerbatixTestTarget");
    RunBuiltinCommand(L"PathToClipboard", window);
    EXPECT_EQ(Text(), L"");
    EXPECT_TRUE(keepClipboardOnce);
}

TEST_F(ShellSelectionTest, AnImageFileArrivesAsPicture) {
    const HWND window = Select({L"picture of it.png"});
    RunBuiltinCommand(L"ImgToClipboard", window);
    EXPECT_EQ(ReadForeign(RegisterClipboardFormatW(L"PNG")), kPng);
    EXPECT_EQ(ReadForeign(CF_DIB).size(), sizeof(BITMAPINFOHEADER) + 6 * sizeof(DWORD));
    EXPECT_TRUE(keepClipboardOnce);
}

TEST_F(ShellSelectionTest, WithoutOneTheClipboardIsEmptyAndFree) {
    RunBuiltinCommand(L"ImgToClipboard", nullptr);
    EXPECT_TRUE(ReadForeign().empty());
    EXPECT_FALSE(keepClipboardOnce);
}

}  // namespace
}  // namespace verbatix
