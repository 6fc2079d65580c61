// Hotkeys as text: names of keys and modifiers, and the list of the disabled ones.
#include "hotkeys/hotkey_names.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "base/language.h"
#include "hotkeys/disabled_hotkeys.h"
#include "hotkeys/hotkey_tables.h"

namespace verbatix {
namespace {

TEST(KeyName, EveryNameReadsBackWhateverFollowsIt) {
    std::vector<std::pair<unsigned, std::wstring>> rows = {
        {9, L"TAB"},     {27, L"ESC"},    {32, L"Space"},  {37, L"Left"},   {38, L"Up"},
        {39, L"Right"},  {40, L"Down"},   {46, L"Del"},    {106, L"NUM_*"}, {107, L"NUM_+"},
        {108, L"NUM_,"}, {109, L"NUM_-"}, {110, L"NUM_."}, {111, L"NUM_/"}, {219, L"["},
        {220, L"^"},     {221, L"]"},     {65, L"A"},      {124, L"|"},     {186, L"\xba"},
    };
    for (unsigned digit = 0; digit < 10; ++digit)
        rows.emplace_back(96 + digit, L"NUM_" + std::to_wstring(digit));
    for (unsigned f = 1; f <= 12; ++f) rows.emplace_back(111 + f, L"F" + std::to_wstring(f));
    for (const auto& [key, name] : rows) {
        EXPECT_EQ(FormatKeyName(key), name);
        EXPECT_EQ(ParseKeyName(name + L"=F5 Space"), key) << name;
    }
    for (unsigned key = 1; key < 256; ++key) {
        // The codes 91, 93 and 94 are the characters by which 219, 221 and 220 are called.
        const unsigned readBack = key == 91 ? 219 : key == 93 ? 221 : key == 94 ? 220 : key;
        EXPECT_EQ(ParseKeyName(FormatKeyName(key)), readBack) << key;
    }
    EXPECT_EQ(FormatKeyName(0xffffffba), L"\xba") << "only the low byte is named";
    EXPECT_EQ(FormatKeyName(0xffffff00), L"");
}

TEST(KeyName, ReadsWhatIsNoName) {
    const std::pair<const wchar_t*, unsigned> rows[] = {
        {L"", 0},          {L"F", 70},      {L"F0", 70},     {L"F13", 112}, {L"f1", L'f'},
        {L"NUM_x", 78},    {L"NUM", 78},    {L"num_1", 'n'}, {L"Righ", 39}, {L"Righteous", 39},
        {L"Rig", 82},      {L"Delete", 46}, {L"TABLE", 9},   {L"TA", 84},   {L"space", L's'},
        {L"\x416", 0x416}, {L"Upper", 38},  {L"ESCAPE", 27}, {L" A", 32},   {L"=x", 61},
    };
    for (const auto& [text, key] : rows) EXPECT_EQ(ParseKeyName(text), key) << text;
}

TEST(ModifierName, LongerNamesWinAndUnknownCodesAreLeftWin) {
    const std::tuple<const wchar_t*, unsigned, const wchar_t*> rows[] = {
        {L"Ctrl-Alt+A", 2, L"+A"},   {L"Ctrl-x", 4, L"-x"},
        {L"Alt-Gr+F5", 3, L"+F5"},   {L"Alt+F5", 5, L"+F5"},
        {L"R-Win+A", 1, L"R-Win+A"}, {L"ctrl+A", 77, L"ctrl+A"},
        {L"Ctr", 77, L"Ctr"},        {L"", 77, L""},
    };
    for (const auto& [text, expected, rest] : rows) {
        unsigned code = 77;
        EXPECT_EQ(ParseModifierPrefix(text, code), rest) << text;
        EXPECT_EQ(code, expected) << text;
    }
    LanguageTexts texts;
    const int numbers[] = {34, 35, 36, 37, 38, 39, 81, 150, 151, 152, 34, 34};
    for (const int number : numbers) texts[number] = std::to_wstring(number);
    SetLanguageTexts(texts, {});
    const wchar_t* const names[] = {L"L-Win",  L"R-Win",   L"Ctrl-Alt", L"Alt-Gr",  L"Ctrl",  L"Alt",
                                    L"R-Ctrl", L"L-Mouse", L"M-Mouse",  L"R-Mouse", L"L-Win", L"L-Win"};
    for (unsigned code = 0; code < 12; ++code) {
        std::wstring name;
        EXPECT_TRUE(AppendModifierName(code, name));
        EXPECT_EQ(name, names[code]);
        unsigned readBack = 77;
        const std::wstring text = name + L"+A";
        ParseModifierPrefix(text, readBack);
        EXPECT_EQ(readBack, code < 10 ? code : 0) << name;
        EXPECT_EQ(FormatHotkeyDisplay(116, code), texts[numbers[code]] + L" + F5");
    }
    SetLanguageTexts({}, {});
    std::wstring name;
    EXPECT_FALSE(AppendModifierName(12, name));
    EXPECT_EQ(name, L"L-Win");
}

TEST(DisabledHotkeys, AreReadBackAndFromWhatAHandLeftBehind) {
    const DisabledHotkeys disabled = {{0, {{103, true}}},
                                      {3, {{116, true}}},
                                      {4, {{65, true}, {66, false}, {186, true}, {220, true}}},
                                      {9, {{32, true}, {107, true}}}};
    const std::wstring all = L"L-Win+NUM_7|Alt-Gr+F5|Ctrl+A|Ctrl+\xba|Ctrl+^|R-Mouse+Space|R-Mouse+NUM_+|";
    EXPECT_EQ(FormatDisabledHotkeys(disabled), all);
    EXPECT_EQ(FormatDisabledHotkeys(ParseDisabledHotkeys(all)), all);
    EXPECT_TRUE(IsHotkeyDisabled(disabled, 4, 'A'));
    EXPECT_FALSE(IsHotkeyDisabled(disabled, 4, 'B'));
    EXPECT_FALSE(IsHotkeyDisabled(disabled, 5, 'A'));
    const std::pair<const wchar_t*, DisabledHotkeys> rows[] = {
        {L"|||", {}},
        {L"Ctrl+", {}},
        {L"Ctrl+A|Ctrl+A", {{4, {{65, true}}}}},
        {L"R-Win+A|", {{1, {{45, true}}}}},  // the key behind an unmoved "R-Win" is its "-"
        {L"Ctrl+||", {}},                    // F13 is named by the separator
        {L"Shift+A|", {{0, {{L'h', true}}}}},
        {L"CtrlA|Alt+B", {{5, {{66, true}}}}},
    };
    for (const auto& [value, read] : rows) EXPECT_EQ(ParseDisabledHotkeys(value), read) << value;

    // An item cut by the limit of the setting disables nothing.
    std::wstring value = L"Ctrl+F2|";
    while (value.size() < kDisabledHotkeysSize) value += L"Ctrl+F12|";
    ASSERT_TRUE(value.substr(0, kDisabledHotkeysSize - 1).ends_with(L"|Ctrl+F1"));
    EXPECT_EQ(ParseDisabledHotkeys(value.substr(0, kDisabledHotkeysSize - 1)),
              (DisabledHotkeys{{4, {{VK_F2, true}, {VK_F12, true}}}}));
}

}  // namespace
}  // namespace verbatix
