#include "hotkeys/hotkey_names.h"

#include "base/language.h"
#include "base/text.h"

namespace verbatix {

namespace {

struct ModifierRow {
    std::wstring_view name;
    int displayText;
};

// By modifier code.
constexpr ModifierRow kModifiers[kModifierCount] = {
    {L"L-Win", text::kLeftWin},       {L"R-Win", text::kRightWin},     {L"Ctrl-Alt", text::kCtrlAlt},
    {L"Alt-Gr", text::kAltGr},        {L"Ctrl", text::kCtrl},          {L"Alt", text::kAlt},
    {L"R-Ctrl", text::kRightCtrl},    {L"L-Mouse", text::kLeftButton}, {L"M-Mouse", text::kMiddleButton},
    {L"R-Mouse", text::kRightButton},
};

// The order in which names are tried: "Ctrl-Alt" before "Ctrl", "Alt-Gr" before "Alt".
constexpr unsigned kModifierMatchOrder[kModifierCount] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 0};

struct KeyRow {
    unsigned key;
    std::wstring_view name;
    std::wstring_view recognised;  // how much of the name is looked at when it is read
};

// Keys with a name of their own. Read from top to bottom, the last match wins. Code 220 is "^", the key's
// label on the keyboard the names were made for, and not the backslash of the US layout: files hold it.
constexpr KeyRow kNamedKeys[] = {
    {219, L"[", L"["},         {221, L"]", L"]"},         {220, L"^", L"^"},
    {9, L"TAB", L"TAB"},       {112, L"F1", L"F1"},       {113, L"F2", L"F2"},
    {114, L"F3", L"F3"},       {115, L"F4", L"F4"},       {116, L"F5", L"F5"},
    {117, L"F6", L"F6"},       {118, L"F7", L"F7"},       {119, L"F8", L"F8"},
    {120, L"F9", L"F9"},       {121, L"F10", L"F10"},     {122, L"F11", L"F11"},
    {123, L"F12", L"F12"},     {38, L"Up", L"Up"},        {37, L"Left", L"Left"},
    {39, L"Right", L"Righ"},   {46, L"Del", L"Del"},      {40, L"Down", L"Down"},
    {27, L"ESC", L"ESC"},      {32, L"Space", L"Space"},  {96, L"NUM_0", L"NUM_0"},
    {97, L"NUM_1", L"NUM_1"},  {98, L"NUM_2", L"NUM_2"},  {99, L"NUM_3", L"NUM_3"},
    {100, L"NUM_4", L"NUM_4"}, {101, L"NUM_5", L"NUM_5"}, {102, L"NUM_6", L"NUM_6"},
    {103, L"NUM_7", L"NUM_7"}, {104, L"NUM_8", L"NUM_8"}, {105, L"NUM_9", L"NUM_9"},
    {106, L"NUM_*", L"NUM_*"}, {107, L"NUM_+", L"NUM_+"}, {108, L"NUM_,", L"NUM_,"},
    {109, L"NUM_-", L"NUM_-"}, {110, L"NUM_.", L"NUM_."}, {111, L"NUM_/", L"NUM_/"},
};

const ModifierRow& Modifier(unsigned code) {
    return kModifiers[code < kModifierCount ? code : kModifierLeftWin];
}

}  // namespace

std::wstring FormatKeyName(unsigned key) {
    key &= 0xff;  // codes from 128 on stand sign-extended in the entry record
    for (const KeyRow& row : kNamedKeys) {
        if (row.key == key) return std::wstring(row.name);
    }
    return key == 0 ? std::wstring() : std::wstring(1, static_cast<wchar_t>(key));
}

unsigned ParseKeyName(std::wstring_view text) {
    unsigned key = text.empty() ? 0 : text.front();
    for (const KeyRow& row : kNamedKeys) {
        if (text.starts_with(row.recognised)) key = row.key;
    }
    return key;
}

bool IsStorableKey(unsigned key) {
    key &= 0xff;
    constexpr unsigned kShift = 16;
    constexpr unsigned kAlt = 18;
    constexpr unsigned kLeftWin = 91;
    constexpr unsigned kRightWin = 92;
    constexpr unsigned kLeftShift = 160;
    constexpr unsigned kRightAlt = 165;
    const bool isModifier = (key >= kShift && key <= kAlt) || key == kLeftWin || key == kRightWin ||
                            (key >= kLeftShift && key <= kRightAlt);
    const std::wstring name = FormatKeyName(key);
    // The equals sign ends the key's name in the file, a control character may end the line.
    const bool isReadable = !name.empty() && name.front() > L' ' && name != L"=";
    return !isModifier && isReadable && ParseKeyName(name) == key;
}

bool AppendModifierName(unsigned code, std::wstring& text) {
    text += Modifier(code).name;
    return code < 12;
}

std::size_t MatchModifierName(std::wstring_view text, unsigned& code) {
    for (const unsigned candidate : kModifierMatchOrder) {
        if (!text.starts_with(kModifiers[candidate].name)) continue;
        code = candidate;
        return kModifiers[candidate].name.size();
    }
    return 0;
}

std::wstring_view ParseModifierPrefix(std::wstring_view text, unsigned& code) {
    const std::size_t length = MatchModifierName(text, code);
    // Deliberate: behind "R-Win" the position does not move, so that a disabled "R-Win+A" has always been
    // read as key 45 (the "-"). Moving it would disable other keys than before in existing files.
    if (length != 0 && code == kModifierRightWin) return text;
    return text.substr(length);
}

void AppendModifierDisplayName(unsigned code, std::wstring& text) {
    text += LanguageText(Modifier(code).displayText);
}

std::wstring FormatHotkeyDisplay(unsigned key, unsigned modifier) {
    std::wstring text;
    AppendModifierDisplayName(modifier, text);
    return text + L" + " + FormatKeyName(key);
}

}  // namespace verbatix
