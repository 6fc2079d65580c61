// Expansion with the real clipboard and the selection of another program's edit control.
#include "paste/expansion.h"

#include <clocale>
#include <vector>

#include "base/text.h"
#include "clipboard/clipboard_session.h"
#include "clipboard/html_clipboard.h"
#include "paste/placeholders.h"
#include "selection_target.h"

namespace verbatix {
namespace {

std::wstring Expand(std::wstring_view entryText) {
    std::wstring text(entryText);
    std::wstring result = ExpandPlaceholders(text, true, true);
    EXPECT_EQ(result, text);  // in place as well
    return result;
}

std::wstring ClipboardNow() {
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

struct Expansion : test::SelectionTarget {
    Expansion() { std::setlocale(LC_ALL, ""); }
};

TEST_F(Expansion, WholeFamilyFromOneCopyStroke) {
    Select(L"oNE é €");
    EXPECT_EQ(
        Expand(L"%copy_text%|%copy_text_escape%|%copy_text_uc%|%copy_text%|%copy_text_lc_ucFirstWord%"),
        L"oNE é €|ONE É &#x20ac;|ONE É €|oNE é €|One é &#x20ac;");
    EXPECT_EQ(StrokesOf('C'), 1);
}

TEST_F(Expansion, TextsWithoutTokensTouchNeitherKeyboardNorClipboard) {
    Select(L"selected");
    const DWORD sequence = GetClipboardSequenceNumber();
    EXPECT_EQ(Expand(L""), L"");
    EXPECT_EQ(Expand(L"50% %copy_text"), L"50% %copy_text");
    EXPECT_EQ(Expand(L"%TAB"), L"%TAB");
    EXPECT_EQ(Expand(L"%TAB%"), L"\t");
    EXPECT_EQ(Expand(L"%COPY_TEXT%%foo%"), L"%COPY_TEXT%%foo%");
    EXPECT_EQ(StrokesOf('C'), 0);
    EXPECT_EQ(GetClipboardSequenceNumber(), sequence);
}

TEST_F(Expansion, PreviousClipboardTextIsReadBeforeAndPutInAfterTheCopy) {
    Select(L"new");
    ClipboardPutText(L"old %copy_text%%TAB%");
    EXPECT_EQ(Expand(L"%pptxt%-%copy_text%-%pptxt%"), L"old %copy_text%%TAB%-new-old %copy_text%%TAB%");
}

TEST_F(Expansion, WithoutSelectionTheOldClipboardTextIsUsed) {
    Select(L"something");
    SelectNothing();
    EXPECT_EQ(Expand(L"<%copy_text_uc%>"), L"<OLD TEXT>");
}

TEST_F(Expansion, BusyClipboardGivesEmptyTexts) {
    Select(L"selected");
    test::MessageThread other;
    other.Run([&] { OpenClipboard(other.Window()); });
    EXPECT_EQ(Expand(L"<%copy_text%|%pptxt%>"), L"<|>");
    other.Run([] { CloseClipboard(); });
}

TEST_F(Expansion, LargeSelections) {
    std::wstring large;
    while (large.size() < 524288) large += L"line of a megabyte of text: ä\r\n";
    Select(large);
    const std::wstring result = Expand(L"%copy_text%%copy_text_uc%");
    EXPECT_TRUE(result == large + UpperCase(large)) << result.size();
}

TEST_F(Expansion, NamesAreTheSystems) {
    wchar_t user[300] = L"";
    wchar_t computer[300] = L"";
    DWORD size = 300;
    GetUserNameW(user, &size);
    size = 300;
    GetComputerNameW(computer, &size);
    ASSERT_STRNE(computer, L"");
    EXPECT_EQ(Expand(L"%user_name%@%computer_name%"), std::wstring(user) + L"@" + computer);
}

TEST_F(Expansion, DateCodesFollowTheirSettings) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_EQ(Expand(L"%YYYY%"), Format(L"%d", now.wYear));
    std::wstring text = L"%YYYY%%hh%";
    EXPECT_EQ(ExpandPlaceholders(text, false, false), L"%YYYY%%hh%");
    EXPECT_EQ(ExpandPlaceholders(text, true, false), Format(L"%d%%hh%%", now.wYear));
}

TEST_F(Expansion, HtmlOfClipboardAndSelection) {
    const test::MessageBoxCloser user;
    // The program's own window, which the system would rather activate after a box of its thread.
    const HWND own = CreateWindowExW(0, L"STATIC", L"own", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300,
                                     200, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(target);
    ASSERT_TRUE(test::WaitFor([this] { return GetForegroundWindow() == target; }));
    HtmlClipboardPut(L"<b>grün</b>");
    EXPECT_EQ(Expand(L"[%phtml%]"), L"[<b>grün</b>]");
    EXPECT_TRUE(test::WaitFor([this] { return GetForegroundWindow() == target; }));  // the box had it
    EXPECT_EQ(StrokesOf('C'), 0);
    // No selection is copied, and what the clipboard held before must not pass for one.
    Select(L"plain");
    SelectNothing();
    EXPECT_EQ(Expand(L"[%copy_html%]"), L"[]");
    EXPECT_EQ(StrokesOf('C'), 1);
    DestroyWindow(own);
}

TEST_F(Expansion, DeliveryAsTextOrHtml) {
    const UINT html = RegisterClipboardFormatW(L"HTML Format");
    FinishForDelivery(Expand(L"a\\nb\\%nc%n %nc%pastehtml:%nc%"));
    EXPECT_EQ(ClipboardNow(), L"a\r\nb\\n pastehtml:");
    EXPECT_FALSE(IsClipboardFormatAvailable(html));

    FinishForDelivery(Expand(L"pastehtml:<b>x</b>"));
    EXPECT_TRUE(IsClipboardFormatAvailable(html));
    std::wstring fragment;
    std::wstring raw;
    {
        const test::MessageBoxCloser user;
        HtmlClipboardGet(fragment, raw);
    }
    EXPECT_EQ(fragment, L"<b>x</b>");

    FinishForDelivery(L"next");  // the request for HTML was for one delivery
    EXPECT_FALSE(IsClipboardFormatAvailable(html));

    EXPECT_EQ(Expand(L"pastehtml:"), L"");  // even without a percent sign
    FinishForDelivery({});
    EXPECT_EQ(ClipboardNow(), L"next");
    EXPECT_FALSE(PasteAsHtml);
}

std::vector<std::wstring> launched;

void Launch(bool elevate, const std::wstring& line) {
    launched.push_back((elevate ? L"elevated " : L"") + line);
}

TEST_F(Expansion, RunEntryHandsEachExpandedLineToTheLauncher) {
    launched.clear();
    CapturedText = L"captured";
    Select(L" \ta b\t ");
    EXPECT_EQ(ExpandRunEntry(true, L"x %cpy%\r\n\nq\n%TAB%\n?%cpy_txt_urlencode%\n%nc%\n%cpy%%pptxt%",
                             Launch, true, true),
              0);
    EXPECT_EQ(launched, (std::vector<std::wstring>{L"elevated x a b\r", L"elevated ?a%20b",
                                                   L"elevated " + std::wstring(kNoConversionMarker),
                                                   // %pptxt% is the clipboard's text, with its blanks
                                                   L"elevated a b \ta b\t "}));
    EXPECT_EQ(CapturedText, L"a b");

    launched.clear();
    SelectNothing();
    ClipboardPutText(L"stale");
    ExpandRunEntry(false, L"%cpy%!", Launch, true, true);
    EXPECT_EQ(launched, (std::vector<std::wstring>{L"a b!"}));  // the selection captured last
}

}  // namespace
}  // namespace verbatix
