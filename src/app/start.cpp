#include "app/start.h"

#include <clocale>
#include <cstdlib>
#include <ctime>

#include "app/command_line.h"
#include "app/fault_watch.h"
#include "app/frame_window.h"
#include "app/language_archive.h"
#include "app/language_default.h"
#include "app/settings_location.h"
#include "app/single_instance.h"
#include "app/system_version.h"
#include "base/com_apartment.h"
#include "base/common_controls.h"
#include "base/product.h"
#include "base/text.h"
#include "base/theme.h"
#include "ids.h"
#include "store/list_file.h"
#include "store/settings.h"
#include "store/settings_path.h"
#include "ui/shell/tray_icon.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"
#include "ui/window/closing.h"

namespace verbatix {

// The common controls up to the native font and the page scroller.
static constexpr DWORD kControlGroups = 0x5FF;

// Names of months, the long date and the letters that count as such follow the user's language, and no two
// runs mix letters alike.
static void InitialiseRuntime() {
    std::setlocale(LC_ALL, "");
    std::srand(static_cast<unsigned>(std::time(nullptr)));
}

static void ReadLanguageAndTheme() {
    settings.language = DefaultLanguageNumber(GetUserDefaultLangID());
    LoadSettings(SettingGroup::kStart);
}

static bool IsUpdaterName() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring name = LowerCase(path);
    return name.find(L"_autoupdate", name.rfind(L'\\') + 1) != std::wstring::npos;
}

// A settings file that was named but not taken is not named again.
static StartOptions OptionsOfNextStart() {
    StartOptions options = startOptions;
    if (options.iniPathOverride != settingsPath) options.iniPathOverride.clear();
    return options;
}

static std::wstring SystemReport() {
    const SystemVersion& version = CurrentSystemVersion();
    const wchar_t* place = portableActive                                 ? L"beside the program"
                           : startOptions.iniPathOverride == settingsPath ? L"named at the start"
                                                                          : L"application data";
    return Format(L"Windows %lu.%lu.%lu, user language 0x%04x\r\nSettings file: %ls\r\n", version.major,
                  version.minor, version.build, GetUserDefaultLangID(), place);
}

static void TellWindowAboutProgram() {
    programClient.systemReport = SystemReport();
    programClient.languageNames = []() -> const std::map<int, std::wstring>& {
        return CurrentLanguages().names;
    };
    programClient.activeLanguage = [] { return CurrentLanguages().active; };
    programClient.useLanguage = LoadLanguageArchive;
    programClient.releaseSession = ReleaseSession;
    programClient.claimSession = [] { ClaimSession(); };
    programClient.startArguments = RestartArguments(OptionsOfNextStart());
}

int RunProgram(HINSTANCE instance, const wchar_t* commandLine) {
    const ComApartment apartment;  // for the shell: its folders, dialogs and drag and drop
    RegisterCommonControls(kControlGroups);
    InitialiseRuntime();
    ArgumentList arguments;
    SplitCommandLine(arguments, commandLine ? commandLine : L"", L':');
    startOptions = ReadStartOptions(arguments);
    CurrentSystemVersion();
    ChooseSettingsPath();
    StartFaultWatch();
    ReadLanguageAndTheme();
    TellBuildOfWindows(CurrentSystemVersion().build);
    if (settings.disableDarkTheme == 0) AllowDarkMenus(true);
    if (!LoadLanguageArchive(settings.language)) {
        MessageBoxW(nullptr, L"Error! Loading language file string archive", kProductName,
                    MB_OK | MB_ICONERROR);
        return 0;
    }
    SetFirstRunList(CurrentLanguages().firstRunList);
    // A program file of that name is an update that has been fetched; putting itself in place is done.
    if (IsUpdaterName()) return 0;
    // The update service has nothing to do in this build, but says so by its exit code.
    if (startOptions.updateService) return 1;
    TellWindowAboutProgram();
    if (!CreateFrameWindow(instance)) return 0;
    // Keys of the main dialog are the dialog's own business; the table is there for the frame's class.
    LoadAcceleratorsW(instance, MAKEINTRESOURCEW(IDR_FRAME));
    const int exitCode = RunMessageLoop();
    // The loop also ends by quit messages that did not pass through the window's own exit.
    if (mainWindow.window) SaveWithoutAsking();
    RemoveTrayIcon(trayIcon);
    return exitCode;
}

}  // namespace verbatix
