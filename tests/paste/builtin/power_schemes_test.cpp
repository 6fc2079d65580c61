#include "paste/builtin/power_schemes.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/text.h"

namespace verbatix {
namespace {

// What the system's functions are stood in for by: they answer from here.
struct {
    ULONG count = 3;
    int activated = -1;  // index, by whichever function
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

// The older family: numbers with gaps, and names whose size counts the terminator or leaves it out.
BOOLEAN WINAPI EnumerateNumbers(PWRSCHEMESENUMPROC take, LPARAM parameter) {
    wchar_t names[][5] = {L"Home", L"Work"};
    return take(2, sizeof names[0], names[0], 0, nullptr, nullptr, parameter) &&
           take(7, 3 * sizeof(wchar_t), names[1], 0, nullptr, nullptr, parameter) &&
           take(9, 0, nullptr, 0, nullptr, nullptr, parameter);
}

BOOLEAN WINAPI SetNumber(UINT number, PGLOBAL_POWER_POLICY, PPOWER_POLICY) {
    answers.activated = static_cast<int>(number);
    return TRUE;
}

BOOLEAN WINAPI GetNumber(PUINT number) {
    *number = 7;
    return TRUE;
}

PowerFunctions ByNumber() {
    return {{}, EnumerateNumbers, nullptr, nullptr, nullptr, SetNumber, nullptr, GetNumber};
}

std::wstring Listed(const PowerFunctions& power) {
    std::wstring text;
    for (const PowerScheme& scheme : ListPowerSchemes(power))
        text += (scheme.active ? L"*" : L"") + scheme.name + L"|";
    return text;
}

TEST(PowerSchemes, AreListedWhateverTheSystemAnswers) {
    EXPECT_EQ(Listed(ByGuid()), L"Scheme 1|*Scheme 2|" + std::wstring(1023, L'n') + L"|");
    EXPECT_EQ(Listed(ByNumber()), L"Home|*Wor||");
    SwitchPowerScheme(ByNumber(), L"SwitchPowerOptions:2");
    EXPECT_EQ(answers.activated, 7);
    EXPECT_EQ(Listed({}), L"");
    SwitchPowerScheme({}, L"SwitchPowerOptions:1");
    PowerFunctions failing = ByGuid();
    failing.powerGetActiveScheme = [](HKEY, GUID**) -> DWORD { return ERROR_ACCESS_DENIED; };
    failing.powerReadFriendlyName = [](HKEY, const GUID*, const GUID*, const GUID*, PUCHAR,
                                       LPDWORD) -> DWORD { return ERROR_MORE_DATA; };
    EXPECT_EQ(Listed(failing), L"Power Sheme (1)|Power Sheme (2)|Power Sheme (3)|");
    answers.count = 1000;
    EXPECT_EQ(ListPowerSchemes(ByGuid()).size(), 32u);
}

TEST(PowerSchemes, AreSwitchedByNumber) {
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

}  // namespace
}  // namespace verbatix
