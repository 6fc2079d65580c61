#include "ui/window/restart.h"

#include <windows.h>

#include <shellapi.h>

#include <array>

#include "base/handle.h"
#include "base/language.h"
#include "base/product.h"
#include "ids.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"
#include "ui/window/closing.h"

namespace verbatix {

namespace {

void Tell(int text) {
    MessageBoxW(mainWindow.window, LanguageText(text).c_str(), kProductName, MB_OK | MB_ICONINFORMATION);
}

// The settings file may have been named relative to the folder that this copy was started in.
std::wstring CurrentFolder() {
    std::array<wchar_t, MAX_PATH> folder = {};
    return GetCurrentDirectoryW(MAX_PATH, folder.data()) < MAX_PATH ? folder.data() : std::wstring();
}

// False when it was not started, be it that the user refused. `process` gets its handle where there is one.
bool Start(const wchar_t* verb, const std::wstring& file, const std::wstring& arguments,
           UniqueKernelObject* process = nullptr) {
    const std::wstring folder = CurrentFolder();
    SHELLEXECUTEINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOCLOSEPROCESS | SEE_MASK_NOASYNC;
    info.hwnd = mainWindow.window;
    info.lpVerb = verb;
    info.lpFile = file.c_str();
    info.lpParameters = arguments.c_str();
    info.lpDirectory = folder.c_str();
    info.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&info)) return false;
    UniqueKernelObject started(info.hProcess);
    if (process) *process = std::move(started);
    return true;
}

void Restart(const wchar_t* verb, int failure) {
    // Before the start: two copies must not write the settings file at the same time.
    if (!SaveForExit()) return;
    if (programClient.releaseSession) programClient.releaseSession();
    if (Start(verb, ProgramFile(), programClient.startArguments)) return LeaveProgram(CMD_EXIT);
    if (programClient.claimSession) programClient.claimSession();
    Tell(failure);
}

}  // namespace

void RestartProgram() {
    Restart(L"open", text::kNotRestarted);
}

void RestartElevated() {
    Restart(L"runas", text::kNotElevated);
}

void OpenElevatedPrompt() {
    std::array<wchar_t, MAX_PATH> prompt = {};
    if (GetEnvironmentVariableW(L"ComSpec", prompt.data(), MAX_PATH) - 1 >= MAX_PATH - 1) return;
    Start(L"runas", prompt.data(), {});
}

void LookForUpdates() {
    constexpr DWORD kPatienceMilliseconds = 5000;
    constexpr DWORD kNothingToDo = 1;
    UniqueKernelObject service;
    Start(L"open", ProgramFile(), L"AutoupdateService_2020 " + programClient.startArguments, &service);
    DWORD answer = kNothingToDo;
    if (service && WaitForSingleObject(service.Get(), kPatienceMilliseconds) == WAIT_OBJECT_0) {
        GetExitCodeProcess(service.Get(), &answer);
    }
    if (answer == kNothingToDo) Tell(text::kNoUpdates);
}

}  // namespace verbatix
