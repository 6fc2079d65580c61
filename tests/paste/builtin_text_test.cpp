// The built-in commands that move text between another program, the clipboard and the keyboard.
#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/saved_clipboard.h"
#include "paste/builtin_commands.h"
#include "paste/temporary_page.h"
#include "paste/type_text.h"
#include "support/desktop.h"
#include "support/folder.h"
#include "support/foreign_clipboard.h"
#include "support/keys.h"
#include "support/message_box.h"
#include "support/wait.h"

namespace verbatix {
namespace {

using namespace test;

class BuiltinTextTest : public testing::Test {
  protected:
    BuiltinTextTest() : target_(L"\"" + HelperPath(L"target_window.exe") + L"\"") {
        WaitForClipboard();
        window_ = target_.WaitForVisibleWindow(L"VerbatixTestTarget");
        WaitFor([&] { return GetForegroundWindow() == window_; });
        edit_ = GetDlgItem(window_, 1);
        keepClipboardOnce = false;
    }
    ~BuiltinTextTest() override { EXPECT_FALSE(AnyModifierDown()); }

    void Select(const wchar_t* text) const {
        SendMessageW(edit_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(edit_, EM_SETSEL, 0, -1);
    }

    // Whether the target's text becomes that.
    bool Becomes(const std::wstring& text) const {
        return WaitFor([&] { return WindowText(edit_) == text; }, 20000);
    }

    void Run(const std::wstring& command) const { EXPECT_EQ(RunBuiltinCommand(command, window_), 1); }

    Process target_;
    HWND window_;
    HWND edit_;
};

// The printable ASCII characters for which the keyboard layout names a key. Wine's layouts miss both
// brackets, which X names on the number pad first; Windows' layouts miss none.
std::wstring TypableCharacters() {
    std::wstring text;
    for (wchar_t c = L' '; c < 0x7F; ++c) {
        if (VkKeyScanW(c) != -1) text += c;
    }
    return text;
}

TEST_F(BuiltinTextTest, EveryPrintableCharacterIsTyped) {
    const std::wstring text = TypableCharacters();
    EXPECT_GE(text.size(), 93u);
    Run(L"Txt2Key:" + text);
    EXPECT_TRUE(Becomes(text)) << ToBytes(WindowText(edit_), CP_UTF8);
}

// The characters of other layouts' AltGr cannot be typed here: Wine learns what AltGr does from a real
// keyboard only. That the right Alt key goes down for them, and comes up again, can be seen.
TEST_F(BuiltinTextTest, AltGrIsTheRightAltKey) {
    const auto isDown = [](int key) { return GetAsyncKeyState(key) < 0; };
    std::vector<std::pair<bool, bool>> rightAndLeft;
    for (const KeyStroke stroke : StrokesForKeyScan(0x0600 | VK_F24)) {
        SendTagged(stroke);
        rightAndLeft.emplace_back(isDown(VK_RMENU), isDown(VK_LMENU));
    }
    EXPECT_EQ(rightAndLeft, (std::vector<std::pair<bool, bool>>{
                                {true, false}, {true, false}, {true, false}, {false, false}}));
}

TEST_F(BuiltinTextTest, TheTextBeginsAfterTheFirstColon) {
    Run(L"Txt2Key and so on:a:b");
    EXPECT_TRUE(Becomes(L"a:b")) << ToBytes(WindowText(edit_), CP_UTF8);
}

TEST_F(BuiltinTextTest, TheClipboardsTextIsTyped) {
    ClipboardPutText(L"From the Clipboard");
    Run(L"ClTxt2Key");
    EXPECT_TRUE(Becomes(L"From the Clipboard"));
}

TEST_F(BuiltinTextTest, ATextOfTheLargestLengthIsTypedWhole) {
    const std::wstring text(1024, L'x');
    Run(L"Txt2Key:" + text);
    EXPECT_TRUE(Becomes(text)) << WindowText(edit_).size();
}

TEST_F(BuiltinTextTest, CharactersWithoutKeyDoNoHarm) {
    Run(L"Txt2Key:\x4E2D\xD83D\xDE00");
    Run(L"Txt2Key:k");
    EXPECT_TRUE(WaitFor([&] { return WindowText(edit_).ends_with(L"k"); }));
}

TEST_F(BuiltinTextTest, NoTextAndTooMuchTextAreToldAndNotTyped) {
    ClearClipboard();
    const std::pair<std::wstring, const wchar_t*> cases[] = {
        {L"Txt2Key", L"Txt2Key\n\n''"},
        {L"Txt2Key:", L"Txt2Key\n\n''"},
        {L"ClTxt2Key:x", L"Txt2Key\n\n''"},
        {L"Txt2Key:" + std::wstring(1025, L'x'), L"Txt2Key Error\nmax len = 1024\n"},
        {L"Txt2Key:" + std::wstring(100000, L'x'), L"Txt2Key Error\nmax len = 1024\n"},
    };
    for (const auto& [command, text] : cases) {
        MessageBoxAnswer box;
        Run(command);
        ASSERT_TRUE(box.Seen()) << command.size();
        EXPECT_EQ(box.Text(), text);
        EXPECT_EQ(box.Caption(), L"Error");
    }
    EXPECT_EQ(WindowText(edit_), L"");
}

TEST_F(BuiltinTextTest, ASelectionIsShownAndComesBackAsPlainText) {
    // What the target copies is told from what another program put there: that would have HTML.
    Select(L"<b>bold</b>");
    MessageBoxAnswer box;
    Run(L"CopyHtmlCode2TxtPaste");
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Text(), L"<b>bold</b>");
    EXPECT_EQ(box.Caption(), L"");
    EXPECT_FALSE(box.HasOwner());
    EXPECT_TRUE(Becomes(L"<b>bold</b>"));
    EXPECT_FALSE(keepClipboardOnce);
}

TEST_F(BuiltinTextTest, FormatsOtherThanTextGo) {
    const UINT html = RegisterClipboardFormatW(L"HTML Format");
    ASSERT_TRUE(PutForeign({{html, "<b>bold</b>"}, {CF_UNICODETEXT, WideBytes(L"bold")}}));
    MessageBoxAnswer box;
    Run(L"CopyHtmlCode2TxtPaste");  // nothing is selected in the target, so the clipboard stays until then
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(ReadForeign(html), "(absent)");
    EXPECT_TRUE(Becomes(L"bold"));
}

TEST_F(BuiltinTextTest, AHugeTextIsShownInPart) {
    ClipboardPutText(std::wstring(5'000'000, L'h'));
    MessageBoxAnswer box;
    Run(L"CopyHtmlCode2TxtPaste");
    ASSERT_TRUE(box.Seen());
    EXPECT_EQ(box.Text(), std::wstring(10'000, L'h'));
}

TEST(PageFromText, WritesLineEndsAsBreaksAndNothingElse) {
    EXPECT_EQ(PageFromText(L"a\r\nb\rc\nd\n\re\r\r\n<i>&amp;</i>\\n"),
              L"a<br>b<br>c<br>d<br><br>e<br><br><i>&amp;</i>\\n");
    EXPECT_EQ(PageFromText({}), L"");
}

std::wstring openedPage;

class TemporaryPageTest : public BuiltinTextTest {
  protected:
    TemporaryPageTest() {
        openedPage.clear();
        openPage = [](const std::wstring& path) { openedPage = path; };
        SetEnvironmentVariableW(L"TMP", folder_.Path().c_str());
    }

    Folder folder_;
};

TEST_F(TemporaryPageTest, IsWrittenAnewAndOpened) {
    const std::wstring path = folder_.File(L"Verbatix_.html");
    WriteBytes(path, std::string(10000, 'o'));
    Select(L"<h1>A\x00E4</h1>\r\nB");
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_TRUE(EqualsIgnoreCase(openedPage, path)) << ToBytes(openedPage, CP_UTF8);
    EXPECT_EQ(ReadBytes(path), Utf16File(L"<h1>A\x00E4</h1><br>B"));
    EXPECT_FALSE(keepClipboardOnce);
}

TEST_F(TemporaryPageTest, OfAnEmptySelectionIsEmpty) {
    ClearClipboard();
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_FALSE(openedPage.empty());
    EXPECT_EQ(ReadBytes(folder_.File(L"Verbatix_.html")), "\xFF\xFE");
}

TEST_F(TemporaryPageTest, ThatCannotBeWrittenIsNotOpened) {
    CreateDirectoryW(folder_.File(L"Verbatix_.html").c_str(), nullptr);
    ClipboardPutText(L"x");
    Run(L"CopyText2TmpHtmlPageAndOpen");
    EXPECT_TRUE(openedPage.empty());
}

}  // namespace
}  // namespace verbatix
