#include "paste/power_schemes.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace verbatix {

static bool operator==(const PowerScheme& a, const PowerScheme& b) {
    return a.name == b.name && a.active == b.active && IsEqualGUID(a.guid, b.guid) && a.number == b.number;
}

namespace {

// What the system's functions are stood in for by: they answer from here.
struct {
    ULONG count;
    DWORD nameError;
    DWORD activeError;
    GUID activated;
    UINT activatedNumber;
    int activations;
    ULONG asked;
} answers;

GUID SchemeGuid(ULONG index) {
    return {index + 1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
}

DWORD WINAPI Enumerate(HKEY, const GUID*, const GUID*, POWER_DATA_ACCESSOR flag, ULONG index, UCHAR* buffer,
                       DWORD* size) {
    answers.asked = index;
    if (flag != ACCESS_SCHEME || *size != sizeof(GUID)) return ERROR_INVALID_PARAMETER;
    if (index >= answers.count) return ERROR_NO_MORE_ITEMS;
    *reinterpret_cast<GUID*>(buffer) = SchemeGuid(index);
    return ERROR_SUCCESS;
}

DWORD WINAPI ReadName(HKEY, const GUID* scheme, const GUID*, const GUID*, PUCHAR buffer, LPDWORD size) {
    if (answers.nameError) return answers.nameError;
    const std::wstring name = Format(L"Scheme %d", scheme->Data1);
    *size = static_cast<DWORD>((name.size() + 1) * sizeof(wchar_t));
    CopyText(reinterpret_cast<wchar_t*>(buffer), 100, 100, name);
    return ERROR_SUCCESS;
}

// A name without terminator that fills all the room there is.
DWORD WINAPI ReadEndlessName(HKEY, const GUID*, const GUID*, const GUID*, PUCHAR buffer, LPDWORD size) {
    std::fill_n(reinterpret_cast<wchar_t*>(buffer), *size / sizeof(wchar_t), L'n');
    return ERROR_SUCCESS;
}

DWORD WINAPI GetActive(HKEY, GUID** guid) {
    if (answers.activeError) return answers.activeError;
    *guid = static_cast<GUID*>(LocalAlloc(LMEM_FIXED, sizeof **guid));
    **guid = SchemeGuid(1);
    return ERROR_SUCCESS;
}

DWORD WINAPI SetActive(HKEY, const GUID* guid) {
    answers.activated = *guid;
    ++answers.activations;
    return ERROR_SUCCESS;
}

DWORD WINAPI RefuseToSetActive(HKEY, const GUID*) {
    return ERROR_ACCESS_DENIED;
}

BOOLEAN WINAPI EnumOld(PWRSCHEMESENUMPROC take, LPARAM parameter) {
    for (ULONG index = 0; index < answers.count; ++index) {
        // The size counts bytes and the terminator; a scheme was deleted, so the numbers have a gap.
        std::wstring name = Format(L"Old %d", index);
        if (!take(index * 2, static_cast<DWORD>((name.size() + 1) * sizeof(wchar_t)), name.data(), 0,
                  nullptr, nullptr, parameter)) {
            return FALSE;
        }
    }
    return TRUE;
}

BOOLEAN WINAPI EnumNameless(PWRSCHEMESENUMPROC take, LPARAM parameter) {
    return take(0, 100, nullptr, 0, nullptr, nullptr, parameter);
}

BOOLEAN WINAPI GetActiveOld(PUINT number) {
    *number = 2;
    return TRUE;
}

BOOLEAN WINAPI SetActiveOld(UINT number, PGLOBAL_POWER_POLICY, PPOWER_POLICY) {
    answers.activatedNumber = number;
    ++answers.activations;
    return TRUE;
}

class PowerSchemesTest : public testing::Test {
  protected:
    PowerSchemesTest() { answers = {3, 0, 0, {}, 99, 0, 0}; }

    static PowerFunctions ByGuid() {
        return {{}, nullptr, Enumerate, ReadName, GetActive, SetActiveOld, SetActive};
    }
    static PowerFunctions ByNumber() {
        PowerFunctions power;
        power.enumPwrSchemes = EnumOld;
        power.setActivePwrScheme = SetActiveOld;
        power.getActivePwrScheme = GetActiveOld;
        return power;
    }
};

TEST_F(PowerSchemesTest, AreListedByGuid) {
    EXPECT_EQ(ListPowerSchemes(ByGuid()),
              (std::vector<PowerScheme>{{L"Scheme 1", false, SchemeGuid(0), 0},
                                        {L"Scheme 2", true, SchemeGuid(1), 1},
                                        {L"Scheme 3", false, SchemeGuid(2), 2}}));
}

TEST_F(PowerSchemesTest, WhoseNameCannotBeReadAreNumbered) {
    answers.nameError = ERROR_ACCESS_DENIED;
    answers.activeError = ERROR_FILE_NOT_FOUND;
    answers.count = 2;
    EXPECT_EQ(ListPowerSchemes(ByGuid()),
              (std::vector<PowerScheme>{{L"Power Sheme (1)", false, SchemeGuid(0), 0},
                                        {L"Power Sheme (2)", false, SchemeGuid(1), 1}}));
}

TEST_F(PowerSchemesTest, AreListedByNumberOnOlderSystems) {
    EXPECT_EQ(ListPowerSchemes(ByNumber()),
              (std::vector<PowerScheme>{
                  {L"Old 0", false, {}, 0}, {L"Old 1", true, {}, 2}, {L"Old 2", false, {}, 4}}));
}

TEST_F(PowerSchemesTest, OfASystemThatNeverEndsAreThirtyTwo) {
    answers.count = 1000;
    EXPECT_EQ(ListPowerSchemes(ByGuid()).size(), 32u);
    EXPECT_EQ(answers.asked, 31u);
    EXPECT_EQ(ListPowerSchemes(ByNumber()).size(), 32u);
}

TEST_F(PowerSchemesTest, WithStrangeNamesDoNoHarm) {
    PowerFunctions power = ByGuid();
    power.powerReadFriendlyName = ReadEndlessName;
    EXPECT_EQ(ListPowerSchemes(power)[0].name, std::wstring(1023, L'n'));
    power = ByNumber();
    power.enumPwrSchemes = EnumNameless;
    EXPECT_EQ(ListPowerSchemes(power)[0].name, L"");
}

TEST_F(PowerSchemesTest, AreNoneWhereFunctionsAreMissing) {
    EXPECT_TRUE(ListPowerSchemes({}).empty());
    SwitchPowerScheme({}, L"SwitchPowerOptions:1");
    EXPECT_FALSE(ActivatePowerScheme({}, {}));
    PowerFunctions power = ByGuid();
    power.powerEnumerate = nullptr;
    EXPECT_TRUE(ListPowerSchemes(power).empty());
    power = ByGuid();
    power.powerGetActiveScheme = nullptr;
    EXPECT_EQ(ListPowerSchemes(power).size(), 3u);
    power.powerSetActiveScheme = RefuseToSetActive;
    EXPECT_FALSE(ActivatePowerScheme(power, {}));
    EXPECT_EQ(answers.activations, 0);
}

TEST_F(PowerSchemesTest, AreSwitchedByNumber) {
    struct Case {
        const wchar_t* command;
        int index;  // -1: none
    };
    const Case cases[] = {{L"SwitchPowerOptions:1", 0},    {L"SwitchPowerOptions:3", 2},
                          {L"SwitchPowerOptions:", 0},     {L"SwitchPowerOptions:0", 0},
                          {L"SwitchPowerOptions:-7", 0},   {L"SwitchPowerOptions:2:3", 1},
                          {L"SwitchPowerOptions: 2 x", 1}, {L"SwitchPowerOptions:-99999999999", 0},
                          {L"SwitchPowerOptions:99", -1},  {L"SwitchPowerOptions:99999999999", -1},
                          {L"SwitchPowerOptions:4", -1},   {L"SwitchPowerOptions:x", 0}};
    for (const Case& c : cases) {
        answers.activations = 0;
        SwitchPowerScheme(ByGuid(), c.command);
        EXPECT_EQ(answers.activations, c.index < 0 ? 0 : 1) << c.command;
        if (c.index >= 0) {
            EXPECT_TRUE(IsEqualGUID(answers.activated, SchemeGuid(static_cast<ULONG>(c.index))))
                << c.command;
        }
        answers.activations = 0;
        SwitchPowerScheme(ByNumber(), c.command);
        EXPECT_EQ(answers.activations, c.index < 0 ? 0 : 1) << c.command;
        if (c.index >= 0) {
            EXPECT_EQ(answers.activatedNumber, static_cast<UINT>(c.index) * 2) << c.command;
        }
    }
}

TEST_F(PowerSchemesTest, OfThisSystemAreAskedForWithoutHarm) {
    const PowerFunctions power = LoadPowerFunctions();
    EXPECT_TRUE(power.library);
    EXPECT_TRUE(power.powerGetActiveScheme);
    EXPECT_LE(ListPowerSchemes(power).size(), kMaxPowerSchemes);
}

}  // namespace
}  // namespace verbatix
