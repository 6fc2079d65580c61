// Expansion and execution with the real clipboard and the selection of another program's edit control.
#include "paste/steps/expansion.h"

#include <clocale>
#include <vector>

#include "base/text.h"
#include "clipboard/html_clipboard.h"
#include "paste/executor.h"
#include "paste/selection_target.h"
#include "paste/text/placeholders.h"
#include "store/settings.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

std::wstring Expand(std::wstring_view entryText) {
    std::wstring text(entryText);
    std::wstring result = ExpandPlaceholders(text, true, true);
    EXPECT_EQ(result, text);  // in place as well
    return result;
}

struct Expansion : test::SelectionTarget {
    Expansion() { std::setlocale(LC_ALL, ""); }
};

TEST_F(Expansion, OfWhatTheSystemKnows) {
    Select(L"selected");
    const DWORD sequence = GetClipboardSequenceNumber();
    for (const wchar_t* text : {L"", L"50% %copy_text", L"%TAB", L"%COPY_TEXT%%foo%"})
        EXPECT_EQ(Expand(text), text);
    wchar_t user[300] = L"";
    wchar_t computer[300] = L"";
    DWORD size = 300;
    GetUserNameW(user, &size);
    size = 300;
    GetComputerNameW(computer, &size);
    ASSERT_STRNE(computer, L"");
    EXPECT_EQ(Expand(L"%user_name%@%computer_name%%TAB%"), std::wstring(user) + L"@" + computer + L"\t");
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::wstring text = L"%YYYY%%hh%";
    EXPECT_EQ(ExpandPlaceholders(text, false, false), L"%YYYY%%hh%");
    EXPECT_EQ(ExpandPlaceholders(text, true, false), Format(L"%d%%hh%%", now.wYear));
    EXPECT_EQ(StrokesOf('C'), 0);
    EXPECT_EQ(GetClipboardSequenceNumber(), sequence);
}

TEST_F(Expansion, OfTheSelection) {
    Select(L"oNE é €");
    EXPECT_EQ(
        Expand(L"%copy_text%|%copy_text_escape%|%copy_text_uc%|%copy_text%|%copy_text_lc_ucFirstWord%"),
        L"oNE é €|ONE É &#x20ac;|ONE É €|oNE é €|One é &#x20ac;");
    EXPECT_EQ(StrokesOf('C'), 1);
    // The clipboard is read before the copy and its text, tokens and all, put in after it.
    ClipboardPutText(L"old %copy_text%%TAB%");
    EXPECT_EQ(Expand(L"%pptxt%-%copy_text%"), L"old %copy_text%%TAB%-oNE é €");
    std::wstring large;
    while (large.size() < 524288) large += L"line of a megabyte of text: ä\r\n";
    Select(large);
    EXPECT_TRUE(Expand(L"%copy_text%%copy_text_uc%") == large + UpperCase(large));
    SelectNothing();
    ClipboardPutText(L"old text");
    EXPECT_EQ(Expand(L"<%copy_text_uc%>"), L"<OLD TEXT>");
    const test::Process holder = test::HoldClipboard();
    EXPECT_EQ(Expand(L"<%copy_text%|%pptxt%>"), L"<|>");
}

TEST_F(Expansion, OfHtml) {
    HtmlClipboardPut(L"<b>grün</b>");
    {
        const test::MessageBoxAnswer box;
        EXPECT_EQ(Expand(L"[%phtml%]"), L"[<b>grün</b>]");
    }
    EXPECT_TRUE(IsInFront());  // the box had it
    EXPECT_EQ(StrokesOf('C'), 0);
    // No selection is copied, and what the clipboard held before must not pass for one.
    SelectNothing();
    const test::MessageBoxAnswer box;
    EXPECT_EQ(Expand(L"[%copy_html%]"), L"[]");
    EXPECT_EQ(StrokesOf('C'), 1);
}

TEST_F(Expansion, DeliveryIsTextOrHtml) {
    const UINT html = RegisterClipboardFormatW(L"HTML Format");
    FinishForDelivery(Expand(L"a\\nb\\%nc%n %nc%pastehtml:%nc%"));
    EXPECT_EQ(Clipboard(), L"a\r\nb\\n pastehtml:");
    EXPECT_FALSE(IsClipboardFormatAvailable(html));
    FinishForDelivery(Expand(L"pastehtml:<b>x</b>"));
    EXPECT_NE(test::ReadForeign(html).find("<!--StartFragment--><b>x</b><!--"), std::string::npos);
    FinishForDelivery(L"next");  // the request for HTML was for one delivery
    EXPECT_FALSE(IsClipboardFormatAvailable(html));
    EXPECT_EQ(Expand(L"pastehtml:"), L"");  // even without a percent sign
    FinishForDelivery({});
    EXPECT_EQ(Clipboard(), L"next");
    EXPECT_FALSE(PasteAsHtml);
}

std::vector<std::wstring> launched;

std::vector<std::wstring> RunLines(bool elevate, const wchar_t* text) {
    launched.clear();
    ExpandRunEntry(
        elevate, text,
        [](bool elevated, const std::wstring& line) {
            launched.push_back((elevated ? L"elevated " : L"") + line);
        },
        true, true);
    return launched;
}

TEST_F(Expansion, OfTheLinesOfARunEntry) {
    CapturedText = L"captured";
    Select(L" \ta b\t ");
    EXPECT_EQ(RunLines(true, L"x %cpy%\r\n\nq\n%TAB%\n?%cpy_txt_urlencode%\n%nc%\n%cpy%%pptxt%"),
              (std::vector<std::wstring>{L"elevated x a b\r", L"elevated ?a%20b",
                                         L"elevated " + std::wstring(kNoConversionMarker),
                                         // %pptxt% is the clipboard's text, with its blanks
                                         L"elevated a b \ta b\t "}));
    SelectNothing();
    ClipboardPutText(L"stale");
    EXPECT_EQ(RunLines(false, L"%cpy%!"),
              std::vector<std::wstring>{L"a b!"});  // the selection captured last
}

TEST_F(Expansion, ExecutionGivesBackWhatTheUserHadOrNothing) {
    settings.restoreOldClipboard = 1;
    ClipboardPutText(L"first");
    for (const wchar_t* shown : {L"a", L"ab", L"abc"}) {
        ExecuteEntry(shown + wcslen(shown) - 1);  // a restore is due all the while
        EXPECT_TRUE(TargetShows(shown));
    }
    EXPECT_EQ(Clipboard(), L"c");
    OnRestoreTimer();
    EXPECT_EQ(Clipboard(), L"first");
    OnRestoreTimer();  // once
    ClipboardPutText(L"second");
    OnRestoreTimer();
    EXPECT_EQ(Clipboard(), L"second");
    {
        const test::Process holder = test::HoldClipboard();
        ExecuteEntry(L"cannot be saved");
    }
    OnRestoreTimer();
    EXPECT_EQ(Clipboard(), L"second");  // not "first"
    ASSERT_TRUE(test::PutForeign({}));
    ExecuteEntry(L"from an empty clipboard");
    EXPECT_TRUE(TargetShows(L"abcfrom an empty clipboard"));
    OnRestoreTimer();
    EXPECT_EQ(Clipboard(), L"from an empty clipboard");  // not "first" either
    ExecuteEntry(L"sys:PathToClipboard");
    OnRestoreTimer();
    EXPECT_EQ(Clipboard(), L"");  // its result stays
    CapturedText = L"an earlier capture";
    Select(L"");
    ClearClipboard();
    OnCpyCopyTimer();
    EXPECT_EQ(CapturedText, L"");
}

}  // namespace
}  // namespace verbatix
