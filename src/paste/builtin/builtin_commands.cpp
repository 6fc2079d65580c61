#include "paste/builtin/builtin_commands.h"

#include <algorithm>

#include "base/text.h"
#include "clipboard/clipboard_text.h"
#include "clipboard/named_format.h"
#include "clipboard/paste_content.h"
#include "clipboard/saved_clipboard.h"
#include "clipboard/shell_paths.h"
#include "hotkeys/foreground.h"
#include "hotkeys/key_simulation.h"
#include "hotkeys/keyboard_hook.h"
#include "hotkeys/pause.h"
#include "hotkeys/stroke_target.h"
#include "paste/builtin/clipboard_image.h"
#include "paste/builtin/image_clipboard.h"
#include "paste/builtin/power_schemes.h"
#include "paste/builtin/shell_browser.h"
#include "paste/steps/temporary_page.h"
#include "paste/steps/type_text.h"

namespace verbatix {

namespace {

// More than this no screen shows, and laying megabytes out for a message box takes minutes.
constexpr std::size_t kMaxShownText = 10'000;

// Posted, not sent: a window that hangs does not keep the monitor on.
void PostToAllWindows(WPARAM command, LPARAM parameter) {
    PostMessageW(HWND_BROADCAST, WM_SYSCOMMAND, command, parameter);
}

// The release of the very keys that switched the monitor off would switch it on again.
void MonitorOff(const BuiltinCall&) {
    AwaitReleases();
    PostToAllWindows(SC_MONITORPOWER, 2);
}

void MonitorOn(const BuiltinCall&) {
    PostToAllWindows(SC_MONITORPOWER, -1);
}

void ScreensaverOn(const BuiltinCall&) {
    PostToAllWindows(SC_SCREENSAVE, -1);
}

// Lets the target copy what is selected in it, and gives a file manager the time it takes.
bool CopyInTarget(HWND target) {
    SetFocus(target);
    if (!SendCopy()) return false;
    AwaitCopy(300);
    return true;
}

std::wstring CopyPaths(HWND target) {
    if (!CopyInTarget(target)) return {};
    std::wstring paths;
    ClipboardGetShellPaths(paths);
    if (!ClipboardPutText(paths)) WithholdStrokes();
    keepClipboardOnce = true;
    return paths;
}

void ImgToClipboard(const BuiltinCall& call) {
    if (CopyInTarget(call.target)) ImageFileToClipboard(ClipboardReadNamedFormat(L"FileNameW"));
}

void PathToClipboard(const BuiltinCall& call) {
    CopyPaths(call.target);
}

// The forms with quotes and slashes come after the plain one, whose name begins theirs, so they are never
// run: entries that call them have always got the plain paths, and users rely on those.
void PathToClipboardQuoted(const BuiltinCall& call) {
    CopyPaths(call.target);
    pathQuote = L"\"";
}

void PathToClipboardSlash(const BuiltinCall& call) {
    std::wstring paths = CopyPaths(call.target);
    ReplaceAll(paths, L"\\", L"/");
}

void PathToClipboardSlashQuoted(const BuiltinCall& call) {
    PathToClipboardSlash(call);
    pathQuote = L"\"";
}

void SwitchPowerOptions(const BuiltinCall& call) {
    SwitchPowerScheme(LoadPowerFunctions(), call.text);
}

void CropImage(const BuiltinCall& call) {
    CropClipboardImage(call.argument);
}

void ImageToSource(const BuiltinCall&) {
    ClipboardImageToSource();
}

void ShellBrowser(const BuiltinCall& call) {
    // The texts mean something only to those who ask for this diagnosis, and they know them as they are.
    ShowBoxInFront(nullptr, BelongsToShellBrowser(call.target) ? L"2" : L"Noshel", L"");
}

void TypeArgument(const BuiltinCall& call) {
    const std::size_t colon = call.text.find(L':', 1);
    TypeText(colon == std::wstring_view::npos ? std::wstring_view() : call.text.substr(colon + 1));
}

std::wstring ClipboardText() {
    std::wstring text;
    ClipboardGetText(text);
    return text;
}

void TypeClipboard(const BuiltinCall&) {
    std::wstring text;
    GetUsersText(text);
    Pause(1);
    TypeText(text);
}

void CopyHtmlCodeToPlainPaste(const BuiltinCall&) {
    if (!SendCopy()) return;
    AwaitCopy(200);
    ShowBoxInFront(nullptr, ClipboardText().substr(0, kMaxShownText), L"");
    Pause(200);
    // Put back, it is plain text and nothing else.
    if (!PutTextToPaste(ClipboardText())) return;
    Pause(200);
    SendPaste(20);
}

void CopyTextToPage(const BuiltinCall&) {
    if (!SendCopy()) return;
    AwaitCopy(200);
    OpenTextAsPage(ClipboardText());
}

// The order is behaviour: the first name that the text begins with is the command.
constexpr BuiltinCommand kCommands[] = {
    {L"MonitorOff", MonitorOff},
    {L"MonitorOn", MonitorOn},
    {L"ScreensaverOn", ScreensaverOn},
    {L"ImgToClipboard", ImgToClipboard},
    {L"PathToClipboard", PathToClipboard},
    {L"PathToClipboard+", PathToClipboardQuoted},
    {L"PathToClipboardSlash", PathToClipboardSlash},
    {L"PathToClipboardSlash+", PathToClipboardSlashQuoted},
    {L"SwitchPowerOptions:", SwitchPowerOptions},
    {L"ClipboardImgCliper", CropImage},
    {L"ClipboardImgRGBA", ImageToSource},
    {L"ShellBrowser", ShellBrowser},
    {L"Txt2Key", TypeArgument},
    {L"ClTxt2Key", TypeClipboard},
    {L"CopyHtmlCode2TxtPaste", CopyHtmlCodeToPlainPaste},
    {L"CopyText2TmpHtmlPageAndOpen", CopyTextToPage},
};

}  // namespace

std::span<const BuiltinCommand> BuiltinCommands() {
    return kCommands;
}

const BuiltinCommand* FindBuiltinCommand(std::wstring_view text) {
    const auto found = std::ranges::find_if(
        kCommands, [&](const BuiltinCommand& row) { return text.starts_with(row.name); });
    return found == std::end(kCommands) ? nullptr : &*found;
}

int RunBuiltinCommand(const std::wstring& text, HWND target) {
    pathQuote.clear();
    if (const BuiltinCommand* const command = FindBuiltinCommand(text)) {
        const std::wstring_view whole = text;
        command->run({whole, whole.substr(std::wstring_view(command->name).size()), target});
    } else {
        ShowBoxInFront(GetActiveWindow(), L"unknown command:\n" + text, L"x");
    }
    return 1;
}

}  // namespace verbatix
