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

enum Group {
    kDateCodes = 1160,
    kDateMoves,
    kSelection,
    kKeys,
    kCommands,
    kBuiltins,
    kPrograms,
    kGenerators,
};

struct Meaning {
    std::wstring_view token;
    int text;
};

constexpr Meaning kMeanings[] = {
    {L"%TAB%", 1170},
    {L"%nc%", 1171},
    {L"%user_name%", 1172},
    {L"%computer_name%", 1173},
    {L"%phtml%", 1174},
    {L"%copy_text%", 1175},
    {L"%copy_text_uc%", 1176},
    {L"%copy_text_lc%", 1177},
    {L"%copy_text_escape%", 1178},
    {L"%copy_text_ucFirstWord%", 1179},
    {L"%copy_text_ucFirstAllWords%", 1180},
    {L"%copy_text_lc_ucFirstWord%", 1181},
    {L"%copy_text_lc_ucFirstAllWords%", 1182},
    {L"%copy_text_mix_lc_uc%", 1183},
    {L"%copy_html%", 1184},
    {L"pastehtml:", 1185},
    {L"%pptxt%", 1186},
    {L"%cpy%", 1175},
    {L"%cpy_txt_urlencode%", 1187},
    {L"%send_enter%", 1188},
    {L"%send_tab%", 1189},
    {L"%sleep_50%", 1243},
    {L"%sleep_100%", 1243},
    {L"%sleep_200%", 1243},
    {L"%sleep_500%", 1243},
    {L"%mix_the_string%", 1190},
    {L"%plain_text_to_tmp_html%", 1191},
    {L"%mix_al_rows%", 1192},
    {L"replace:", 1193},
    {L"copy_slot:", 1194},
    {L"paste_slot:", 1195},
    {L"save_slot:", 1196},
    {L"sys:", 1197},
    {L"runx:", 1198},
    {L"runX:", 1198},
    {L"runa:", 1199},
    {L"runA:", 1199},
    {L"img:", 1200},
    {L"cmd:", 1201},
    {L"run:", 1201},
    {L"cpy:", 1202},
    {L"sys:MonitorOff", 1203},
    {L"sys:MonitorOn", 1204},
    {L"sys:ScreensaverOn", 1205},
    {L"sys:ImgToClipboard", 1206},
    {L"sys:PathToClipboard", 1207},
    // The first name takes them all: the longer ones give the same plain paths.
    {L"sys:PathToClipboard+", 1207},
    {L"sys:PathToClipboardSlash", 1207},
    {L"sys:PathToClipboardSlash+", 1207},
    {L"sys:SwitchPowerOptions:", 1211},
    {L"sys:ClipboardImgCliper", 1212},
    {L"sys:ClipboardImgRGBA", 1213},
    {L"sys:ShellBrowser", 1214},
    {L"sys:Txt2Key", 1215},
    {L"sys:ClTxt2Key", 1216},
    {L"sys:CopyHtmlCode2TxtPaste", 1217},
    {L"sys:CopyText2TmpHtmlPageAndOpen", 1218},
    {L"%C%", 1219},
    {L"%T%", 1220},
    {L"%nmfd%", 1221},
    {L"%mld%", 1222},
    {L"%mfd%", 1223},
    {L"%mfwd%", 1224},
    {L"%mfWD%", 1225},
    {L"%qfd%", 1226},
    {L"%qfwd%", 1227},
    {L"%qfWD%", 1228},
    {L"%mlwd%", 1229},
    {L"%mlWD%", 1230},
    {L"%qlwd%", 1231},
    {L"%qlWD%", 1232},
    {L"%qld%", 1233},
    {L"%uc%", 1234},
    {L"%lc%", 1235},
    {L"%dc%", 1236},
    {L"%ldim%", 1237},
    {L"%d+1%", 1238},
    {L"%wd:1%", 1239},
    {L"%addd+1%", 1240},
    {L"%lwdim:1%", 1241},
    {L"%lwdiq:1%", 1242},
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
        items.push_back({kDateCodes, BetweenPercentSigns(code), FormatDateCode(code, now, true, true)});
    }
    for (const wchar_t* code : DateVariables()) Append(items, kDateMoves, BetweenPercentSigns(code));
    // With a number, so that what is inserted works as it is.
    for (const wchar_t* code : NumberedDateVariables()) {
        Append(items, kDateMoves, BetweenPercentSigns(code + std::wstring(1, L'1')));
    }
    AppendAll(items, kSelection, Placeholders());
    AppendAll(items, kKeys, KeyTokens());
    AppendAll(items, kCommands, CommandPrefixes(), true);
    for (const BuiltinCommand& command : BuiltinCommands()) {
        Append(items, kBuiltins, std::wstring(L"sys:") + command.name, true);
    }
    AppendAll(items, kPrograms, RunPlaceholders());
    AppendAll(items, kGenerators, GeneratorTokens());
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
