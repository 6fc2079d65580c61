// The built-in commands against another program's window, a file manager and the real clipboard.
#include "paste/builtin/builtin_commands.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "clipboard/shell_paths.h"
#include "hotkeys/keyboard_hook.h"
#include "image_samples.h"
#include "paste/selection_target.h"
#include "paste/steps/temporary_page.h"
#include "support/foreign_clipboard.h"
#include "support/import_patch.h"
#include "support/keys.h"
#include "support/message_box.h"

extern "C" {
extern decltype(&MsgWaitForMultipleObjects) __imp_MsgWaitForMultipleObjects;
}

namespace verbatix {
namespace {

using namespace test;

class BuiltinCommandsTest : public SelectionTarget {
  protected:
    void Run(const std::wstring& command) const { EXPECT_EQ(RunBuiltinCommand(command, target), 1); }
    void ExpectBox(const std::wstring& command, const std::wstring& text, const wchar_t* caption) const {
        MessageBoxAnswer box;
        Run(command);
        ASSERT_TRUE(box.Seen()) << command.substr(0, 40);
        EXPECT_EQ(box.Text(), text);
        EXPECT_EQ(box.Caption(), caption);
        EXPECT_TRUE(Settles()) << command.substr(0, 40);
    }
};

// A window that takes every message away from the system and remembers the system commands and the rest.
class Recorder {
  public:
    explicit Recorder(HWND parent = nullptr) : window_(MakeWindow(Procedure, this, parent)) {}
    ~Recorder() { DestroyWindow(window_); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    HWND Window() const { return window_; }

    std::vector<std::pair<WPARAM, LPARAM>> commands;
    int asked = 0;             // for its shell browser
    LRESULT shellBrowser = 0;  // the answer

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        auto* const self = reinterpret_cast<Recorder*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message == WM_SYSCOMMAND) return self->commands.emplace_back(wParam, lParam), 0;
        if (message == WM_USER + 7) return ++self->asked, self->shellBrowser;
        return DefWindowProcW(window, message, wParam, lParam);
    }

    const HWND window_;
};

TEST_F(BuiltinCommandsTest, MonitorAndScreenSaverArePostedToEveryWindow) {
    const Recorder first;
    const Recorder second;
    keyboardHook.trigger.claims.Claim('Q', GetTickCount64());
    const ULONGLONG start = GetTickCount64();
    Run(L"MonitorOff");
    EXPECT_GE(GetTickCount64() - start, 900u) << "would be on again when the key comes up";
    keyboardHook.trigger.claims.Clear();
    EXPECT_TRUE(first.commands.empty());  // posted, not sent
    Run(L"MonitorOn and more");
    Run(L"ScreensaverOn");
    const std::vector<std::pair<WPARAM, LPARAM>> expected = {{0xF170, 2}, {0xF170, -1}, {0xF140, -1}};
    EXPECT_TRUE(WaitFor([&] { return first.commands == expected && second.commands == expected; }));
}

TEST_F(BuiltinCommandsTest, ShellBrowserAsksFourGenerations) {
    for (const int answering : {0, 3, 4, -1}) {       // 0 is the target itself
        std::vector<std::unique_ptr<Recorder>> line;  // the oldest first
        line.reserve(5);
        for (int i = 0; i < 5; ++i) {
            line.push_back(std::make_unique<Recorder>(line.empty() ? nullptr : line.back()->Window()));
        }
        std::reverse(line.begin(), line.end());
        if (answering >= 0) line[static_cast<std::size_t>(answering)]->shellBrowser = 0x1234;
        MessageBoxAnswer box;
        RunBuiltinCommand(L"ShellBrowser", line.front()->Window());
        ASSERT_TRUE(box.Seen());
        EXPECT_EQ(box.Text(), answering == 0 || answering == 3 ? L"2" : L"Noshel") << answering;
        EXPECT_FALSE(box.HasOwner());
        // No further than the first answer, and never further than the great-grandparent.
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(line[static_cast<std::size_t>(i)]->asked, i < 4 && (answering < 0 || i <= answering));
        }
        while (!line.empty()) line.erase(line.begin());
    }
    MessageBoxAnswer box;
    RunBuiltinCommand(L"ShellBrowser", nullptr);
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Text(), L"Noshel");
}

TEST_F(BuiltinCommandsTest, PathsAndPictureOfASelectionInTheShell) {
    Run(L"PathToClipboard");  // no shell selection
    EXPECT_EQ(ClipboardText(), L"");
    EXPECT_TRUE(std::exchange(keepClipboardOnce, false));
    RunBuiltinCommand(L"ImgToClipboard", nullptr);
    EXPECT_TRUE(ReadForeign().empty());
    EXPECT_FALSE(keepClipboardOnce);

    const Folder folder;
    std::wstring paths;
    std::wstring command = L"\"" + HelperPath(L"shell_view.exe") + L"\"";
    for (const wchar_t* const name : {L"one.png", L"zwei \x00E4\x4E2D.png", L"three"}) {
        WriteBytes(folder.File(name), kPng);
        command += L" \"" + folder.File(name) + L"\"";
        paths += folder.File(name) + L"\r\n";
    }
    const Process view(command);
    const HWND window = view.WaitForVisibleWindow(L"VerbatixTestShellView");
    ASSERT_TRUE(SettlesInFront(window));
    pathQuote = L"'";                                     // left by whoever
    RunBuiltinCommand(L"PathToClipboardSlash+", window);  // the plain form takes them all
    EXPECT_EQ(ClipboardText(), paths);
    EXPECT_TRUE(std::exchange(keepClipboardOnce, false));
    RunBuiltinCommand(L"ImgToClipboard", window);
    EXPECT_EQ(ReadForeign(RegisterClipboardFormatW(L"PNG")), kPng);
    EXPECT_TRUE(keepClipboardOnce);
}

int waits;

// Windows waits for 16 ms where nobody has asked for a finer clock.
DWORD WINAPI CountWait(DWORD, const HANDLE*, BOOL, DWORD, DWORD) {
    Sleep(1);
    return ++waits, WAIT_TIMEOUT;
}

TEST_F(BuiltinCommandsTest, TextIsTyped) {
    std::wstring printable;  // Wine's layouts miss both brackets, Windows' layouts miss none
    for (wchar_t c = L' '; c < 0x7F; ++c) {
        if (VkKeyScanW(c) != -1) printable += c;
    }
    EXPECT_GE(printable.size(), 93u);
    Put(L"From the Clipboard");
    const std::pair<std::wstring, std::wstring> rows[] = {
        {L"Txt2Key:" + printable, printable},
        {L"Txt2Key and ClTxt2Key:a:b", L"a:b"},
        {L"ClTxt2Key", L"From the Clipboard"},
    };
    for (const auto& [command, text] : rows) {
        Select(L"");
        Run(command);
        EXPECT_TRUE(TargetShows(text)) << ToBytes(WindowText(edit), CP_UTF8);
    }
    const auto isCapsLockOn = [] { return (GetKeyState(VK_CAPITAL) & 1) != 0; };
    PlayStroke({}, VK_CAPITAL);
    EXPECT_TRUE(WaitFor(isCapsLockOn));
    Select(L"");
    Run(L"Txt2Key:aBc");
    EXPECT_TRUE(TargetShows(L"aBc")) << ToBytes(WindowText(edit), CP_UTF8);
    EXPECT_TRUE(isCapsLockOn());
    PlayStroke({}, VK_CAPITAL);
    EXPECT_TRUE(WaitFor([&] { return !isCapsLockOn(); }));
    Select(L"");
    Run(L"Txt2Key:\x4E2D\xD83D\xDE00");  // without a key: no harm
    const std::wstring longest(1024, L'x');
    waits = 0;
    const ImportPatch patch(__imp_MsgWaitForMultipleObjects, CountWait);
    Run(L"Txt2Key:" + longest);
    EXPECT_LT(waits, 10) << "one a character takes long";
    EXPECT_TRUE(TargetShows(longest));
    EXPECT_FALSE(AnyModifierDown());
}

TEST_F(BuiltinCommandsTest, WhatCannotBeDoneIsTold) {
    ClearClipboard();
    for (const std::wstring text : {L"", L" MonitorOff", L"monitoroff", L"Monitor", L"SwitchPowerOptions"})
        ExpectBox(text, L"unknown command:\n" + text, L"x");
    for (const wchar_t* const command : {L"Txt2Key", L"Txt2Key:", L"ClTxt2Key:x"})
        ExpectBox(command, L"Txt2Key\n\n''", L"Error");
    for (const std::size_t length : {1025u, 100000u}) {
        ExpectBox(L"Txt2Key:" + std::wstring(length, L'x'), L"Txt2Key Error\nmax len = 1024\n", L"Error");
    }
    EXPECT_EQ(WindowText(edit), L"");
    EXPECT_FALSE(keepClipboardOnce);
}

TEST_F(BuiltinCommandsTest, ASelectionIsShownAndComesBackAsPlainText) {
    Select(L"<b>bold</b>");
    ExpectBox(L"CopyHtmlCode2TxtPaste", L"<b>bold</b>", L"");
    // In the foreground again when the stroke came: what was selected is replaced by the same.
    EXPECT_TRUE(WaitFor([&] { return SendMessageW(edit, EM_GETSEL, 0, 0) == MAKELRESULT(11, 11); }));
    EXPECT_TRUE(TargetShows(L"<b>bold</b>"));
    // Nothing is selected, so what another program put there stays until then: HTML as well.
    Select(L"");
    const UINT html = RegisterClipboardFormatW(L"HTML Format");
    ASSERT_TRUE(PutForeign({{html, "<b>bold</b>"}, {CF_UNICODETEXT, WideBytes(L"bold")}}));
    ExpectBox(L"CopyHtmlCode2TxtPaste", L"bold", L"");
    EXPECT_EQ(ReadForeign(html), "(absent)");
    EXPECT_TRUE(TargetShows(L"bold"));
    SelectNothing();
    Put(std::wstring(10'001, L'h'));
    ExpectBox(L"CopyHtmlCode2TxtPaste", std::wstring(10'000, L'h'), L"");
    EXPECT_FALSE(keepClipboardOnce);
}

std::wstring openedPage;

TEST_F(BuiltinCommandsTest, ASelectionBecomesAPage) {
    EXPECT_EQ(PageFromText(L"a\r\nb\rc\nd\n\re\r\r\n<i>&amp;</i>\\n"),
              L"a<br>b<br>c<br>d<br><br>e<br><br><i>&amp;</i>\\n");
    const Folder folder;
    wchar_t temporary[MAX_PATH] = {};
    GetEnvironmentVariableW(L"TMP", temporary, MAX_PATH);
    SetEnvironmentVariableW(L"TMP", folder.Path().c_str());
    openPage = [](const std::wstring& path) { openedPage = path; };
    const std::wstring path = folder.File(L"Verbatix_.html");
    WriteBytes(path, std::string(10000, 'o'));
    Select(L"<h1>A\x00E4</h1>\r\nB");
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_TRUE(EqualsIgnoreCase(openedPage, path)) << ToBytes(openedPage, CP_UTF8);
    EXPECT_EQ(ReadBytes(path), Utf16File(L"<h1>A\x00E4</h1><br>B"));
    SelectNothing();
    ClearClipboard();
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_EQ(ReadBytes(path), "\xFF\xFE");
    // A page that cannot be written is not opened.
    DeleteFileW(path.c_str());
    CreateDirectoryW(path.c_str(), nullptr);
    openedPage.clear();
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_TRUE(openedPage.empty());
    SetEnvironmentVariableW(L"TMP", temporary);
}

}  // namespace
}  // namespace verbatix
