#include "ui/editor/hotkey_verdict.h"

#include <windows.h>

#include "base/language.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/key_decision.h"
#include "ui/editor/editor_fields.h"

namespace verbatix {

namespace {

enum Held : unsigned { kCtrl = 1, kAlt = 2, kShift = 4, kWin = 8 };

struct HeldRow {
    unsigned bits;  // of the state word
    unsigned held;
};

constexpr HeldRow kHeldRows[] = {{16 | 32, kCtrl}, {4, kAlt}, {64 | 128, kShift}, {1 | 2, kWin}};

// Right Alt is none of them: whether it is an Alt or an Alt Gr is the layout's.
constexpr unsigned kModifierHeld[kModifierCount] = {kWin, kWin, kCtrl | kAlt, 0, kCtrl, kAlt, kCtrl};

struct KnownUse {
    unsigned held;
    unsigned key;
    int whose;  // the sentence
    int what;   // the use in it
};

constexpr KnownUse kKnownUses[] = {
    {kAlt, VK_TAB, text::kBelongsToWindows, text::kUseSwitch},
    {kCtrl | kAlt, VK_TAB, text::kBelongsToWindows, text::kUseSwitch},
    {kWin, VK_TAB, text::kBelongsToWindows, text::kUseSwitch},
    {kAlt, VK_ESCAPE, text::kBelongsToWindows, text::kUseSwitch},
    {kAlt, VK_F4, text::kBelongsToWindows, text::kUseCloseWindow},
    {kAlt, VK_SPACE, text::kBelongsToWindows, text::kUseWindowMenu},
    {kCtrl, VK_ESCAPE, text::kBelongsToWindows, text::kUseStartMenu},
    {kCtrl | kAlt, VK_DELETE, text::kBelongsToWindows, text::kUseSecurity},
    {kCtrl | kShift, VK_ESCAPE, text::kBelongsToWindows, text::kUseTaskManager},
    {kWin, 'L', text::kBelongsToWindows, text::kUseLock},
    {kWin, 'D', text::kBelongsToWindows, text::kUseDesktop},
    {kWin, 'M', text::kBelongsToWindows, text::kUseDesktop},
    {kWin, 'E', text::kBelongsToWindows, text::kUseExplorer},
    {kWin, 'R', text::kBelongsToWindows, text::kUseRunBox},
    {kWin, 'V', text::kBelongsToWindows, text::kUseHistory},
    {kCtrl, 'C', text::kUsedNearlyEverywhere, text::kUseCopy},
    {kCtrl, 'X', text::kUsedNearlyEverywhere, text::kUseCut},
    {kCtrl, 'V', text::kUsedNearlyEverywhere, text::kUsePaste},
    {kCtrl, 'Z', text::kUsedNearlyEverywhere, text::kUseUndo},
    {kCtrl, 'A', text::kUsedNearlyEverywhere, text::kUseSelectAll},
    {kCtrl, 'S', text::kUsedNearlyEverywhere, text::kUseSave},
    {kCtrl, 'P', text::kUsedNearlyEverywhere, text::kUsePrint},
    {kCtrl, 'F', text::kUsedNearlyEverywhere, text::kUseFind},
};

std::wstring UseOf(unsigned held, unsigned key, const std::wstring& name) {
    for (const KnownUse& use : kKnownUses) {
        if (use.held != held || use.key != key) continue;
        return FillIn(LanguageText(use.whose), {name, LanguageText(use.what)});
    }
    return {};
}

unsigned HeldIn(unsigned stateWord) {
    unsigned held = 0;
    for (const HeldRow& row : kHeldRows) held |= stateWord & row.bits ? row.held : 0U;
    return held;
}

bool IsAscii(wchar_t letter) {
    return (letter >= L'A' && letter <= L'Z') || (letter >= L'0' && letter <= L'9');
}

// That the hotkey does nothing, or what it would take away; empty: nothing that is known of.
std::wstring WarningAbout(unsigned key, unsigned modifier, const KeyFacts& facts,
                          const std::wstring& name) {
    if (facts.isOff) return FillIn(LanguageText(text::kHotkeyIsOff), {name});
    std::wstring warning = UseOf(kModifierHeld[modifier], key, name);
    if (!warning.empty()) return warning;
    if (!facts.typed.empty()) return FillIn(LanguageText(text::kTypesCharacter), {name, facts.typed});
    return facts.isTaken ? FillIn(LanguageText(text::kTakenAlready), {name}) : std::wstring();
}

// The name in it is the link.
void AddSharing(HotkeyVerdict& verdict, const std::wstring& entry) {
    const std::wstring& sentence = LanguageText(text::kHotkeyShared);
    if (!verdict.text.empty()) verdict.text += L' ';
    const std::size_t place = sentence.find(L"{1}");
    if (place != std::wstring::npos) {
        verdict.linkStart = verdict.text.size() + place;
        verdict.linkLength = entry.size();
    }
    verdict.text += FillIn(sentence, {entry});
}

}  // namespace

std::wstring FormatKeyForReading(unsigned key, const std::wstring& label) {
    std::wstring name = FormatKeyName(key);
    if (name.size() != 1 || IsAscii(name.front())) return name;
    const bool isVisible = name.front() > L' ' && !(name.front() >= 0x7f && name.front() <= 0xa0);
    if (label.empty() || label == name) return isVisible ? name : std::wstring(1, L'?');
    return IsStorableKey(key) && isVisible ? name + L" (" + label + L")" : label;
}

std::wstring FormatHotkeyForReading(unsigned key, unsigned modifier, const std::wstring& label) {
    if ((key & 0xff) == 0) return {};
    std::wstring text;
    AppendModifierDisplayName(modifier, text);
    return text + L" + " + FormatKeyForReading(key, label);
}

std::wstring FormatHeldKeys(unsigned held) {
    // As people name them, one after the other, whatever the order of the bits.
    struct Row {
        unsigned bit;
        int text;
    };
    static constexpr Row rows[] = {
        {32, text::kCtrl},         {16, text::kRightCtrl},   {4, text::kAlt},
        {8, text::kAltGr},         {1, text::kLeftWin},      {2, text::kRightWin},
        {64 | 128, text::kShift},  {256, text::kLeftButton}, {512, text::kMiddleButton},
        {1024, text::kRightButton}};
    std::wstring names;
    const int code = ModifierCodeOf(held);
    if (code >= 0) {
        AppendModifierDisplayName(static_cast<unsigned>(code), names);
        return names;
    }
    for (const Row& row : rows) {
        if (!(held & row.bit)) continue;
        if (!names.empty()) names += L" + ";
        names += LanguageText(row.text);
    }
    return names;
}

std::wstring FormatPressedKeys(unsigned key, unsigned held, const std::wstring& label) {
    std::wstring name = FormatHeldKeys(held);
    if (!name.empty()) name += L" + ";
    return name + FormatKeyForReading(key, label);
}

std::wstring WhyNoHotkey(unsigned key, unsigned held, const std::wstring& label) {
    const std::wstring name = FormatPressedKeys(key, held, label);
    if (ModifierCodeOf(held) < 0) {
        std::wstring use = UseOf(HeldIn(held), key, name);
        if (!use.empty()) return use;
        const int reason = held == 0 ? text::kKeyAlone : text::kNoSuchModifiers;
        return FillIn(LanguageText(reason), {name});
    }
    if (IsStorableKey(key)) return {};
    return FillIn(LanguageText(text::kNotAKey), {FormatKeyForReading(key, label)});
}

HotkeyVerdict JudgeHotkey(const EntryList& list, int position, unsigned key, unsigned modifier,
                          const KeyFacts& facts, bool sayFree) {
    key &= 0xff;
    if (key == 0) return {};
    if (modifier >= kModifierCount) modifier = kModifierLeftWin;
    const std::wstring name = FormatHotkeyForReading(key, modifier, facts.label);
    HotkeyVerdict verdict;
    const std::wstring warning = WarningAbout(key, modifier, facts, name);
    // Then the link: where the line is too short for all of it, that one must not be cut.
    if (facts.isOff) verdict.text = warning;
    if (const std::optional<int> other = FindClash(list, position, key, modifier)) {
        verdict.other = *other;
        AddSharing(verdict, EntryName(list.at(*other).current));
    } else if (warning.empty() && sayFree) {
        verdict.text = FillIn(LanguageText(text::kHotkeyFree), {name});
    }
    if (!warning.empty() && !facts.isOff) verdict.text += (verdict.text.empty() ? L"" : L" ") + warning;
    if (facts.isTaken) verdict.more = LanguageText(text::kHotkeyTaken);
    return verdict;
}

}  // namespace verbatix
