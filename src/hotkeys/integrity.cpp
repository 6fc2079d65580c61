#include "hotkeys/integrity.h"

#include <cstddef>

#include "base/handle.h"

namespace verbatix {

bool IsOutOfReach(std::optional<DWORD> ours, std::optional<DWORD> theirs) {
    if (!ours) return false;
    return !theirs || *theirs > *ours;
}

// The last part of the label's identifier is the level.
static std::optional<DWORD> IntegrityLevel(HANDLE process) {
    HANDLE opened = nullptr;
    if (!OpenProcessToken(process, TOKEN_QUERY, &opened)) return std::nullopt;
    const UniqueKernelObject token(opened);
    alignas(TOKEN_MANDATORY_LABEL) std::byte buffer[sizeof(TOKEN_MANDATORY_LABEL) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    if (!GetTokenInformation(token.Get(), TokenIntegrityLevel, buffer, sizeof buffer, &size)) {
        return std::nullopt;
    }
    const PSID label = reinterpret_cast<const TOKEN_MANDATORY_LABEL*>(buffer)->Label.Sid;
    const UCHAR* const parts = GetSidSubAuthorityCount(label);
    return *parts > 0 ? std::optional(*GetSidSubAuthority(label, *parts - 1U)) : std::nullopt;
}

bool KeepsKeysFromUs(HWND window) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    if (processId == 0 || processId == GetCurrentProcessId()) return false;
    const UniqueKernelObject process(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, processId));
    if (!process && GetLastError() != ERROR_ACCESS_DENIED) return false;
    return IsOutOfReach(IntegrityLevel(GetCurrentProcess()),
                        process ? IntegrityLevel(process.Get()) : std::nullopt);
}

}  // namespace verbatix
