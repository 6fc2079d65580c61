#include "paste/generators.h"

#include <algorithm>
#include <vector>

#include "base/language.h"
#include "base/text.h"
#include "paste/expansion.h"
#include "selection_target.h"

namespace verbatix {
namespace {

TEST(StringBuilderSource, NamesAndValues) {
    const struct {
        const wchar_t* selection;
        const wchar_t* source;
    } rows[] = {
        {L"Hi", L"CString str_Hi;{char w[]={'H','i','\\0'};str_Hi=w;} //Hi"},
        {L" \r\n Hi\t", L"CString str_Hi;{char w[]={'H','i','\\0'};str_Hi=w;} //Hi"},
        {L"CString abc=\"H\";", L"CString abc;{char w[]={'H','\\0'};abc=w;} //H"},
        // Blanks around the sign stay in name and value.
        {L"CString a = \"'\";", L"CString a ;{char w[]={' ',''','\\0'};a =w;} // '"},
        {L"CString CString a=b=;;", L"CString a;{char w[]={'b','=',';','\\0'};a=w;} //b=;"},
        {L"CString =x", L"CString str_x;{char w[]={'x','\\0'};str_x=w;} //x"},
        {L"ä & \té",
         L"CString str_ae_und__e;{char w[]={'ä',' ','&',' ','\t','é','\\0'};str_ae_und__e=w;} //ä & \té"},
        {L"a=b", L"CString str_a=b;{char w[]={'a','=','b','\\0'};str_a=b=w;} //a=b"},
        {L"CString a=\"\";", L""},
        {L" \t\r\n", L""},
        {L"", L""},
    };
    for (const auto& row : rows) EXPECT_EQ(StringBuilderSource(row.selection), row.source) << row.selection;
}

TEST(ShuffledRows, KeepEveryLineAndEndEachOne) {
    EXPECT_EQ(ShuffledRows(L"", 1), L"");
    EXPECT_EQ(ShuffledRows(L"one\r", 1), L"");
    // Worked by hand: seed 0 gives 2396403 for the first place, 1 modulo 2, and an even number for the
    // second.
    EXPECT_EQ(ShuffledRows(L"a\r\nb", 0), L"a\r\nb\r\n");
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        const std::wstring rows = ShuffledRows(L"a\r\nb\n\nc\rd", seed * 7919);
        std::vector<std::wstring_view> lines = Split(rows, L'\n');
        ASSERT_TRUE(rows.ends_with(L"\r\n"));
        lines.pop_back();
        std::sort(lines.begin(), lines.end());
        ASSERT_EQ(lines, (std::vector<std::wstring_view>{L"\r", L"a\r", L"b\r", L"cd\r"}));
    }
}

TEST(HtmlPage, IsUtf16WithMarkUpToTheFirstNul) {
    EXPECT_EQ(HtmlPageName(L"My own page"), L"to_html_My_own_page.html");
    EXPECT_EQ(HtmlPageBytes(std::wstring_view(L"<é\0x", 4)),
              std::string("\xff\xfe<\0p\0r\0e\0>\0<\0\xe9\0", 16));
    EXPECT_TRUE(HtmlPageBytes(L"a").ends_with(std::string("<\0/\0p\0r\0e\0>\0", 12)));
}

std::vector<std::wstring> opened;

void NoteOpened(const std::wstring& path) {
    opened.push_back(path);
}

struct Generators : test::SelectionTarget {
    Generators() { opened.clear(); }
};

TEST_F(Generators, StringBuilderReplacesTheSelection) {
    Select(L"CString abc=\"Hi\";");
    PasteAsHtml = true;  // left by an expansion; source code goes out as text all the same
    EXPECT_EQ(TryGenerators(L"x %mix_the_string% %mix_al_rows%", NoteOpened), 1);
    EXPECT_TRUE(TargetShows(L"CString abc;{char w[]={'H','i','\\0'};abc=w;} //Hi"))
        << test::WindowText(edit);
    EXPECT_FALSE(IsClipboardFormatAvailable(RegisterClipboardFormatW(L"HTML Format")));
}

TEST_F(Generators, RowsAreMixedInPlace) {
    Select(L"b\r\na");
    EXPECT_EQ(TryGenerators(L"%mix_al_rows%", NoteOpened), 1);
    EXPECT_TRUE(test::WaitFor([this] {
        const std::wstring text = test::WindowText(edit);
        return text == L"a\r\nb\r\n" || text == L"b\r\na\r\n";
    })) << test::WindowText(edit);
}

TEST_F(Generators, OneRowOrNoneIsHandledWithoutPasting) {
    Select(L"single");
    EXPECT_EQ(TryGenerators(L"%mix_al_rows%", NoteOpened), 1);
    EXPECT_EQ(StrokesOf('V'), 0);
}

TEST_F(Generators, HtmlPageIsWrittenAnewAndOpened) {
    SetLanguageTexts({{19, L"test page"}}, {});
    Select(std::wstring(500, L'x'));
    EXPECT_EQ(TryGenerators(L"%plain_text_to_tmp_html%", NoteOpened), 1);
    Select(L"<i>é €\r\nb");
    EXPECT_EQ(TryGenerators(L"%plain_text_to_tmp_html%", NoteOpened), 1);
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_EQ(opened[0], opened[1]);
    EXPECT_TRUE(opened[1].ends_with(L"\\to_html_test_page.html")) << opened[1];
    EXPECT_EQ(test::ReadBytes(opened[1]), test::Utf16File(L"<pre><i>é €\r\nb</pre>"));
    EXPECT_EQ(StrokesOf('V'), 0);
    DeleteFileW(opened[1].c_str());
}

TEST_F(Generators, NothingSelectedIsNotHandled) {
    SelectNothing();
    EXPECT_EQ(TryGenerators(L"%mix_the_string%", NoteOpened), 0);  // the old text was cleared away
    ClipboardPutText(L"x");
    EXPECT_EQ(TryGenerators(L"%plain_text_to_tmp_html%", NoteOpened), 0);
    EXPECT_EQ(TryGenerators(L"%MIX_AL_ROWS% mix_the_string", NoteOpened), 0);
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(StrokesOf('V'), 0);
}

}  // namespace
}  // namespace verbatix
