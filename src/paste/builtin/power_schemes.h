// The system's power schemes. The functions are looked up at run time: those that tell schemes by a GUID
// are newer than those that tell them by a number, and a system may have either family or none.
#pragma once

#include <windows.h>

#include <powrprof.h>

#include <string>
#include <vector>

#include "base/handle.h"

namespace verbatix {

// What was found in the power library; null for what it lacks.
struct PowerFunctions {
    UniqueModule module;  // keeps the functions in memory
    decltype(&::EnumPwrSchemes) enumPwrSchemes = nullptr;
    decltype(&::PowerEnumerate) powerEnumerate = nullptr;
    decltype(&::PowerReadFriendlyName) powerReadFriendlyName = nullptr;
    decltype(&::PowerGetActiveScheme) powerGetActiveScheme = nullptr;
    decltype(&::SetActivePwrScheme) setActivePwrScheme = nullptr;
    decltype(&::PowerSetActiveScheme) powerSetActiveScheme = nullptr;
    decltype(&::GetActivePwrScheme) getActivePwrScheme = nullptr;
};

PowerFunctions LoadPowerFunctions();

struct PowerScheme {
    std::wstring name;
    bool active = false;
    GUID guid = {};   // zero where schemes have numbers only
    UINT number = 0;  // what the older functions call it
};

inline constexpr std::size_t kMaxPowerSchemes = 32;

// The schemes in the system's order, at most kMaxPowerSchemes. Empty when the system tells none.
std::vector<PowerScheme> ListPowerSchemes(const PowerFunctions& power);

// Makes it the active one; false when the system refuses or cannot.
bool ActivatePowerScheme(const PowerFunctions& power, const PowerScheme& scheme);

// Carries out "SwitchPowerOptions:NUMBER": activates the scheme with that number, counted from 1. A missing
// number, zero and a negative one mean the first scheme; one beyond the list is ignored.
void SwitchPowerScheme(const PowerFunctions& power, std::wstring_view command);

}  // namespace verbatix
