// Looks for the running copy of Verbatix: exit code 0 when there is one, 1 when not. Arguments: texts that
// the program's path or its command line must contain; or "--end" to end it, as a setup program does, and
// wait until it is gone.
#include <windows.h>

#include <winternl.h>

#include <string>

namespace {

// Read as debuggers do; the documented way to ask for it is newer than Windows 8 and Wine.
std::wstring CommandLineOf(HANDLE process) {
    const auto query = reinterpret_cast<decltype(&NtQueryInformationProcess)>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQueryInformationProcess")));
    PROCESS_BASIC_INFORMATION basics = {};
    PEB environment = {};
    RTL_USER_PROCESS_PARAMETERS parameters = {};
    if (query(process, ProcessBasicInformation, &basics, sizeof basics, nullptr) < 0 ||
        !ReadProcessMemory(process, basics.PebBaseAddress, &environment, sizeof environment, nullptr) ||
        !ReadProcessMemory(process, environment.ProcessParameters, &parameters, sizeof parameters,
                           nullptr)) {
        return {};
    }
    std::wstring line(parameters.CommandLine.Length / sizeof(wchar_t), L'\0');
    ReadProcessMemory(process, parameters.CommandLine.Buffer, line.data(), line.size() * sizeof(wchar_t),
                      nullptr);
    return line;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const HWND frame = FindWindowW(L"VerbatixAndCommand", nullptr);
    DWORD id = 0;
    GetWindowThreadProcessId(frame, &id);
    const HANDLE process =
        OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ | SYNCHRONIZE, FALSE, id);
    if (!frame || !process) return 1;
    if (__argc > 1 && std::wstring(__wargv[1]) == L"--end") {
        const UINT message = RegisterWindowMessageW(L"Verbatix");
        PostMessageW(frame, message, message, static_cast<LPARAM>(message));
        return WaitForSingleObject(process, 30000) == WAIT_OBJECT_0 ? 0 : 1;
    }
    const std::wstring line = CommandLineOf(process);
    for (int i = 1; i < __argc; ++i) {
        if (line.find(__wargv[i]) == std::wstring::npos) return 1;
    }
    return 0;
}
