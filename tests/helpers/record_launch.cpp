// A program that an entry starts: appends its command line and its working folder, UTF-16, to the file
// "launched.txt" beside it.
#include <windows.h>

#include <string>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
    wchar_t module[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, module, MAX_PATH);
    std::wstring path = module;
    path.resize(path.rfind(L'\\') + 1);
    wchar_t folder[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, folder);
    const std::wstring line = std::wstring(commandLine) + L"|" + folder + L"\n";
    // Another one may just be writing.
    HANDLE file = INVALID_HANDLE_VALUE;
    for (int attempts = 0; file == INVALID_HANDLE_VALUE && attempts < 1000; ++attempts) {
        if (attempts > 0) Sleep(5);
        file = CreateFileW((path + L"launched.txt").c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    DWORD written = 0;
    WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &written, nullptr);
    CloseHandle(file);
    return 0;
}
