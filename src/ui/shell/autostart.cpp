#include "ui/shell/autostart.h"

#include <windows.h>

#include "base/debug.h"
#include "base/product.h"
#include "base/text.h"
#include "ui/state/program_client.h"

namespace verbatix {

static constexpr const wchar_t* kRunKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

// Where Windows keeps what the user has switched in the Task Manager or in the Settings, by the name of the
// value in the "Run" key. No value means: not switched off.
static constexpr const wchar_t* kApprovalKey =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\StartupApproved\\Run";

static bool IsSwitchedOffByWindows() {
    BYTE value[64] = {};  // twelve bytes: a state, and when it was switched off
    DWORD size = sizeof value;
    const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, kApprovalKey, kProductName, RRF_RT_REG_BINARY,
                                        nullptr, value, &size);
    return status == ERROR_SUCCESS && size > 0 && value[0] % 2 != 0;  // 2 and 6 are on, 3 and 7 off
}

static LSTATUS DeleteValue(const wchar_t* key) {
    const LSTATUS status = RegDeleteKeyValueW(HKEY_CURRENT_USER, key, kProductName);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

static std::wstring StoredCommand() {
    wchar_t value[0x1000] = {};
    DWORD size = sizeof value - sizeof value[0];
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, kRunKey, kProductName, RRF_RT_REG_SZ, nullptr, value, &size);
    return status == ERROR_SUCCESS ? value : std::wstring();
}

bool StartsWithWindows() {
    return IsAutostartOf(StoredCommand(), ProgramFile()) && !IsSwitchedOffByWindows();
}

bool SetStartWithWindows(bool on) {
    LSTATUS status = ERROR_SUCCESS;
    if (on) {
        const std::wstring command = AutostartCommand(ProgramFile(), programClient.startArguments);
        status = RegSetKeyValueW(HKEY_CURRENT_USER, kRunKey, kProductName, REG_SZ, command.c_str(),
                                 static_cast<DWORD>((command.size() + 1) * sizeof command[0]));
        if (status == ERROR_SUCCESS && IsSwitchedOffByWindows()) status = DeleteValue(kApprovalKey);
    } else {
        status = DeleteValue(kRunKey);
    }
    if (status != ERROR_SUCCESS) DebugLine(L"Change %ls: error %ld\n", kRunKey, status);
    return status == ERROR_SUCCESS;
}

std::wstring AutostartCommand(std::wstring_view program, std::wstring_view arguments) {
    std::wstring command = L"\"" + std::wstring(program) + L"\" -bg";
    if (!arguments.empty()) command.append(L" ").append(arguments);
    return command;
}

bool IsAutostartOf(std::wstring_view value, std::wstring_view program) {
    const std::wstring quoted = L"\"" + std::wstring(program) + L"\"";
    return EqualsIgnoreCase(value.substr(0, quoted.size()), quoted);
}

}  // namespace verbatix
