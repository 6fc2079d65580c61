#include "ui/shell/file_dialog.h"

#include <commdlg.h>

#include "base/language.h"
#include "base/system_library.h"
#include "base/text.h"

namespace verbatix {

// Pairs of a name and patterns, each ended by a NUL, one more NUL at the end.
static std::wstring FileKinds() {
    std::wstring kinds = LanguageText(text::kListFiles) + L" (*.ini, *.txt)";
    kinds.append(1, L'\0').append(L"*.ini;*.txt").append(1, L'\0');
    kinds.append(LanguageText(text::kAllFiles)).append(1, L'\0').append(L"*.*").append(2, L'\0');
    return kinds;
}

static std::wstring Ask(HWND owner, const char* dialog, int title, DWORD flags,
                        const wchar_t* proposedName) {
    constexpr std::size_t kLongestPath = 0x8000;
    std::wstring path(kLongestPath, L'\0');
    CopyText(path.data(), kLongestPath, kLongestPath, proposedName);
    const std::wstring kinds = FileKinds();
    OPENFILENAMEW request = {};
    request.lStructSize = sizeof request;
    request.hwndOwner = owner;
    request.lpstrFilter = kinds.c_str();
    request.lpstrFile = path.data();
    request.nMaxFile = kLongestPath;
    request.lpstrTitle = LanguageText(title).c_str();
    request.lpstrDefExt = L"txt";
    // The settings file may be named relative to the folder that the program was started in.
    request.Flags = flags | OFN_NOCHANGEDIR | OFN_EXPLORER | OFN_HIDEREADONLY;
    const UniqueModule library = LoadSystemLibrary(L"comdlg32.dll");
    const auto show = FindFunction<BOOL(WINAPI*)(OPENFILENAMEW*)>(library.Get(), dialog);
    if (!show || !show(&request)) return {};
    path.resize(path.find(L'\0'));
    return path;
}

std::wstring AskFileToRead(HWND owner) {
    return Ask(owner, "GetOpenFileNameW", text::kImportTitle, OFN_FILEMUSTEXIST, L"");
}

std::wstring AskFileToWrite(HWND owner, const wchar_t* proposedName) {
    return Ask(owner, "GetSaveFileNameW", text::kExportTitle, OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST,
               proposedName);
}

}  // namespace verbatix
