#include "paste/steps/generators.h"

#include <vector>

#include "base/language.h"
#include "paste/selection_target.h"
#include "paste/steps/expansion.h"
#include "paste/text/generated_texts.h"

namespace verbatix {
namespace {

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

std::vector<std::wstring> opened;

int Generate(const wchar_t* entryText) {
    return TryGenerators(entryText, [](const std::wstring& path) { opened.push_back(path); });
}

using Generators = test::SelectionTarget;

TEST_F(Generators, WriteAPageAnewAndOpenIt) {
    SetLanguageTexts({{19, L"test page"}}, {});
    Select(std::wstring(500, L'x'));
    EXPECT_EQ(Generate(L"%plain_text_to_tmp_html%"), 1);
    Select(L"<i>é €\r\nb");
    EXPECT_EQ(Generate(L"%plain_text_to_tmp_html%"), 1);
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_TRUE(opened[0] == opened[1] && opened[1].ends_with(L"\\to_html_test_page.html")) << opened[1];
    EXPECT_EQ(test::ReadBytes(opened[1]), test::Utf16File(L"<pre><i>é €\r\nb</pre>"));
    DeleteFileW(opened[1].c_str());
}

TEST_F(Generators, PasteWhatTheyMake) {
    Select(L"Hi");
    EXPECT_EQ(Generate(L"%mix_the_string%"), 1);
    EXPECT_TRUE(TargetShows(L"CString str_Hi;{char w[]={'H','i','\\0'};str_Hi=w;} //Hi"));
    Select(L"a\r\na");
    EXPECT_EQ(Generate(L"%mix_al_rows%"), 1);
    EXPECT_TRUE(TargetShows(L"a\r\na\r\n"));
}

TEST_F(Generators, PasteNothingWithoutUsableSelection) {
    Select(L"x");
    EXPECT_EQ(Generate(L"%plain_text_to_tmp_html%"), 0);
    Select(L"single");
    EXPECT_EQ(Generate(L"%mix_al_rows%"), 1);
    SelectNothing();
    EXPECT_EQ(Generate(L"%mix_the_string%"), 0);  // the old text was cleared away
    EXPECT_EQ(StrokesOf('V'), 0);
}

}  // namespace
}  // namespace verbatix
