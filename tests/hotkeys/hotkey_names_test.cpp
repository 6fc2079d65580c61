#include "hotkeys/hotkey_names.h"

#include <gtest/gtest.h>

#include "base/language.h"

namespace verbatix {
namespace {

TEST(KeyName, EveryNameOfTheFormatReadsBack) {
    const struct {
        unsigned key;
        const wchar_t* name;
    } rows[] = {
        {9, L"TAB"},     {27, L"ESC"},    {32, L"Space"},  {37, L"Left"},   {38, L"Up"},
        {39, L"Right"},  {40, L"Down"},   {46, L"Del"},    {96, L"NUM_0"},  {105, L"NUM_9"},
        {106, L"NUM_*"}, {107, L"NUM_+"}, {108, L"NUM_,"}, {109, L"NUM_-"}, {110, L"NUM_."},
        {111, L"NUM_/"}, {112, L"F1"},    {120, L"F9"},    {121, L"F10"},   {122, L"F11"},
        {123, L"F12"},   {219, L"["},     {220, L"^"},     {221, L"]"},     {65, L"A"},
        {48, L"0"},      {124, L"|"},     {135, L"\x87"},  {186, L"\xba"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FormatKeyName(row.key), row.name);
        EXPECT_EQ(ParseKeyName(row.name), row.key) << row.name;
        EXPECT_EQ(ParseKeyName(std::wstring(row.name) + L"=F5 Space"), row.key) << row.name;
    }
    for (unsigned key = 1; key < 256; ++key) {
        // The codes 91, 93 and 94 are the characters by which 219, 221 and 220 are called.
        const unsigned readBack = key == 91 ? 219 : key == 93 ? 221 : key == 94 ? 220 : key;
        EXPECT_EQ(ParseKeyName(FormatKeyName(key)), readBack) << key;
    }
}

TEST(KeyName, OnlyTheLowByteIsNamed) {
    EXPECT_EQ(FormatKeyName(0xffffffba), L"\xba");
    EXPECT_EQ(FormatKeyName(0x141), L"A");
    EXPECT_EQ(FormatKeyName(0), L"");
    EXPECT_EQ(FormatKeyName(0xffffff00), L"");
}

TEST(KeyName, ReadsWhatIsNoName) {
    const struct {
        const wchar_t* text;
        unsigned key;
    } rows[] = {
        {L"", 0},         {L"F", 70},         {L"F0", 70},       {L"F13", 112},      {L"F19", 112},
        {L"Fx", 70},      {L"f1", L'f'},      {L"NUM_x", 78},    {L"NUM_", 78},      {L"NUM", 78},
        {L"num_1", L'n'}, {L"Righ", 39},      {L"Right", 39},    {L"Righteous", 39}, {L"Rig", 82},
        {L"Delete", 46},  {L"Spaceship", 32}, {L"TABLE", 9},     {L"TA", 84},        {L"space", L's'},
        {L"a", 97},       {L"=x", 61},        {L"\x416", 0x416}, {L"Upper", 38},     {L"Downs", 40},
        {L"ESCAPE", 27},  {L" A", 32},
    };
    for (const auto& row : rows) EXPECT_EQ(ParseKeyName(row.text), row.key) << row.text;
}

TEST(ModifierName, EveryCodeHasANameAndOthersAreLeftWin) {
    const wchar_t* const names[] = {L"L-Win", L"R-Win",  L"Ctrl-Alt", L"Alt-Gr",  L"Ctrl",
                                    L"Alt",   L"R-Ctrl", L"L-Mouse",  L"M-Mouse", L"R-Mouse"};
    for (unsigned code = 0; code < 16; ++code) {
        std::wstring text = L">";
        EXPECT_EQ(AppendModifierName(code, text), code < 12) << code;
        EXPECT_EQ(text, std::wstring(L">") + (code < 10 ? names[code] : L"L-Win"));
    }
    std::wstring text;
    EXPECT_FALSE(AppendModifierName(0xffffffff, text));
    EXPECT_EQ(text, L"L-Win");
}

TEST(ModifierPrefix, LongerNamesWinAndRightWinStaysInPlace) {
    const struct {
        const wchar_t* text;
        unsigned code;
        const wchar_t* rest;
    } rows[] = {
        {L"Ctrl-Alt+A", 2, L"+A"},   {L"Ctrl+A", 4, L"+A"},
        {L"Ctrl-x", 4, L"-x"},       {L"Alt-Gr+F5", 3, L"+F5"},
        {L"Alt+F5", 5, L"+F5"},      {L"R-Ctrl+B", 6, L"+B"},
        {L"L-Mouse+C", 7, L"+C"},    {L"M-Mouse+C", 8, L"+C"},
        {L"R-Mouse+C", 9, L"+C"},    {L"L-Win+", 0, L"+"},
        {L"R-Win+A", 1, L"R-Win+A"}, {L"Shift+A", 77, L"Shift+A"},
        {L"ctrl+A", 77, L"ctrl+A"},  {L"", 77, L""},
        {L"Ctr", 77, L"Ctr"},
    };
    for (const auto& row : rows) {
        unsigned code = 77;
        EXPECT_EQ(ParseModifierPrefix(row.text, code), row.rest) << row.text;
        EXPECT_EQ(code, row.code) << row.text;
    }
}

TEST(HotkeyDisplay, UsesTheTextsOfTheLanguage) {
    LanguageTexts texts;
    for (const int number : {34, 35, 36, 37, 38, 39, 81, 150, 151, 152}) {
        texts[number] = L"t" + std::to_wstring(number);
    }
    SetLanguageTexts(texts, {});
    const int numbers[] = {34, 35, 36, 37, 38, 39, 81, 150, 151, 152, 34, 34};
    for (unsigned code = 0; code < 12; ++code) {
        EXPECT_EQ(FormatHotkeyDisplay(116, code), L"t" + std::to_wstring(numbers[code]) + L" + F5") << code;
    }
    SetLanguageTexts({}, {});
}

}  // namespace
}  // namespace verbatix
