// What the preview shows, and that a paste gives the same.
#include "ui/editor/preview.h"

#include "app/language_archive.h"
#include "paste/executor.h"
#include "paste/selection_target.h"

namespace verbatix {
namespace {

PreviewSamples Samples() {
    PreviewSamples samples;
    samples.facts.userName = L"Ann";
    samples.facts.dates.now = {2026, 3, 2, 31, 9, 0, 0, 0};
    samples.facts.dates.dateQuestion = L"[date?]";
    samples.selection = L"some Text";
    samples.selectionHtml = L"[selection as HTML]";
    samples.clipboardText = L"[clipboard]";
    samples.clipboardHtml = L"[HTML]";
    return samples;
}

TEST(Preview, TellsWhatEveryKindOfEntryDoes) {
    ASSERT_TRUE(LoadLanguageArchive(1));
    SetEnvironmentVariableW(L"VERBATIX_PLACE", L"C:\\x y");
    const std::pair<const wchar_t*, const wchar_t*> rows[] = {
        {L"", L""},
        {L"a\\nb%TAB%c\\%nc%n", L"a\u00b6\r\nb\u2192\tc\\n"},
        {L"100 % of 5 %, %foo%", L"100 % of 5 %, %foo%"},
        {L"%user_name% %DD%.%MM%.%YYYY% %d+1%%DD%.", L"Ann 31.03.2026 01."},
        {L"%C%%DD% %pptxt% %phtml% %copy_html%", L"[date?]31 [clipboard] [HTML] [selection as HTML]"},
        {L"%copy_text_uc%, %uc%%copy_text%", L"SOME TEXT, some Text"},
        {L"pastehtml:<b>%hh%</b>", L"[as HTML]<b>09</b>"},
        {L"a%send_tab%b%sleep_500%%send_enter%", L"a[Tab]b[wait 0.5 s][Enter]"},
        {L"a%sleep_500%", L"a%sleep_500%"},
        {L"x%mix_the_string%",
         L"CString str_some_Text;{char w[]={'s','o','m','e',' ','T','e','x','t',"
         L"'\\0'};str_some_Text=w;} //some Text"},
        {L"%mix_al_rows%", L"Lines in random order"},
        {L"charmap:a,,b\\n,%DD%", L"Menu of characters: a  b\\n  %DD%"},
        {L"copy_slot:3", L"Keeps the selection in slot 3"},
        {L"save_slot: 3", L"Keeps the clipboard in slot 3"},
        {L"paste_slot:1,9", L"Pastes slot 1\r\nPastes slot 9"},
        {L"paste_slot:", L"Pastes nothing yet. Add the numbers of slots, 1 to 9."},
        {L"replace:\\n=>x\\na=>b\\nc%09=>",
         L"Replaces \"a\" by \"b\" in the selection\r\nTakes \"c\u2192\t\" out of the selection"},
        {L"replace:", L"Replaces nothing yet. Write old=>new on a new line."},
        {L"run:%VERBATIX_PLACE%\\a.exe %cpy%", L"Starts C:\\x y\\a.exe some Text"},
        {L"run: ", L"Starts nothing yet. Add what to start, such as C:\\Windows\\notepad.exe"},
        {L"runa:a.exe %DD%\\n\\nhttp://x/?%cpy_txt_urlencode%",
         L"Starts with administrator rights: a.exe 31\r\n"
         L"Starts with administrator rights: http://x/?some%20Text"},
        {L"cpy:\"a b\" -x %cpy%", L"Copies the selection and starts \"a b\" -x some Text"},
        {L"img: C:\\%nc%new.png", L"Pastes the picture C:\\new.png"},
        {L"sys:MonitorOff", L"Switch the screen off"},
        {L"sys:Txt2Key:abc", L"Type the text that follows: abc"},
        {L"sys:Monitor", L"There is no command of this name: Monitor"},
    };
    for (const auto& [text, shown] : rows) {
        EXPECT_EQ(PreviewText(PreviewPieces(text, Samples())), shown) << ::testing::PrintToString(text);
    }
    EXPECT_LT(PreviewText(PreviewPieces(std::wstring(100000, L'x'), Samples())).size(), 8100U);
}

struct PreviewAndPaste : test::SelectionTarget {};

TEST_F(PreviewAndPaste, AreTheSameText) {
    ASSERT_TRUE(LoadLanguageArchive(1));
    const wchar_t* const texts[] = {
        L"plain, 5 % of 100 %, \\%nc%n and\\nmore",
        L"%user_name%@%computer_name%%TAB%%DDDD% %LDF% %uc%%MMMM%%dc% %CW%",
        L"%qld%%DD%.%MM%. %mfwd%%DDD% %addd+40%%YYYY%-%MM%-%DD% %foo%%DD",
        L"%no_time_fun%%DD% x%no_time_fun%",
        L"%copy_text%|%copy_text_lc%|%copy_text_escape%|%copy_text_ucFirstAllWords%|%pptxt%",
        L"%copy_text_lc_ucFirstWord% %pptxt%%nc%%pptxt%",
        L"%mix_the_string% for nothing",
        L"a %sleep_50% pause that is none",
    };
    for (const wchar_t* const text : texts) {
        PreviewSamples samples = CurrentSamples(true, true);
        samples.clipboardText = L"what was %DD% copied";
        samples.selection = L"sOME wörds €";
        ClipboardPutText(samples.clipboardText);
        Select(samples.selection);
        executorClient.pressWindow = target;
        ExecuteEntry(text);
        std::wstring pasted;
        for (const PreviewPiece& piece : PreviewPieces(text, samples)) {
            EXPECT_EQ(piece.kind, PreviewKind::kPasted);
            pasted += piece.text;
        }
        EXPECT_TRUE(TargetShows(pasted))
            << ::testing::PrintToString(text) << ::testing::PrintToString(pasted)
            << ::testing::PrintToString(test::WindowText(edit));
    }
}

}  // namespace
}  // namespace verbatix
