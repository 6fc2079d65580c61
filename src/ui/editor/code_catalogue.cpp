#include "ui/editor/code_catalogue.h"

#include <iterator>
#include <span>
#include <string_view>

#include "base/language.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/steps/generators.h"
#include "paste/steps/key_tokens.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/date_codes.h"
#include "paste/text/placeholders.h"

namespace verbatix {

namespace {

struct Meaning {
    std::wstring_view token;
    int text;
    int keywords;  // 0: none
};

constexpr Meaning kMeanings[] = {
    {L"%MMMM%", text::kMeansMonth, text::kFindMonth},
    {L"%MMM%", text::kMeansShortMonth, text::kFindMonth},
    {L"%MMMM_UC%", text::kMeansMonthCapitals, text::kFindMonth},
    {L"%MMM_UC%", text::kMeansShortMonthCapitals, text::kFindMonth},
    {L"%MM%", text::kMeansMonthTwoDigits, text::kFindMonth},
    {L"%M%", text::kMeansMonthNumber, text::kFindMonth},
    {L"%DDDD%", text::kMeansDayName, text::kFindDay},
    {L"%DDD%", text::kMeansShortDayName, text::kFindDay},
    {L"%DDDD_UC%", text::kMeansDayNameCapitals, text::kFindDay},
    {L"%DDD_UC%", text::kMeansShortDayNameCapitals, text::kFindDay},
    {L"%DD%", text::kMeansDayTwoDigits, text::kFindDay},
    {L"%D%", text::kMeansDayNumber, text::kFindDay},
    {L"%YYYY%", text::kMeansYear, text::kFindYear},
    {L"%YY%", text::kMeansShortYear, text::kFindYear},
    {L"%LTF%", text::kMeansTimeOfWindows, text::kFindTime},
    {L"%LDF%", text::kMeansDateOfWindows, text::kFindDate},
    {L"%LTF_UC%", text::kMeansTimeInCapitals, text::kFindTime},
    {L"%LDF_UC%", text::kMeansDateInCapitals, text::kFindDate},
    {L"%LDF_LC%", text::kMeansDateInCapitals, text::kFindDate},
    {L"%CW%", text::kMeansWeek, text::kFindWeek},
    {L"%CWL%", text::kMeansWeekTwoDigits, text::kFindWeek},
    {L"%hh%", text::kMeansHourTwoDigits, text::kFindTime},
    {L"%mm%", text::kMeansMinuteTwoDigits, text::kFindTime},
    {L"%ss%", text::kMeansSecondTwoDigits, text::kFindTime},
    {L"%h1%", text::kMeansHour, text::kFindTime},
    {L"%m1%", text::kMeansMinute, text::kFindTime},
    {L"%s1%", text::kMeansSecond, text::kFindTime},
    {L"%TAB%", text::kMeansTab, text::kFindTab},
    {L"%nc%", text::kMeansApart, 0},
    {L"%user_name%", text::kMeansUserName, text::kFindName},
    {L"%computer_name%", text::kMeansComputerName, text::kFindName},
    {L"%phtml%", text::kMeansClipboardHtml, text::kFindClipboard},
    {L"%copy_text%", text::kMeansSelection, text::kFindSelection},
    {L"%copy_text_uc%", text::kMeansUpperCase, text::kFindSelectionCase},
    {L"%copy_text_lc%", text::kMeansLowerCase, text::kFindSelectionCase},
    {L"%copy_text_escape%", text::kMeansHtmlCodes, text::kFindSelection},
    {L"%copy_text_ucFirstWord%", text::kMeansFirstCapital, text::kFindSelectionCase},
    {L"%copy_text_ucFirstAllWords%", text::kMeansEveryCapital, text::kFindSelectionCase},
    {L"%copy_text_lc_ucFirstWord%", text::kMeansLowerFirstCapital, text::kFindSelectionCase},
    {L"%copy_text_lc_ucFirstAllWords%", text::kMeansLowerEveryCapital, text::kFindSelectionCase},
    {L"%copy_text_mix_lc_uc%", text::kMeansMixedCase, text::kFindSelectionCase},
    {L"%copy_html%", text::kMeansSelectionHtml, text::kFindHtml},
    {L"pastehtml:", text::kMeansPasteHtml, text::kFindHtml},
    {L"%pptxt%", text::kMeansClipboardText, text::kFindClipboard},
    {L"%cpy%", text::kMeansSelection, text::kFindSelection},
    {L"%cpy_txt_urlencode%", text::kMeansUrlEncoded, text::kFindSelection},
    {L"%send_enter%", text::kMeansEnterKey, text::kFindKey},
    {L"%send_tab%", text::kMeansTabKey, text::kFindKey},
    {L"%sleep_50%", text::kMeansPause, text::kFindPause},
    {L"%sleep_100%", text::kMeansPause, text::kFindPause},
    {L"%sleep_200%", text::kMeansPause, text::kFindPause},
    {L"%sleep_500%", text::kMeansPause, text::kFindPause},
    {L"%mix_the_string%", text::kMeansSourceCode, text::kFindGenerator},
    {L"%plain_text_to_tmp_html%", text::kMeansWebPage, text::kFindHtml},
    {L"%mix_al_rows%", text::kMeansShuffledLines, text::kFindGenerator},
    {L"replace:", text::kMeansReplace, text::kFindReplace},
    {L"copy_slot:", text::kMeansCopySlot, text::kFindSlot},
    {L"paste_slot:", text::kMeansPasteSlot, text::kFindSlot},
    {L"save_slot:", text::kMeansSaveSlot, text::kFindSlot},
    {L"sys:", text::kMeansBuiltin, text::kFindProgram},
    {L"runx:", text::kMeansRunLines, text::kFindProgram},
    {L"runX:", text::kMeansRunLines, text::kFindProgram},
    {L"runa:", text::kMeansRunElevated, text::kFindProgram},
    {L"runA:", text::kMeansRunElevated, text::kFindProgram},
    {L"img:", text::kMeansPicture, text::kFindPicture},
    {L"cmd:", text::kMeansRun, text::kFindProgram},
    {L"run:", text::kMeansRun, text::kFindProgram},
    {L"cpy:", text::kMeansRunSelection, text::kFindProgram},
    {L"sys:MonitorOff", text::kMeansScreenOff, text::kFindScreen},
    {L"sys:MonitorOn", text::kMeansScreenOn, text::kFindScreen},
    {L"sys:ScreensaverOn", text::kMeansScreenSaver, text::kFindScreen},
    {L"sys:ImgToClipboard", text::kMeansSelectedPicture, text::kFindPicture},
    {L"sys:PathToClipboard", text::kMeansPaths, text::kFindPath},
    // The first name takes them all: the longer ones give the same plain paths.
    {L"sys:PathToClipboard+", text::kMeansPaths, text::kFindPath},
    {L"sys:PathToClipboardSlash", text::kMeansPaths, text::kFindPath},
    {L"sys:PathToClipboardSlash+", text::kMeansPaths, text::kFindPath},
    {L"sys:SwitchPowerOptions:", text::kMeansPowerScheme, text::kFindScreen},
    {L"sys:ClipboardImgCliper", text::kMeansCropPicture, text::kFindPicture},
    {L"sys:ClipboardImgRGBA", text::kMeansPictureSource, text::kFindPicture},
    {L"sys:ShellBrowser", text::kMeansFolderWindow, text::kFindPath},
    {L"sys:Txt2Key", text::kMeansTypeText, text::kFindTyping},
    {L"sys:ClTxt2Key", text::kMeansTypeClipboard, text::kFindTyping},
    {L"sys:CopyHtmlCode2TxtPaste", text::kMeansHtmlAsText, text::kFindHtml},
    {L"sys:CopyText2TmpHtmlPageAndOpen", text::kMeansTextAsPage, text::kFindHtml},
    {L"%C%", text::kMeansAskDate, text::kFindQuestion},
    {L"%T%", text::kMeansAskTime, text::kFindQuestion},
    {L"%nmfd%", text::kMeansNextMonthFirst, text::kFindMonthEdge},
    {L"%mld%", text::kMeansMonthLast, text::kFindMonthEdge},
    {L"%mfd%", text::kMeansMonthFirst, text::kFindMonthEdge},
    {L"%mfwd%", text::kMeansMonthFirstWorkday, text::kFindMonthEdge},
    {L"%mfWD%", text::kMeansMonthFirstWorkdaySaturday, text::kFindMonthEdge},
    {L"%qfd%", text::kMeansQuarterFirst, text::kFindQuarter},
    {L"%qfwd%", text::kMeansQuarterFirstWorkday, text::kFindQuarter},
    {L"%qfWD%", text::kMeansQuarterFirstWorkdaySaturday, text::kFindQuarter},
    {L"%mlwd%", text::kMeansMonthLastWorkday, text::kFindMonthEdge},
    {L"%mlWD%", text::kMeansMonthLastWorkdaySaturday, text::kFindMonthEdge},
    {L"%qlwd%", text::kMeansQuarterLastWorkday, text::kFindQuarter},
    {L"%qlWD%", text::kMeansQuarterLastWorkdaySaturday, text::kFindQuarter},
    {L"%qld%", text::kMeansQuarterLast, text::kFindQuarter},
    {L"%uc%", text::kMeansUpperFromHere, text::kFindLetters},
    {L"%lc%", text::kMeansLowerFromHere, text::kFindLetters},
    {L"%dc%", text::kMeansPlainFromHere, text::kFindLetters},
    {L"%ldim%", text::kMeansMonthEnd, text::kFindMonthEdge},
    {L"%d+1%", text::kMeansTodayAndDays, text::kFindOtherDay},
    {L"%wd:1%", text::kMeansNextWeekday, text::kFindWeekday},
    {L"%addd+1%", text::kMeansDaysOn, text::kFindOtherDay},
    {L"%lwdim:1%", text::kMeansMonthLastWeekday, text::kFindWeekday},
    {L"%lwdiq:1%", text::kMeansQuarterLastWeekday, text::kFindWeekday},
    {L"%d+-1%", text::kMeansYesterday, text::kFindYesterday},
};

const Meaning* FindMeaning(std::wstring_view token) {
    for (const Meaning& row : kMeanings) {
        if (row.token == token) return &row;
    }
    return nullptr;
}

std::wstring BetweenPercentSigns(std::wstring_view code) {
    return L'%' + std::wstring(code) + L'%';
}

void Append(std::vector<CodeItem>& items, int group, const std::wstring& token, bool atStart = false) {
    const Meaning* const meaning = FindMeaning(token);
    items.push_back({group, token, MeaningOf(token),
                     meaning && meaning->keywords ? LanguageText(meaning->keywords) : std::wstring(),
                     atStart});
}

void AppendAll(std::vector<CodeItem>& items, int group, std::span<const wchar_t* const> tokens,
               bool atStart = false) {
    for (const wchar_t* token : tokens) {
        // A prefix among the placeholders ends in a colon.
        Append(items, group, token, atStart || std::wstring_view(token).ends_with(L':'));
    }
}

}  // namespace

std::wstring MeaningOf(std::wstring_view token) {
    const Meaning* const meaning = FindMeaning(token);
    return meaning ? LanguageText(meaning->text) : std::wstring();
}

std::vector<CodeItem> CodeItems() {
    std::vector<CodeItem> items;
    for (const wchar_t* code : DateFormatCodes())
        Append(items, text::kInsertDates, BetweenPercentSigns(code));
    for (const wchar_t* code : DateVariables())
        Append(items, text::kInsertDateMoves, BetweenPercentSigns(code));
    // With a number, so that what is inserted works as it is.
    for (const wchar_t* code : NumberedDateVariables()) {
        Append(items, text::kInsertDateMoves, BetweenPercentSigns(code + std::wstring(1, L'1')));
    }
    Append(items, text::kInsertDateMoves, L"%d+-1%");
    AppendAll(items, text::kInsertSelection, Placeholders());
    AppendAll(items, text::kInsertKeys, KeyTokens());
    AppendAll(items, text::kInsertCommands, CommandPrefixes(), true);
    for (const BuiltinCommand& command : BuiltinCommands()) {
        Append(items, text::kInsertBuiltins, std::wstring(L"sys:") + command.name, true);
    }
    AppendAll(items, text::kInsertPrograms, RunPlaceholders());
    AppendAll(items, text::kInsertGenerators, GeneratorTokens());
    return items;
}

}  // namespace verbatix
