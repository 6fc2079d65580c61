#include "app/settings_location.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <ctime>

#include "app/command_line.h"
#include "app/language_default.h"
#include "base/language.h"
#include "base/text.h"
#include "store/profile.h"
#include "store/settings_commit.h"
#include "store/settings_file.h"
#include "store/settings_path.h"

namespace verbatix {

bool portableRequested;
bool portableActive;
bool writeErrorShown;

static constexpr wchar_t kFileName[] = L"\\Verbatix.ini";

static void OpenInBrowser(const std::wstring& address) {
    ShellExecuteW(nullptr, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void (*openWebPage)(const std::wstring& address) = OpenInBrowser;

// Everything before the last backslash, and everything after it; a path without one is all file name.
static std::wstring_view FolderOf(std::wstring_view path) {
    const std::size_t end = path.rfind(L'\\');
    return end == std::wstring_view::npos ? std::wstring_view() : path.substr(0, end);
}

static std::wstring_view FileNameOf(std::wstring_view path) {
    return path.substr(path.rfind(L'\\') + 1);  // npos + 1 is 0
}

bool AsksForPortableUse(std::wstring_view modulePath) {
    return LowerCase(FileNameOf(modulePath)).find(L"_p", 1) != std::wstring::npos;
}

static bool IsInside(std::wstring_view folder, std::wstring_view parent) {
    const auto comparable = [](std::wstring_view path) {
        std::wstring text = std::wstring(path) + L"\\";
        ReplaceAll(text, L"\\\\", L"\\");
        return LowerCase(text);
    };
    // An unknown parent would become "\", and every network path begins with that.
    return !parent.empty() && comparable(folder).starts_with(comparable(parent));
}

static bool HasIniExtension(std::wstring_view path) {
    const std::size_t dot = path.rfind(L'.');
    return dot != std::wstring_view::npos && LowerCase(path.substr(dot + 1)) == L"ini";
}

static void ChooseAppData(const SettingsFacts& facts, const SettingsProbe& probe, SettingsChoice& choice) {
    const std::wstring folder = facts.appDataFolder + L"\\Verbatix";
    probe.createFolder(folder);
    choice.path = folder + kFileName;
}

SettingsChoice DecideSettingsPath(const SettingsFacts& facts, const SettingsProbe& probe) {
    SettingsChoice choice;
    const std::wstring programFolder(FolderOf(facts.modulePath));
    const std::wstring besideProgram = programFolder + kFileName;
    choice.portableRequested = AsksForPortableUse(facts.modulePath);
    bool mayStayBeside = choice.portableRequested && !IsInside(programFolder, facts.temporaryFolder);

    if (facts.iniPathOverride.size() > 3) {
        if (!HasIniExtension(facts.iniPathOverride)) {
            choice.messages.push_back({StartMessage::kWrongExtension, facts.iniPathOverride});
        } else if (probe.canWrite(besideProgram, 0)) {
            choice.path = facts.iniPathOverride;
            return choice;
        } else {
            choice.messages.push_back({StartMessage::kWriteError, besideProgram});
            mayStayBeside = false;
        }
    }
    if (mayStayBeside) {
        choice.portableActive = probe.canWrite(besideProgram, 0) && probe.isPlainFile(besideProgram);
        if (!choice.portableActive) choice.messages.push_back({StartMessage::kWriteError, besideProgram});
    }
    if (choice.portableActive) {
        choice.path = besideProgram;
    } else {
        ChooseAppData(facts, probe, choice);
    }
    // The stamp differs from one that the test above may have written in the same second.
    if (!probe.canWrite(choice.path, 22))
        choice.messages.push_back({StartMessage::kWriteError, choice.path});
    return choice;
}

bool WriteTest(const std::wstring& path, int secondsBack) {
    settingsPath = path;
    const std::wstring stamp = Format(L"%d", static_cast<int>(std::time(nullptr)) - secondsBack);
    constexpr std::size_t kLongestStamp = 112;
    constexpr ULONGLONG kPatienceMilliseconds = 2000;
    const ULONGLONG deadline = GetTickCount64() + kPatienceMilliseconds;
    for (;;) {
        if (WriteProgramText(L"TestIni", stamp) && ReadProgramText(L"TestIni", kLongestStamp) == stamp)
            return true;
        // A file that another program holds is the right one all the same, and will be let go.
        if (!IsHeldByAnother(path)) return false;
        if (GetTickCount64() >= deadline) return true;
        Sleep(20);
    }
}

static bool IsPlainFile(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

static std::wstring ModulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        if (path.size() > 0x8000) return {};
        path.resize(path.size() * 2);
    }
}

static SettingsFacts GatherFacts() {
    SettingsFacts facts;
    facts.modulePath = ModulePath();
    wchar_t temporary[1024] = {};
    if (GetTempPathW(1024, temporary) < 1024) facts.temporaryFolder = temporary;
    wchar_t appData[MAX_PATH] = {};
    if (SHGetSpecialFolderPathW(nullptr, appData, CSIDL_APPDATA, FALSE)) facts.appDataFolder = appData;
    facts.iniPathOverride = startOptions.iniPathOverride;
    return facts;
}

// A path as it may be typed: with "/", relative to the current folder. The folder may change later, and the
// profile functions would look for a bare name in the Windows folder.
static void MakeFull(std::wstring& path) {
    wchar_t full[MAX_PATH] = {};
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, full, nullptr);
    if (length > 0 && length < MAX_PATH) path = full;
}

static void ShowStartMessage(const StartMessage& message) {
    if (message.kind == StartMessage::kWriteError) {
        ReportWriteError(message.path);
    } else {
        MessageBoxW(GetActiveWindow(), (L"The File Extension must be *.ini:\n" + message.path).c_str(),
                    L"Error", MB_OK);
    }
}

int ChooseSettingsPath() {
    const SettingsProbe probe = {WriteTest, IsPlainFile,
                                 [](const std::wstring& path) { CreateDirectoryW(path.c_str(), nullptr); }};
    if (HasIniExtension(startOptions.iniPathOverride)) MakeFull(startOptions.iniPathOverride);
    const SettingsChoice choice = DecideSettingsPath(GatherFacts(), probe);
    settingsPath = choice.path;
    // One that was named on the command line has not been through the write test.
    PrepareSettingsFile();
    portableRequested = choice.portableRequested;
    portableActive = choice.portableActive;
    for (const StartMessage& message : choice.messages) ShowStartMessage(message);
    return 1;
}

std::wstring WriteErrorPage(bool germanUser) {
    std::wstring site = LanguageText(germanUser ? text::kSite : text::kEnglishSite);
    if (site.empty()) site = germanUser ? L"https://verbatix.example/" : L"https://verbatix.example/en/";
    return site + L"?seite=faq-Verbatix&faq=29";
}

void ReportWriteError(const std::wstring& path) {
    if (writeErrorShown) return;
    writeErrorShown = true;
    MessageBoxW(GetActiveWindow(), path.c_str(), L"Write Error", MB_OK);
    openWebPage(WriteErrorPage(IsGerman(GetUserDefaultLangID())));
}

}  // namespace verbatix
