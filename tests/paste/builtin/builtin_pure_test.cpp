// What the built-in commands decide without the system.
#include "paste/builtin/power_schemes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"
#include "paste/builtin/image_crop.h"
#include "paste/steps/type_text.h"

namespace verbatix {
namespace {

// What the system's functions are stood in for by: they answer from here.
struct {
    ULONG count = 3;
    int activated = -1;  // index
} answers;

GUID SchemeGuid(ULONG index) {
    return {index + 1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
}

DWORD WINAPI Enumerate(HKEY, const GUID*, const GUID*, POWER_DATA_ACCESSOR flag, ULONG index, UCHAR* buffer,
                       DWORD* size) {
    if (flag != ACCESS_SCHEME || *size != sizeof(GUID)) return ERROR_INVALID_PARAMETER;
    if (index >= answers.count) return ERROR_NO_MORE_ITEMS;
    *reinterpret_cast<GUID*>(buffer) = SchemeGuid(index);
    return ERROR_SUCCESS;
}

DWORD WINAPI ReadName(HKEY, const GUID* scheme, const GUID*, const GUID*, PUCHAR buffer, LPDWORD size) {
    // The third has a name without terminator that fills all the room there is.
    std::fill_n(reinterpret_cast<wchar_t*>(buffer), *size / sizeof(wchar_t), L'n');
    if (scheme->Data1 != 3)
        CopyText(reinterpret_cast<wchar_t*>(buffer), 100, 100, Format(L"Scheme %d", scheme->Data1));
    return ERROR_SUCCESS;
}

DWORD WINAPI GetActive(HKEY, GUID** guid) {
    *guid = static_cast<GUID*>(LocalAlloc(LMEM_FIXED, sizeof **guid));
    **guid = SchemeGuid(1);
    return ERROR_SUCCESS;
}

DWORD WINAPI SetActive(HKEY, const GUID* guid) {
    answers.activated = static_cast<int>(guid->Data1) - 1;
    return ERROR_SUCCESS;
}

PowerFunctions ByGuid() {
    return {{}, nullptr, Enumerate, ReadName, GetActive, nullptr, SetActive};
}

std::wstring Listed(const PowerFunctions& power) {
    std::wstring text;
    for (const PowerScheme& scheme : ListPowerSchemes(power))
        text += (scheme.active ? L"*" : L"") + scheme.name + L"|";
    return text;
}

TEST(PowerSchemes, AreListedAndSwitchedWhateverTheSystemAnswers) {
    EXPECT_EQ(Listed(ByGuid()), L"Scheme 1|*Scheme 2|" + std::wstring(1023, L'n') + L"|");
    EXPECT_EQ(Listed({}), L"");
    SwitchPowerScheme({}, L"SwitchPowerOptions:1");
    PowerFunctions failing = ByGuid();
    failing.powerGetActiveScheme = [](HKEY, GUID**) -> DWORD { return ERROR_ACCESS_DENIED; };
    failing.powerReadFriendlyName = [](HKEY, const GUID*, const GUID*, const GUID*, PUCHAR,
                                       LPDWORD) -> DWORD { return ERROR_MORE_DATA; };
    EXPECT_EQ(Listed(failing), L"Power Sheme (1)|Power Sheme (2)|Power Sheme (3)|");
    answers.count = 1000;
    EXPECT_EQ(ListPowerSchemes(ByGuid()).size(), 32u);
    answers = {};
    const std::pair<const wchar_t*, int> rows[] = {
        {L"SwitchPowerOptions:1", 0},   {L"SwitchPowerOptions:3", 2},
        {L"SwitchPowerOptions:2:3", 1}, {L"SwitchPowerOptions: 2 x", 1},
        {L"SwitchPowerOptions:4", -1},  {L"SwitchPowerOptions:-9999999999", 0},
        {L"SwitchPowerOptions:x", 0},   {L"SwitchPowerOptions:9999999999", -1},
    };
    for (const auto& [command, index] : rows) {
        answers.activated = -1;
        SwitchPowerScheme(ByGuid(), command);
        EXPECT_EQ(answers.activated, index) << command;
    }
}

TEST(StrokesForKeyScan, HoldWhatTheShiftStateNames) {
    constexpr DWORD kUp = KEYEVENTF_KEYUP;
    const auto strokes = [](std::initializer_list<BYTE> modifiers, BYTE key, DWORD flags = 0) {
        std::vector<KeyStroke> all = {{key, 0}, {key, kUp}};
        for (const BYTE modifier : modifiers) {  // the innermost first
            all.insert(all.begin(), {modifier, flags});
            all.push_back({modifier, flags | kUp});
        }
        return all;
    };
    const std::pair<int, std::vector<KeyStroke>> rows[] = {
        {'Q', strokes({}, 'Q')},
        {0x100 | 'Q', strokes({VK_SHIFT}, 'Q')},
        {0x500 | 'Q', strokes({VK_LMENU, VK_SHIFT}, 'Q')},
        {0x600 | 'Q', strokes({VK_RMENU}, 'Q', KEYEVENTF_EXTENDEDKEY)},  // AltGr, only when it is all
        {0x700 | 'Q', strokes({VK_LMENU, VK_CONTROL, VK_SHIFT}, 'Q')},
        {0x800 | 'Q', strokes({}, 'Q')},  // a bit for keyboards of other countries, with no key here
        {-1, strokes({VK_LMENU, VK_CONTROL, VK_SHIFT}, 0xFF)},  // no key: sent as it comes
    };
    for (const auto& [scan, expected] : rows) {
        EXPECT_EQ(StrokesForKeyScan(static_cast<SHORT>(scan)), expected) << scan;
    }
}

// A picture drawn with characters: each has a grey of its own.
PixelImage Draw(const std::vector<std::string>& rows) {
    PixelImage image = {
        static_cast<int>(rows.empty() ? 0 : rows[0].size()), static_cast<int>(rows.size()), {}};
    for (const std::string& row : rows) {
        for (const char c : row) {
            image.pixels.push_back(c == ' '   ? 0xFFFFFFFF
                                   : c == '.' ? 0xFF808080
                                   : c == '~' ? 0xFFFEFEFE
                                              : 0xFF000000);
        }
    }
    return image;
}

TEST(FindContent, LeavesThePlainBorderOut) {
    const std::pair<std::uint32_t, int> greys[] = {
        {0xFF0000, 9}, {0xFF00, 18}, {0xFF, 3}, {0xFFFFFFFF, 30}};
    for (const auto& [pixel, grey] : greys) EXPECT_EQ(CoarseGrey(pixel), grey) << pixel;
    const std::tuple<std::vector<std::string>, int, PixelArea> cases[] = {
        {{"     ", "  #  ", " ##  ", "     ", "     "}, 0, {1, 1, 3, 3}},
        {{"     ", "  #  ", " ##  ", "     ", "     "}, 1, {0, 0, 4, 4}},
        {{"##  ", "#   ", "    "}, 0, {0, 0, 2, 2}},          // content touches two sides
        {{"   .", " # .", "   .", "   ."}, 0, {1, 0, 4, 4}},  // a side of another grey is content
        {{"~ ~ ", " #~ ", "~  ~"}, 0, {1, 1, 2, 2}},          // noise in the border
        {{"###", "###"}, 0, {0, 0, 3, 2}},                    // one grey has no content
        {{}, 3, {0, 0, 0, 0}},
    };
    for (const auto& [rows, margin, area] : cases) {
        EXPECT_EQ(FindContent(Draw(rows), margin), area) << testing::PrintToString(rows);
    }
    EXPECT_EQ(Crop({3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 9}}, {1, 1, 3, 3}).pixels,
              (std::vector<std::uint32_t>{5, 6, 8, 9}));
}

}  // namespace
}  // namespace verbatix
