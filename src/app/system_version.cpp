#include "app/system_version.h"

#include <windows.h>

namespace verbatix {

static SystemVersion AskSystemVersion() {
    SystemVersion version;
    OSVERSIONINFOW record = {};
    static_assert(sizeof record == 276);
    record.dwOSVersionInfoSize = sizeof record;
    if (GetVersionExW(&record)) {
        version = {record.dwMajorVersion, record.dwMinorVersion, record.dwBuildNumber, 0};
    }
    // GetVersionExW answers with the newest version the manifest names; RtlGetVersion tells the truth.
    using RtlGetVersionFunction = LONG(WINAPI*)(OSVERSIONINFOW*);
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    const auto rtlGetVersion = ntdll ? reinterpret_cast<RtlGetVersionFunction>(
                                           reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetVersion")))
                                     : nullptr;
    record = {};
    record.dwOSVersionInfoSize = sizeof record;
    if (rtlGetVersion && rtlGetVersion(&record) == 0 && record.dwMajorVersion != 0) {
        version = {record.dwMajorVersion, record.dwMinorVersion, record.dwBuildNumber, 0};
    }
    version.combined = (version.major & 0xFFFF) << 16 | (version.minor & 0xFFFF);
    return version;
}

const SystemVersion& CurrentSystemVersion() {
    static const SystemVersion version = AskSystemVersion();
    return version;
}

}  // namespace verbatix
