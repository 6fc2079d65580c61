#include "ui/shell/autostart.h"

#include <windows.h>

#include "base/debug.h"
#include "base/product.h"
#include "base/text.h"
#include "ui/state/program_client.h"

namespace verbatix {

static constexpr const wchar_t* kRunKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";

static std::wstring StoredCommand() {
    wchar_t value[0x1000] = {};
    DWORD size = sizeof value - sizeof value[0];
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, kRunKey, kProductName, RRF_RT_REG_SZ, nullptr, value, &size);
    return status == ERROR_SUCCESS ? value : std::wstring();
}

bool StartsWithWindows() {
    return IsAutostartOf(StoredCommand(), ProgramFile());
}

bool SetStartWithWindows(bool on) {
    LSTATUS status = ERROR_SUCCESS;
    if (on) {
        const std::wstring command = AutostartCommand(ProgramFile(), programClient.startArguments);
        status = RegSetKeyValueW(HKEY_CURRENT_USER, kRunKey, kProductName, REG_SZ, command.c_str(),
                                 static_cast<DWORD>((command.size() + 1) * sizeof command[0]));
    } else {
        status = RegDeleteKeyValueW(HKEY_CURRENT_USER, kRunKey, kProductName);
        if (status == ERROR_FILE_NOT_FOUND) status = ERROR_SUCCESS;
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
