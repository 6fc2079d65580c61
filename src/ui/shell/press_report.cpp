#include "ui/shell/press_report.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <iterator>

#include "base/language.h"
#include "base/product.h"
#include "base/text.h"
#include "hotkeys/hotkey_names.h"
#include "hotkeys/keyboard_hook.h"
#include "store/settings.h"
#include "store/settings_path.h"
#include "store/text_file.h"
#include "ui/state/hotkey_state.h"
#include "ui/state/main_window.h"
#include "ui/state/program_client.h"

namespace verbatix {

namespace {

constexpr const wchar_t* kWays[] = {L"-", L"at once", L"after hook", L"menu"};

constexpr const wchar_t* kEnds[] = {
    L"still running",
    L"done",
    L"not run: another entry was running, or a menu was open",
    L"not run: too soon after the press before it",
    L"not run: hotkeys are paused in that program",
    L"not run: this hotkey is switched off",
    L"menu closed, no entry chosen",
    L"closed the menu that it had opened",
    L"stopped: too many entries for a menu",
    L"stopped: Windows did not let the menu come to the front",
    L"stopped: the chosen entry had gone",
    L"opened to be edited",
    L"stopped: the clipboard was in use by another program",
    L"stopped: another window was in front",
    L"stopped: the window of the press has gone",
    L"stopped: the program could not be started",
};
static_assert(std::size(kEnds) == static_cast<std::size_t>(PressEnd::kStartFailed) + 1);

std::wstring PressLine(const LoggedPress& press) {
    const std::wstring entry = press.entry < 0 ? L"-" : std::to_wstring(press.entry);
    return Format(
        L"%02d:%02d:%02d.%03d  %-20ls %-24ls %-10ls entry %-5ls %-12ls %u/%u/%u strokes %5lu ms  %ls\r\n",
        press.at.wHour, press.at.wMinute, press.at.wSecond, press.at.wMilliseconds,
        FormatHotkeyDisplay(press.key, press.modifier).c_str(), press.program,
        kWays[static_cast<int>(press.way)], entry.c_str(), press.kind, press.copies, press.pastes,
        press.strokes, press.milliseconds, kEnds[static_cast<int>(press.end)]);
}

const wchar_t* HookState() {
    if (keyboardHook.off) return L"paused";
    if (!keyboardHook.handle) return L"not installed";
    return hotkeyState.frontIsOutOfReach ? L"out of reach of the program in front" : L"active";
}

unsigned SwitchedOffHotkeys() {
    std::ptrdiff_t count = 0;
    for (const auto& [modifier, keys] : keyboardHook.disabled) {
        count += std::count_if(keys.begin(), keys.end(), [](const auto& key) { return key.second; });
    }
    return static_cast<unsigned>(count);
}

// The number of the entry that is alone on its hotkey. Looked up only now: a press has no time for it.
int NumberAlone(const LoggedPress& press) {
    if (press.way == PressWay::kMenu) return -1;
    int number = -1;
    for (const auto& [position, slot] : mainWindow.entries) {
        const ListEntry& entry = slot.current;
        const bool isOnIt = (static_cast<unsigned>(entry.keyCode) & 0xFFU) == press.key;
        if (!isOnIt || entry.modifier != press.modifier || IsBlank(entry)) continue;
        if (number >= 0) return -1;
        number = static_cast<int>(entry.number);
    }
    return number;
}

std::vector<LoggedPress> PressesWithNumbers() {
    std::vector<LoggedPress> presses = LoggedPresses();
    for (LoggedPress& press : presses) {
        if (press.entry < 0) press.entry = NumberAlone(press);
    }
    return presses;
}

}  // namespace

std::wstring PressLines(std::span<const LoggedPress> presses) {
    std::wstring lines =
        L"time          hotkey               in front                 run        entry       kind"
        L"         copies/pastes/other\r\n";
    std::for_each(presses.rbegin(), presses.rend(),
                  [&](const LoggedPress& press) { lines += PressLine(press); });
    return lines;
}

std::wstring ProgramReport() {
    const auto withHotkey =
        std::count_if(mainWindow.entries.begin(), mainWindow.entries.end(), [](const auto& entry) {
            return !IsBlank(entry.second.current) && entry.second.current.keyCode != 0;
        });
    std::wstring report =
        Format(L"%ls %ls\r\n", kProductName, kProductVersion) + programClient.systemReport;
    report += Format(L"Entries: %u, with a hotkey: %u\r\n", static_cast<unsigned>(mainWindow.entryCount),
                     static_cast<unsigned>(withHotkey));
    report += Format(L"Hotkeys: %ls, restored %u times, Windows waits %lu ms for them\r\n", HookState(),
                     hotkeyState.restored, keyboardHook.limit);
    report += Format(L"Programs with paused hotkeys: %u, switched-off hotkeys: %u\r\n",
                     static_cast<unsigned>(keyboardHook.pausedPrograms.size()), SwitchedOffHotkeys());
    report += Format(L"Clipboard given back: %ls, not saved: %ls\r\n",
                     settings.restoreOldClipboard ? L"yes" : L"no",
                     HasUnsaved(mainWindow.entries) ? L"something" : L"nothing");
    return report;
}

void ShowPressReport() {
    const std::wstring path =
        settingsPath.substr(0, settingsPath.rfind(L'\\') + 1) + kProductName + L"_diagnostics.txt";
    if (!WriteWholeFile(path, CREATE_ALWAYS,
                        AsUtf16File(ProgramReport() + L"\r\n" + PressLines(PressesWithNumbers())))) {
        MessageBoxW(mainWindow.window, FillIn(LanguageText(text::kNoDiagnostics), {path}).c_str(),
                    kProductName, MB_OK | MB_ICONWARNING);
        return;
    }
    ShellExecuteW(mainWindow.window, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace verbatix
