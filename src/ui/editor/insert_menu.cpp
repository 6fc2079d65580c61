#include "ui/editor/insert_menu.h"

#include <iterator>
#include <span>
#include <string_view>

#include "base/handle.h"
#include "base/language.h"
#include "base/text.h"
#include "paste/builtin/builtin_commands.h"
#include "paste/steps/generators.h"
#include "paste/steps/key_tokens.h"
#include "paste/text/command_prefixes.h"
#include "paste/text/date_codes.h"
#include "paste/text/placeholders.h"
#include "ui/editor/editor.h"
#include "ui/state/main_window.h"

namespace verbatix {

namespace {

struct Meaning {
    std::wstring_view token;
    int text;
};

constexpr Meaning kMeanings[] = {
    {L"%TAB%", text::kMeansTab},
    {L"%nc%", text::kMeansApart},
    {L"%user_name%", text::kMeansUserName},
    {L"%computer_name%", text::kMeansComputerName},
    {L"%phtml%", text::kMeansClipboardHtml},
    {L"%copy_text%", text::kMeansSelection},
    {L"%copy_text_uc%", text::kMeansUpperCase},
    {L"%copy_text_lc%", text::kMeansLowerCase},
    {L"%copy_text_escape%", text::kMeansHtmlCodes},
    {L"%copy_text_ucFirstWord%", text::kMeansFirstCapital},
    {L"%copy_text_ucFirstAllWords%", text::kMeansEveryCapital},
    {L"%copy_text_lc_ucFirstWord%", text::kMeansLowerFirstCapital},
    {L"%copy_text_lc_ucFirstAllWords%", text::kMeansLowerEveryCapital},
    {L"%copy_text_mix_lc_uc%", text::kMeansMixedCase},
    {L"%copy_html%", text::kMeansSelectionHtml},
    {L"pastehtml:", text::kMeansPasteHtml},
    {L"%pptxt%", text::kMeansClipboardText},
    {L"%cpy%", text::kMeansSelection},
    {L"%cpy_txt_urlencode%", text::kMeansUrlEncoded},
    {L"%send_enter%", text::kMeansEnterKey},
    {L"%send_tab%", text::kMeansTabKey},
    {L"%sleep_50%", text::kMeansPause},
    {L"%sleep_100%", text::kMeansPause},
    {L"%sleep_200%", text::kMeansPause},
    {L"%sleep_500%", text::kMeansPause},
    {L"%mix_the_string%", text::kMeansSourceCode},
    {L"%plain_text_to_tmp_html%", text::kMeansWebPage},
    {L"%mix_al_rows%", text::kMeansShuffledLines},
    {L"replace:", text::kMeansReplace},
    {L"copy_slot:", text::kMeansCopySlot},
    {L"paste_slot:", text::kMeansPasteSlot},
    {L"save_slot:", text::kMeansSaveSlot},
    {L"sys:", text::kMeansBuiltin},
    {L"runx:", text::kMeansRunLines},
    {L"runX:", text::kMeansRunLines},
    {L"runa:", text::kMeansRunElevated},
    {L"runA:", text::kMeansRunElevated},
    {L"img:", text::kMeansPicture},
    {L"cmd:", text::kMeansRun},
    {L"run:", text::kMeansRun},
    {L"cpy:", text::kMeansRunSelection},
    {L"sys:MonitorOff", text::kMeansScreenOff},
    {L"sys:MonitorOn", text::kMeansScreenOn},
    {L"sys:ScreensaverOn", text::kMeansScreenSaver},
    {L"sys:ImgToClipboard", text::kMeansSelectedPicture},
    {L"sys:PathToClipboard", text::kMeansPaths},
    // The first name takes them all: the longer ones give the same plain paths.
    {L"sys:PathToClipboard+", text::kMeansPaths},
    {L"sys:PathToClipboardSlash", text::kMeansPaths},
    {L"sys:PathToClipboardSlash+", text::kMeansPaths},
    {L"sys:SwitchPowerOptions:", text::kMeansPowerScheme},
    {L"sys:ClipboardImgCliper", text::kMeansCropPicture},
    {L"sys:ClipboardImgRGBA", text::kMeansPictureSource},
    {L"sys:ShellBrowser", text::kMeansFolderWindow},
    {L"sys:Txt2Key", text::kMeansTypeText},
    {L"sys:ClTxt2Key", text::kMeansTypeClipboard},
    {L"sys:CopyHtmlCode2TxtPaste", text::kMeansHtmlAsText},
    {L"sys:CopyText2TmpHtmlPageAndOpen", text::kMeansTextAsPage},
    {L"%C%", text::kMeansAskDate},
    {L"%T%", text::kMeansAskTime},
    {L"%nmfd%", text::kMeansNextMonthFirst},
    {L"%mld%", text::kMeansMonthLast},
    {L"%mfd%", text::kMeansMonthFirst},
    {L"%mfwd%", text::kMeansMonthFirstWorkday},
    {L"%mfWD%", text::kMeansMonthFirstWorkdaySaturday},
    {L"%qfd%", text::kMeansQuarterFirst},
    {L"%qfwd%", text::kMeansQuarterFirstWorkday},
    {L"%qfWD%", text::kMeansQuarterFirstWorkdaySaturday},
    {L"%mlwd%", text::kMeansMonthLastWorkday},
    {L"%mlWD%", text::kMeansMonthLastWorkdaySaturday},
    {L"%qlwd%", text::kMeansQuarterLastWorkday},
    {L"%qlWD%", text::kMeansQuarterLastWorkdaySaturday},
    {L"%qld%", text::kMeansQuarterLast},
    {L"%uc%", text::kMeansUpperFromHere},
    {L"%lc%", text::kMeansLowerFromHere},
    {L"%dc%", text::kMeansPlainFromHere},
    {L"%ldim%", text::kMeansMonthEnd},
    {L"%d+1%", text::kMeansTodayAndDays},
    {L"%wd:1%", text::kMeansNextWeekday},
    {L"%addd+1%", text::kMeansDaysOn},
    {L"%lwdim:1%", text::kMeansMonthLastWeekday},
    {L"%lwdiq:1%", text::kMeansQuarterLastWeekday},
};

std::wstring MeaningOf(std::wstring_view token) {
    for (const Meaning& row : kMeanings) {
        if (row.token == token) return LanguageText(row.text);
    }
    return {};
}

std::wstring BetweenPercentSigns(std::wstring_view code) {
    return L'%' + std::wstring(code) + L'%';
}

void Append(std::vector<InsertItem>& items, int group, const std::wstring& token, bool atStart = false) {
    items.push_back({group, token, MeaningOf(token), atStart});
}

void AppendAll(std::vector<InsertItem>& items, int group, std::span<const wchar_t* const> tokens,
               bool atStart = false) {
    for (const wchar_t* token : tokens) {
        // A prefix among the placeholders ends in a colon.
        Append(items, group, token, atStart || std::wstring_view(token).ends_with(L':'));
    }
}

}  // namespace

std::vector<InsertItem> InsertItems(const SYSTEMTIME& now) {
    std::vector<InsertItem> items;
    for (const wchar_t* code : DateFormatCodes()) {
        items.push_back(
            {text::kInsertDates, BetweenPercentSigns(code), FormatDateCode(code, now, true, true)});
    }
    for (const wchar_t* code : DateVariables())
        Append(items, text::kInsertDateMoves, BetweenPercentSigns(code));
    // With a number, so that what is inserted works as it is.
    for (const wchar_t* code : NumberedDateVariables()) {
        Append(items, text::kInsertDateMoves, BetweenPercentSigns(code + std::wstring(1, L'1')));
    }
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

static UniqueMenu BuildInsertMenu(const std::vector<InsertItem>& items) {
    UniqueMenu menu(CreatePopupMenu());
    HMENU submenu = nullptr;
    int group = 0;
    UINT_PTR id = 1;
    for (const InsertItem& item : items) {
        if (item.group != group) {
            group = item.group;
            submenu = CreatePopupMenu();
            AppendMenuW(menu.Get(), MF_POPUP, reinterpret_cast<UINT_PTR>(submenu),
                        LanguageText(group).c_str());
        }
        std::wstring line = item.token + (item.meaning.empty() ? L"" : L"\t") + item.meaning;
        ReplaceAll(line, L"&", L"&&");
        AppendMenuW(submenu, MF_STRING, id++, line.c_str());
    }
    return menu;
}

void ShowInsertMenu(HWND button) {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    const std::vector<InsertItem> items = InsertItems(now);
    const UniqueMenu menu = BuildInsertMenu(items);
    RECT place = {};
    GetWindowRect(button, &place);
    TPMPARAMS beside = {};
    beside.cbSize = sizeof beside;
    beside.rcExclude = place;
    const int chosen =
        TrackPopupMenuEx(menu.Get(), TPM_RETURNCMD | TPM_VERTICAL, static_cast<int>(place.left),
                         static_cast<int>(place.bottom), mainWindow.window, &beside);
    if (chosen <= 0 || static_cast<std::size_t>(chosen) > items.size()) return;
    const InsertItem& item = items[static_cast<std::size_t>(chosen) - 1];
    InsertIntoText(item.token, item.atStart);
}

}  // namespace verbatix
