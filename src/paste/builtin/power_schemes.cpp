#include "paste/builtin/power_schemes.h"

#include <algorithm>

#include "base/system_library.h"
#include "base/text.h"

namespace verbatix {

template <typename Function>
static void Find(Function& function, const UniqueModule& library, const char* name) {
    function = FindFunction<Function>(library.Get(), name);
}

PowerFunctions LoadPowerFunctions() {
    PowerFunctions power;
    power.module = LoadSystemLibrary(L"powrprof.DLL");
    if (!power.module) return power;
    Find(power.enumPwrSchemes, power.module, "EnumPwrSchemes");
    Find(power.powerEnumerate, power.module, "PowerEnumerate");
    Find(power.powerReadFriendlyName, power.module, "PowerReadFriendlyName");
    Find(power.powerGetActiveScheme, power.module, "PowerGetActiveScheme");
    Find(power.setActivePwrScheme, power.module, "SetActivePwrScheme");
    Find(power.powerSetActiveScheme, power.module, "PowerSetActiveScheme");
    Find(power.getActivePwrScheme, power.module, "GetActivePwrScheme");
    return power;
}

namespace {

GUID ActiveGuid(const PowerFunctions& power) {
    GUID guid = {};
    GUID* active = nullptr;
    if (power.powerGetActiveScheme && power.powerGetActiveScheme(nullptr, &active) == ERROR_SUCCESS &&
        active) {
        guid = *active;
        LocalFree(active);
    }
    return guid;
}

// The name people know the scheme by, or `otherwise`.
std::wstring FriendlyName(const PowerFunctions& power, const GUID& guid, std::wstring otherwise) {
    wchar_t name[1024] = {};
    DWORD size = sizeof name - sizeof *name;  // the last unit stays the terminator
    if (power.powerReadFriendlyName(nullptr, &guid, nullptr, nullptr, reinterpret_cast<PUCHAR>(name),
                                    &size) != ERROR_SUCCESS) {
        return otherwise;
    }
    return name;
}

std::vector<PowerScheme> SchemesByGuid(const PowerFunctions& power) {
    std::vector<PowerScheme> schemes;
    if (!power.powerEnumerate) return schemes;
    const GUID active = ActiveGuid(power);
    while (schemes.size() < kMaxPowerSchemes) {
        PowerScheme scheme;
        scheme.number = static_cast<UINT>(schemes.size());
        DWORD size = sizeof scheme.guid;
        if (power.powerEnumerate(nullptr, nullptr, nullptr, ACCESS_SCHEME, scheme.number,
                                 reinterpret_cast<PUCHAR>(&scheme.guid), &size) != ERROR_SUCCESS) {
            break;
        }
        // "Sheme" is how it has always been spelt on screen.
        scheme.name = FriendlyName(power, scheme.guid, Format(L"Power Sheme (%d)", scheme.number + 1));
        scheme.active = IsEqualGUID(scheme.guid, active) != FALSE;
        schemes.push_back(std::move(scheme));
    }
    return schemes;
}

// The system calls it for each scheme; FALSE ends the enumeration.
BOOLEAN CALLBACK TakeScheme(UINT number, DWORD nameSize, LPTSTR name, DWORD, LPTSTR, PPOWER_POLICY,
                            LPARAM parameter) {
    auto& schemes = *reinterpret_cast<std::vector<PowerScheme>*>(parameter);
    if (schemes.size() >= kMaxPowerSchemes) return FALSE;
    // The size is in bytes and counts the terminator.
    const std::wstring_view text =
        name ? std::wstring_view(name, nameSize / sizeof *name) : std::wstring_view();
    schemes.push_back({std::wstring(text.substr(0, text.find(L'\0'))), false, {}, number});
    return TRUE;
}

std::vector<PowerScheme> SchemesByNumber(const PowerFunctions& power) {
    std::vector<PowerScheme> schemes;
    if (!power.enumPwrSchemes) return schemes;
    power.enumPwrSchemes(TakeScheme, reinterpret_cast<LPARAM>(&schemes));
    UINT active = 0;
    if (power.getActivePwrScheme && power.getActivePwrScheme(&active)) {
        for (PowerScheme& scheme : schemes) scheme.active = scheme.number == active;
    }
    return schemes;
}

}  // namespace

std::vector<PowerScheme> ListPowerSchemes(const PowerFunctions& power) {
    return power.powerReadFriendlyName ? SchemesByGuid(power) : SchemesByNumber(power);
}

bool ActivatePowerScheme(const PowerFunctions& power, const PowerScheme& scheme) {
    if (power.powerSetActiveScheme) {
        return power.powerSetActiveScheme(nullptr, &scheme.guid) == ERROR_SUCCESS;
    }
    return power.setActivePwrScheme && power.setActivePwrScheme(scheme.number, nullptr, nullptr);
}

void SwitchPowerScheme(const PowerFunctions& power, std::wstring_view command) {
    const std::vector<std::wstring_view> pieces = Split(command, L':');
    const int number = pieces.size() > 1 ? ToInt(pieces[1]) : 0;
    const std::vector<PowerScheme> schemes = ListPowerSchemes(power);
    const auto index = static_cast<std::size_t>(std::max(number, 1) - 1);
    if (index < schemes.size()) ActivatePowerScheme(power, schemes[index]);
}

}  // namespace verbatix
