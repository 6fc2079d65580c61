// Expansion, generators and execution with the real clipboard and the selection of another program's edit
// control.
#include "paste/steps/expansion.h"

#include <clocale>
#include <vector>

#include "base/language.h"
#include "base/text.h"
#include "clipboard/html_clipboard.h"
#include "paste/executor.h"
#include "paste/selection_target.h"
#include "paste/steps/generators.h"
#include "paste/text/generated_texts.h"
#include "paste/text/placeholders.h"
#include "store/settings.h"
#include "support/foreign_clipboard.h"
#include "support/message_box.h"

namespace verbatix {
namespace {

using test::ClipboardText;

std::wstring Expand(std::wstring_view entryText) {
    std::wstring text(entryText);
    std::wstring result = ExpandPlaceholders(text, true, true);
    EXPECT_EQ(result, text);  // in place as well
    return result;
}

struct Expansion : test::SelectionTarget {
    Expansion() { std::setlocale(LC_ALL, ""); }
};

TEST_F(Expansion, OfTheSystemAndTheSelection) {
    wchar_t user[300] = L"";
    DWORD size = 300;
    GetUserNameW(user, &size);
    SYSTEMTIME now;
    GetLocalTime(&now);
    std::wstring text = L"%YYYY%%hh%";
    EXPECT_EQ(ExpandPlaceholders(text, true, false), Format(L"%d%%hh%%", now.wYear));
    Select(L"oNE é €");
    const DWORD sequence = GetClipboardSequenceNumber();
    EXPECT_EQ(Expand(L"50% %copy_text %user_name%%TAB%"), L"50% %copy_text " + std::wstring(user) + L"\t");
    EXPECT_EQ(GetClipboardSequenceNumber(), sequence) << "nothing is copied in vain";
    EXPECT_EQ(
        Expand(L"%copy_text%|%copy_text_escape%|%copy_text_uc%|%copy_text%|%copy_text_lc_ucFirstWord%"),
        L"oNE é €|ONE É &#x20ac;|ONE É €|oNE é €|One é &#x20ac;");
    EXPECT_EQ(StrokesOf('C'), 1);
    // The clipboard is read before the copy and its text, tokens and all, put in after it.
    Put(L"old %copy_text%%TAB%");
    EXPECT_EQ(Expand(L"%pptxt%-%copy_text%"), L"old %copy_text%%TAB%-oNE é €");
    std::wstring large;
    while (large.size() < 524288) large += L"line of a megabyte of text: ä\r\n";
    Select(large);
    EXPECT_TRUE(Expand(L"%copy_text%%copy_text_uc%") == large + UpperCase(large));
    SelectNothing();
    Put(L"old text");
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
    EXPECT_TRUE(Settles());  // the box had it
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
    EXPECT_EQ(ClipboardText(), L"a\r\nb\\n pastehtml:");
    EXPECT_FALSE(IsClipboardFormatAvailable(html));
    FinishForDelivery(Expand(L"pastehtml:<b>x</b>"));
    EXPECT_NE(test::ReadForeign(html).find("<!--StartFragment--><b>x</b><!--"), std::string::npos);
    FinishForDelivery(L"next");  // the request for HTML was for one delivery
    EXPECT_FALSE(IsClipboardFormatAvailable(html));
    EXPECT_EQ(Expand(L"pastehtml:"), L"");  // even without a percent sign
    FinishForDelivery({});
    EXPECT_EQ(ClipboardText(), L"next");
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
    Put(L"stale");
    EXPECT_EQ(RunLines(false, L"%cpy%!"),
              std::vector<std::wstring>{L"a b!"});  // the selection captured last
}

TEST_F(Expansion, ExecutionGivesBackWhatTheUserHadOrNothing) {
    settings.restoreOldClipboard = 1;
    Put(L"first");
    ExecuteEntry(L"a");
    EXPECT_TRUE(TargetShows(L"a"));
    EXPECT_TRUE(test::WaitFor([] {
        OnRestoreTimer();
        return ClipboardText() == L"first";
    }));
    Put(L"second");
    {
        const test::Process holder = test::HoldClipboard();
        ExecuteEntry(L"cannot be saved");
    }
    OnRestoreTimer();
    EXPECT_EQ(ClipboardText(), L"second");  // not "first"
    ASSERT_TRUE(test::PutForeign({}));
    ExecuteEntry(L"from an empty clipboard");
    EXPECT_TRUE(TargetShows(L"afrom an empty clipboard"));
    OnRestoreTimer();
    EXPECT_EQ(ClipboardText(), L"from an empty clipboard");  // not "first" either
    CapturedText = L"an earlier capture";
    Select(L"");
    ClearClipboard();
    OnCpyCopyTimer();
    EXPECT_EQ(CapturedText, L"");
}

TEST(GeneratedTexts, AreMadeOfTheSelection) {
    const std::pair<const wchar_t*, const wchar_t*> sources[] = {
        {L" \r\n Hi\t", L"CString str_Hi;{char w[]={'H','i','\\0'};str_Hi=w;} //Hi"},
        {L"CString abc=\"H\";", L"CString abc;{char w[]={'H','\\0'};abc=w;} //H"},
        // Blanks around the sign stay in name and value.
        {L"CString CString a=b=;;", L"CString a;{char w[]={'b','=',';','\\0'};a=w;} //b=;"},
        {L"ä & \té",
         L"CString str_ae_und__e;{char w[]={'ä',' ','&',' ','\t','é','\\0'};str_ae_und__e=w;} //ä & \té"},
        {L"öüÖÄÜß_",
         L"CString str_oeueOeAeUess_;{char w[]={'ö','ü','Ö','Ä','Ü','ß','_','\\0'};str_oeueOeAeUess_=w;} //"
         L"öüÖÄÜß_"},
        {L"a=b", L"CString str_a=b;{char w[]={'a','=','b','\\0'};str_a=b=w;} //a=b"},
        {L"CString a=\"\";", L""},
    };
    for (const auto& [selection, source] : sources)
        EXPECT_EQ(StringBuilderSource(selection), source) << selection;

    // Worked out apart: the draws are 2396403, 938935110, 1514070777, 2843819020, 3576732287, of which each
    // place swaps with the rest modulo 5: 3, 0, 2, 0, 2.
    EXPECT_EQ(ShuffledRows(L"a\r\nb\n\nc\rd\ne", 0), L"a\r\ncd\r\ne\r\nb\r\n\r\n");
    EXPECT_EQ(ShuffledRows(L"a\nb", 0), L"a\r\nb\r\n");  // 1, 0
    EXPECT_EQ(ShuffledRows(L"a\r\nb\n\nc\rd\ne\r\n", 0), ShuffledRows(L"a\r\nb\n\nc\rd\ne", 0));
    for (const wchar_t* one : {L"one\r", L"one\r\n", L"\n"}) EXPECT_EQ(ShuffledRows(one, 1), L"");

    EXPECT_EQ(HtmlPageName(L"My own page"), L"to_html_My_own_page.html");
    EXPECT_EQ(HtmlPageName(L"..\\a/b:c*?\"<>|\t\x01\r\né"), L"to_html_.._a_b_c__________é.html");
}

std::wstring opened;

int Generate(const wchar_t* entryText) {
    return TryGenerators(entryText, [](const std::wstring& path) { opened = path; });
}

using Generators = test::SelectionTarget;

TEST_F(Generators, PasteWhatTheyMakeAndWriteAPageAnew) {
    const wchar_t* const pasted[][3] = {
        {L"Hi", L"%mix_the_string%", L"CString str_Hi;{char w[]={'H','i','\\0'};str_Hi=w;} //Hi"},
        {L"a\r\na", L"%mix_al_rows%", L"a\r\na\r\n"},
    };
    for (const auto& [selection, text, made] : pasted) {
        Select(selection);
        EXPECT_EQ(Generate(text), 1);
        EXPECT_TRUE(TargetShows(made));
    }
    StrokesOf('V');
    Select(L"single");
    EXPECT_EQ(Generate(L"%mix_al_rows%"), 1);
    SelectNothing();
    EXPECT_EQ(Generate(L"%mix_the_string%"), 0);  // the old text was cleared away
    Select(L"x");
    EXPECT_EQ(Generate(L"%plain_text_to_tmp_html%"), 0);
    EXPECT_EQ(StrokesOf('V'), 0);

    SetLanguageTexts({{19, L"test page"}}, {});
    for (const std::wstring& text : {std::wstring(500, L'x'), std::wstring(L"<i>é €\r\nb")}) {
        Select(text);
        EXPECT_EQ(Generate(L"%plain_text_to_tmp_html%"), 1);
        EXPECT_TRUE(opened.ends_with(L"\\to_html_test_page.html")) << opened;
        EXPECT_EQ(test::ReadBytes(opened), test::Utf16File(L"<pre>" + text + L"</pre>"));
    }
    DeleteFileW(opened.c_str());
}

}  // namespace
}  // namespace verbatix
