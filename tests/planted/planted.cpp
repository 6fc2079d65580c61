// A library that tests put beside the program under the names of libraries of Windows: when it is loaded,
// it leaves a file beside itself. It does not stay, because a program that calls it would not get far.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID) {
    if (reason != DLL_PROCESS_ATTACH) return TRUE;
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(self, path, MAX_PATH);
    lstrcatW(path, L".ran");
    CloseHandle(CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr));
    return FALSE;
}
